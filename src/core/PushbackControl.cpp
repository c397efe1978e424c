#include "core/PushbackControl.h"

#include "XPLMDataAccess.h"
#include "XPLMUtilities.h"
#include "core/CallbackGuard.h"
#include "core/CrewMessages.h"
#include "core/PluginState.h"
#include "core/Preferences.h"
#include "core/SimulatorDataRefs.h"
#include "gpu/GPUService.h"
#include "motion/AircraftPlacement.h"
#include "motion/PushbackKinematics.h"
#include "toolkit/Dialog.h"
#include "truck/TruckMovement.h"

#include <algorithm>
#include <string>

namespace {

constexpr float kAirborneHeightM = 20.0f; // above ground
constexpr float kAirborneSpeedMps = 5.0f; // ground speed
constexpr float kTaxiSpeedMps = 2.0f;     // ground speed
constexpr int kGearHandleDown = 1;        // sim/cockpit/switches/gear_handle_status
constexpr float kEngineRunningN1 = 5.0f;  // percent
constexpr int kMaxEngines = 16;           // N1 values read at most
constexpr int kMessageSeconds = 6;        // message 0 stays on screen this long
constexpr int kViewIsInside = 0;          // sim/graphics/view/view_is_external
constexpr int kSpotViewButton = 46;       // the host's button number of the still spot view
constexpr const char* kSpotViewCommand = "sim/view/still_spot";

typedef void (*CommandButton_f)(int button);

/// Sets the manoeuvre fields of a start through the dataref and computes its end.
void StartFromStatus(int rotateDir, int autoPhase) {
    resetAll();
    PBInitialisation(); // before the fields: message 0 always says "straight" here
    gKLVPlaneMoveDirection = kMoveBackward;
    gKLVPlaneRotateDir = rotateDir;
    gKLVautoPbPhase = autoPhase;
    CalcFinalPsi(rotateDir, &gKLVfinalPsi);
    CalcFinalxz(gKLVPbLength, &gKLVfinalx, &gKLVfinalz); // also for plain turns, which ignore it
}

void ApplyStatus(int value) {
    switch (value) {
    case kPBStatusStraight:
        StartFromStatus(kRotateStraight, kPhaseStraightLeg);
        break;
    case kPBStatusTailRight:
        StartFromStatus(kRotateTailRight, kPhaseTurn);
        break;
    case kPBStatusTailLeft:
        StartFromStatus(kRotateTailLeft, kPhaseTurn);
        break;
    case kPBStatusAutoTailRight:
        StartFromStatus(kRotateTailRight, kPhaseStraightLeg);
        break;
    case kPBStatusAutoTailLeft:
        StartFromStatus(kRotateTailLeft, kPhaseStraightLeg);
        break;
    default:
        resetAll();
        break;
    }
}

} // namespace

int validatePushBackenvironment() {
    if (gKLVisPlaneMoving) return kPBAlreadyMoving;
    const float groundSpeed = XPLMGetDataf(gDataGroundSpeed);
    if (XPLMGetDataf(gDataAGL) > kAirborneHeightM && groundSpeed > kAirborneSpeedMps) return kPBAirborne;
    if (groundSpeed > kTaxiSpeedMps && XPLMGetDatai(gDataIsGearRet) == kGearHandleDown) return kPBTaxiing;
    if (gKLVisGPUpresent) return kPBGPUPresent;
    if (AreEnginesRunning() && !PrefAllowEngnON) return kPBEnginesRunning;
    return kPBAllowed;
}

bool AreEnginesRunning() {
    const int engines = std::clamp(XPLMGetDatai(gNumberEngine), 0, kMaxEngines);
    float n1[kMaxEngines] = {};
    const int read = std::clamp(XPLMGetDatavf(gDataEngineN1, n1, 0, engines), 0, engines);
    return std::any_of(n1, n1 + read, [](float v) { return v > kEngineRunningN1; });
}

bool IsNight() {
    return XPLMGetDatai(gIsCockpitLitON) != 0;
}

void resetAll() {
    ResetTruckParam();
    ResetPlaneMovementParam();
    OverrideJoystick(0);
}

void PBInitialisation() {
    TruckGroundMessageInterpretor(kCrewReady);
    TruckInitialisation();
    SetPBlenght(&gKLVPbLength, &gKLVRotationRate);
    setViewtoExtern();
    if (PrefWrittenCrewMessage) HV_Message::Show(GroundMessage, kMessageSeconds, kTempoColourGreen);
    OverrideJoystick(1);
}

void setViewtoExtern() {
    if (!PrefSwitchView || XPLMGetDatai(gIsViewExtern) != kViewIsInside) return;
    SelectSpotView();
}

void SelectSpotView() {
    if (XPLMCommandRef spot = XPLMFindCommand(kSpotViewCommand)) {
        XPLMCommandOnce(spot);
        return;
    }
    // A host without the command: the deprecated joystick button, looked up so that a host
    // that no longer has it still loads the plug-in.
    auto press = reinterpret_cast<CommandButton_f>(XPLMFindSymbol("XPLMCommandButtonPress"));
    auto release = reinterpret_cast<CommandButton_f>(XPLMFindSymbol("XPLMCommandButtonRelease"));
    if (press && release) {
        press(kSpotViewButton);
        release(kSpotViewButton);
    } else {
        XPLMDebugString("Kalvora: this host has no spot view command; the view is left as it is\n");
    }
}

void StopForUnusableHostValue(const char* where, const NonFiniteHostValue& bad) {
    // The last line written: a value that stays unusable while nothing is under way is said once.
    static std::string lastReport;
    try {
        const bool underWay = gKLVPlaneMoveDirection != kMoveNone || gKLVTruckMovementPhase != kTruckIdle;
        if (underWay) resetAll();
        std::string line = "Kalvora: " + std::string(bad.what()) + " (" + where + ")";
        line += underWay ? "; the push-back is stopped\n" : "; nothing done with it\n";
        if (!underWay && line == lastReport) return;
        lastReport = line;
        KLVLogWrite(line.c_str());
        XPLMDebugString(line.c_str());
    } catch (...) {
        XPLMDebugString("Kalvora: a host value is not a number\n"); // no memory left for the details
    }
}

void SetPBStatus(void* /*refcon*/, int value) {
    GuardCallback("push-back status write", [value] { ApplyStatus(value); });
}
