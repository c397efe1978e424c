// What the ground crew tells the pilot: the texts of refused starts (shown in a
// dialog), the crew's numbered radio messages (spoken by the host and shown in
// the timed message window, each as the preferences allow), and the restore of
// the host's text output that speaking switched off.
#pragma once

/// Bytes of ErrorMessage, terminating zero included.
constexpr int kErrorMessageBytes = 260;
/// Bytes of GroundMessage, terminating zero included.
constexpr int kGroundMessageBytes = 256;
/// Characters of the tail number used as the crew's call sign.
constexpr int kCallSignChars = 6;

/// Codes of validatePushBackenvironment; 0 allows the start.
enum {
    kPBIncompatibleHost = -7,
    kPBAirborne = -6,
    kPBEnginesRunning = -5,
    kPBTaxiing = -4,
    kPBAlreadyMoving = -3,
    kPBGPUPresent = -2,
    kPBAllowed = 0
};

/// Crew messages (the argument of TruckGroundMessageInterpretor).
enum {
    kCrewReady = 0,          ///< a manoeuvre starts
    kCrewStarting = 1,       ///< hooked up, the brake was already released
    kCrewTerminated = 2,     ///< the truck has left
    kCrewConfirmBrake = 3,   ///< hooked up, the brake is still set
    kCrewThanksStarting = 4, ///< the brake was released after message 3
    kCrewReleaseBrake = 5    ///< printed with the previous message as its format, never sent
};

/// Timed-message colours (HV_Message types).
constexpr char kTempoColourGreen = 2;
constexpr char kTempoColourRed = 3;

extern char ErrorMessage[kErrorMessageBytes];   ///< last refusal text
extern char GroundMessage[kGroundMessageBytes]; ///< last crew message
extern bool ResetWrittenATCswitch;              ///< armed once the truck has left; never cleared
extern float ResetATCtimer; ///< GetTimePrecise seconds after which text output is restored

/// Puts the text of a refusal code into ErrorMessage; other codes leave it as it was.
void ErrorMessageInterpretor(int code);
/// Fills GroundMessage with crew message n (0..5) and speaks it; other n do nothing.
void TruckGroundMessageInterpretor(int n);
/// With spoken crew messages on: turns the host's text output off and speaks the text.
void SpeakGroundMessage(const char* text);
/// With written crew messages on: shows the text in the timed message window.
void ShowTempoDialog(const char* text, int seconds, char colour);
/// Turns the host's text output ("sim/operation/prefs/text_out") back on when it is off.
void ResetWrittenATC();
/// Flight loop (every frame): restores the text output once the armed timer has run out, then stops.
float ResetATCCallBack(float elapsedSinceLastCall, float elapsedSinceLastLoop, int counter, void* refcon);
