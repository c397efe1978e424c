// Starting and stopping a push-back: the checks that may refuse a start, the
// start itself (crew message, truck, push length, outside view, joystick
// override), the general reset, and the write side of "halvern/kalvora/PBstatus".
#pragma once

/// Values written to "halvern/kalvora/PBstatus"; anything else stops everything.
enum {
    kPBStatusStop = 0,
    kPBStatusStraight = 1,
    kPBStatusTailRight = 2,
    kPBStatusTailLeft = 3,
    kPBStatusAutoTailRight = 4,
    kPBStatusAutoTailLeft = 5
};

/// 0 when a push-back may start, else a negative refusal code (kPB* of CrewMessages.h), first match wins.
int validatePushBackenvironment();
/// True when any engine's N1 is above 5 percent.
bool AreEnginesRunning();
/// True when the cockpit lights are on.
bool IsNight();
/// Stops the truck, the aircraft's motion and the joystick override, in this order.
void resetAll();
/// Starts a manoeuvre whose fields are set: message 0, truck, push length, outside view, override.
void PBInitialisation();
/// Outside view when the preference asks for it and the view is an inside one.
void setViewtoExtern();
/// The host's still spot (outside) view: its command, or the old joystick button where it lacks it.
void SelectSpotView();
/// Write accessor of "halvern/kalvora/PBstatus": 1..5 start a manoeuvre without checks, others stop.
void SetPBStatus(void* refcon, int value);
