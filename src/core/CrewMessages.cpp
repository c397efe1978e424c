#include "core/CrewMessages.h"

#include "XPLMDataAccess.h"
#include "XPLMUtilities.h"
#include "core/CallbackGuard.h"
#include "core/Preferences.h"
#include "core/SimulatorDataRefs.h"
#include "motion/PushbackKinematics.h"
#include "toolkit/Dialog.h"
#include "utils/MathUtils.h"

#include <cstdio>
#include <cstring>

char ErrorMessage[kErrorMessageBytes] = {};
char GroundMessage[kGroundMessageBytes] = {};
bool ResetWrittenATCswitch = false;
float ResetATCtimer = 0.0f;

namespace {

constexpr float kContinue = -1.0f; // flight loop: call again next frame
constexpr float kStop = 0.0f;      // flight loop: stop calling
constexpr int kTextOutOn = 1;
constexpr int kTextOutOff = 0;

// Refusal texts; the ";" breaks the line in the message windows.
constexpr const char* kTextIncompatibleHost =
    "This version of Kalvora is not compatible ; with this version of X-Plane.";
constexpr const char* kTextAirborne = "You can't start a PushBack while airborne!";
constexpr const char* kTextEnginesRunning = "You can't Pushback a plane while the engines are; running. "
                                            "(you can allow this in the preferences panel.";
constexpr const char* kTextTaxiing = "You can't start a PushBack while taxiing!";
constexpr const char* kTextAlreadyMoving =
    "Please wait for the current maneuver to finish;before restarting one!";
constexpr const char* kTextGPUPresent = "You can't start a PushBack with the GPU running!";

// Crew messages 0 to 4 by number; the first %s is the call sign.
constexpr const char* kCrewFormats[] = {
    "Ok, %s we are ready to push back %s. Please remove breaks.", // second %s: the manoeuvre
    "%s starting push back",
    "%s push back terminated, cleared to taxi. Good flight !",
    "%s do you confirm brake is released?",
    "%s thanks you, we are starting pushback",
};
constexpr const char* kCrewReleaseBrakeText = "Could you release the break";

constexpr const char* kTurnStraight = "straight";
constexpr const char* kTurnTailLeft = "tail left";
constexpr const char* kTurnTailRight = "tail right";

/// The first six characters of the tail number (fewer when it is shorter or missing).
void ReadCallSign(char (&callSign)[kCallSignChars + 1]) {
    std::memset(callSign, 0, sizeof callSign);
    if (gAircraftTailNumber) XPLMGetDatab(gAircraftTailNumber, callSign, 0, kCallSignChars);
    callSign[kCallSignChars] = '\0';
}

/// Prints `format` with one string argument the way printf would for "%s" and "%%";
/// any other conversion (a tail number may hold '%') is printed as it stands.
void PrintWithOneArgument(const char* format, const char* argument) {
    bool argumentUsed = false;
    for (const char* p = format; *p != '\0'; ++p) {
        if (*p == '%' && p[1] == '%') {
            std::fputc('%', stdout);
            ++p;
        } else if (*p == '%' && p[1] == 's' && !argumentUsed) {
            std::fputs(argument, stdout);
            argumentUsed = true;
            ++p;
        } else {
            std::fputc(*p, stdout);
        }
    }
    std::fflush(stdout);
}

} // namespace

void ErrorMessageInterpretor(int code) {
    const char* text = nullptr;
    switch (code) {
    case kPBIncompatibleHost:
        text = kTextIncompatibleHost;
        break;
    case kPBAirborne:
        text = kTextAirborne;
        break;
    case kPBEnginesRunning:
        text = kTextEnginesRunning;
        break;
    case kPBTaxiing:
        text = kTextTaxiing;
        break;
    case kPBAlreadyMoving:
        text = kTextAlreadyMoving;
        break;
    case kPBGPUPresent:
        text = kTextGPUPresent;
        break;
    default:
        return;
    }
    std::snprintf(ErrorMessage, sizeof ErrorMessage, "%s", text);
}

void TruckGroundMessageInterpretor(int n) {
    if (n < kCrewReady || n > kCrewReleaseBrake) return;
    if (n == kCrewReleaseBrake) {
        // The previous message is kept and serves as the format of this one.
        PrintWithOneArgument(GroundMessage, kCrewReleaseBrakeText);
    } else {
        char callSign[kCallSignChars + 1];
        ReadCallSign(callSign);
        const char* turn = kTurnStraight;
        if (gKLVPlaneRotateDir == kRotateTailLeft) turn = kTurnTailLeft;
        if (gKLVPlaneRotateDir == kRotateTailRight) turn = kTurnTailRight;
        // Only message 0 has a second conversion; the others ignore the extra argument.
        std::snprintf(GroundMessage, sizeof GroundMessage, kCrewFormats[n], callSign, turn);
    }
    SpeakGroundMessage(GroundMessage);
}

void SpeakGroundMessage(const char* text) {
    if (!PrefAuralCrewMessage || text == nullptr) return;
    XPLMSetDatai(gPrefShowATCmessage, kTextOutOff); // the spoken text is not printed as well
    XPLMSpeakString(text);
}

void ShowTempoDialog(const char* text, int seconds, char colour) {
    if (!PrefWrittenCrewMessage) return;
    HV_Message::Show(text, seconds, colour);
}

void ResetWrittenATC() {
    if (XPLMGetDatai(gPrefShowATCmessage) != kTextOutOn) XPLMSetDatai(gPrefShowATCmessage, kTextOutOn);
}

float ResetATCCallBack(float /*elapsedSinceLastCall*/, float /*elapsedSinceLastLoop*/, int /*counter*/,
                       void* /*refcon*/) {
    return GuardCallback("text output restore", kContinue, [] {
        const float now = static_cast<float>(GetTimePrecise());
        if (ResetWrittenATCswitch && now > ResetATCtimer) {
            ResetWrittenATC();
            return kStop; // once per plug-in lifetime: the switch stays armed but nothing calls back
        }
        return kContinue;
    });
}
