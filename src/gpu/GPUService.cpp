// The GPU's state, its toggle, its crew messages, its broadcasts to other
// plug-ins and the accessors of "halvern/kalvora/GPUstatus".
#include "gpu/GPUService.h"

#include "XPLMDataAccess.h"
#include "XPLMDefs.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "core/CallbackGuard.h"
#include "core/CrewMessages.h"
#include "core/Preferences.h"
#include "core/SimulatorDataRefs.h"
#include "objects/HV_XObject.h"
#include "utils/MathUtils.h"

#include <cstdio>
#include <cstring>

bool gKLVisGPUpresent = false;
bool GPUisON = false;
double timer = 0.0;
bool KLVsimulElecSystem = true;
char GPUGroundMessage[kGPUGroundMessageBytes] = {};

namespace {

constexpr float kEveryFrame = -1.0f; // flight-loop interval: next frame

// Crew messages by code; %s is the call sign (the first six characters of the tail number).
constexpr const char* kCrewFormats[] = {
    "Roger %s GPU is hooked up and warming up",
    "%s GPU is running",
    "%s GPU is OFF and disconnected",
};
constexpr int kCrewFormatCount = static_cast<int>(sizeof kCrewFormats / sizeof kCrewFormats[0]);

constexpr int kShownSeconds = 6;    // how long a GPU crew message stays on screen
constexpr char kShownColour = 2;    // timed-message colour of GPU crew messages
constexpr int kStatusAbsent = 0;    // GPUstatus read: no GPU
constexpr int kStatusAvailable = 1; // GPUstatus read: connected, not reported running
constexpr int kStatusRunning = 2;   // GPUstatus read: running (GPUisON; never set)
constexpr int kWriteConnect = 1;    // GPUstatus write: bring and connect it
constexpr int kWriteDisconnect = 2; // GPUstatus write: disconnect it
constexpr int kWriteElecOff = 3;    // GPUstatus write: electrical simulation off

/// Sends one message to every enabled plug-in, with no parameter.
void Broadcast(unsigned message) {
    XPLMSendMessageToPlugin(XPLM_NO_PLUGIN_ID, static_cast<int>(message), nullptr);
}

} // namespace

void sendGPUAvailable() {
    Broadcast(kGPUMsgAvailable);
}

void sendGPUisON() {
    Broadcast(kGPUMsgIsOn);
}

void sendGPUisOFF() {
    Broadcast(kGPUMsgIsOff);
}

void ToggleisGPUpresent() {
    gKLVisGPUpresent = !gKLVisGPUpresent;
}

void ForceGPUON() {
    gKLVisGPUpresent = true;
}

void ForceGPUOFF() {
    gKLVisGPUpresent = false;
}

void determineStatusAndAnswer() {
    if (!gKLVisGPUpresent)
        sendGPUisOFF();
    else if (GPUisON)
        sendGPUisON();
    else
        sendGPUAvailable();
}

void GPUeventHandler() {
    if (gKLVisGPUpresent) {
        GroundMessageInterpretor(kGPUCrewKind, kGPUCrewDisconnected);
        sendGPUisOFF();
        XPLMUnregisterFlightLoopCallback(GPUBatteryLoadingCallBack, nullptr);
    } else {
        MakeGPUvisible();
        GroundMessageInterpretor(kGPUCrewKind, kGPUCrewHookedUp);
        timer = GetTimePrecise() + kGPUWarmUpSeconds;
        // A new request during a warm-up restarts it: one warm-up callback, never two.
        XPLMUnregisterFlightLoopCallback(GPUwarmUpCallBack, nullptr);
        XPLMRegisterFlightLoopCallback(GPUwarmUpCallBack, kEveryFrame, nullptr);
    }
    ToggleisGPUpresent();
}

void GroundMessageInterpretor(int kind, int code) {
    char callSign[kCallSignChars + 1] = {};
    if (gAircraftTailNumber) XPLMGetDatab(gAircraftTailNumber, callSign, 0, kCallSignChars);
    callSign[kCallSignChars] = '\0';
    if (kind != kGPUCrewKind || !PrefHandleGPU) return;
    if (code < 0 || code >= kCrewFormatCount) return;
    std::snprintf(GPUGroundMessage, sizeof GPUGroundMessage, kCrewFormats[code], callSign);
    SpeakGroundMessage(GPUGroundMessage);
    ShowTempoDialog(GPUGroundMessage, kShownSeconds, kShownColour);
}

void KLVsimulElec(bool on) {
    KLVsimulElecSystem = on;
}

void resetGPU() {
    myGPUObject.ShowXObject(false);
    gKLVisGPUpresent = false;
}

int DataRefGetGPUStatus(void* /*refcon*/) {
    return GuardCallback("GPU status read", kStatusAbsent, [] {
        if (!gKLVisGPUpresent) return kStatusAbsent;
        return GPUisON ? kStatusRunning : kStatusAvailable;
    });
}

void DataRefSetGPUStatus(void* /*refcon*/, int value) {
    GuardCallback("GPU status write", [value] {
        switch (value) {
        case kWriteConnect:
            ForceGPUOFF();
            GPUeventHandler();
            break;
        case kWriteDisconnect:
            ForceGPUON();
            GPUeventHandler();
            break;
        case kWriteElecOff:
            KLVsimulElec(false);
            break;
        default:
            break;
        }
    });
}
