#include "truck/TruckMovement.h"

#include "XPLMDataAccess.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"
#include "core/CallbackGuard.h"
#include "core/CrewMessages.h"
#include "core/LocalOrigin.h"
#include "core/Preferences.h"
#include "core/SimulatorDataRefs.h"
#include "motion/AircraftPlacement.h"
#include "motion/PushbackKinematics.h"
#include "objects/TruckModel.h"
#include "truck/TruckState.h"
#include "truck/TruckSteering.h"
#include "utils/MathUtils.h"

#include <cmath>

int gKLVTruckMovementPhase = kTruckIdle;
float theCurrentSpeed = 0.0015f;
float theLastTime = 0.0f;
float theTruckGearInTimer = 0.0f;
float theTruckGearOutTimer = 0.0f;
float theBreakMessTempo = 0.0f;
int wasBreakSet = 0;
float TruckFinalHdg = 0.0f;
float TruckInitialHdg = 0.0f;
int theSwitch = 0;

namespace {

constexpr float kContinue = -1.0f;        // flight loop: call again next frame
constexpr float kStop = 0.0f;             // flight loop: stop calling
constexpr float kWaitBeforeMove = 3.0f;   // seconds the placed truck waits before it moves
constexpr float kRegisterInterval = 1.0f; // seconds to the first call after registration

constexpr double kParkDistanceM = 15.0; // truck park position from the towing gear
constexpr float kHalfTurn = 180.0f;     // degrees
constexpr float kFullTurn = 360.0f;     // degrees
// The truck's own headings stay within these (an aircraft heading in [0, 360), 180 back for the main
// gear, an 11-degree steering offset): the end test of driving away reaches [0, 5] from any of them.
constexpr float kLowestOwnHeading = -kFullTurn;     // degrees
constexpr float kHighestOwnHeading = 2 * kFullTurn; // degrees
constexpr float kAwayTurnStep = 0.4f;               // degrees per step while driving away
constexpr float kAwayEndWindow = 5.0f;              // degrees past the final heading that end the turn
constexpr int kTurnRight = 1;                       // gKLVPlaneRotateDir value that turns the truck right
constexpr double kGridPerMetre = 10.0;              // TruckEndReached compares on a 0.1 m grid

// Step interval ramp: 0.1015 s at the start of a move, 5 ms shorter each step, floor 1.5 ms.
constexpr float kStartInterval = 0.1015f; // seconds
constexpr double kIntervalStep = 0.005;   // seconds
constexpr double kIntervalFloor = 0.0015; // seconds

constexpr float kHookUpDelay = 1.5f;          // seconds at the gear before the brake is checked
constexpr float kDriveAwayDelay = 1.5f;       // seconds after the push before the truck leaves
constexpr float kBrakeQuestionEvery = 6.0f;   // seconds
constexpr float kRestoreTextOutAfter = 15.0f; // seconds after the truck has left
constexpr float kBrakeReleased = 0.0f;        // parking brake ratio

constexpr int kQuestionSeconds = 4; // timed message of the brake question
constexpr int kMessageSeconds = 6;  // timed message of the other crew messages

constexpr double kTruckOriginAboveApronM = 1.0; // the model's origin is 1 m above the apron

/// The auxiliary angle of a heading, radians, in single precision as the geometry expects.
float AuxAngle(float heading) {
    return (90.0f - heading) * DegToRad;
}

float AircraftHeading() {
    return ReadHostFloat(gPositionPsi);
}

void ApproachOrHookUp(float now) {
    double gx = 0.0, gy = 0.0, gz = 0.0;
    GearPostionOGL(gKLVGearIndex, &gx, &gy, &gz);
    if (!TruckEndReached(gKLVTruckX, gKLVTruckZ, gx, gz)) {
        const double step = PrefFrontWheel ? PrefStepValue : -PrefStepValue;
        TruckApproach(gKLVTruckX, gKLVTruckZ, step, &gKLVTruckX, &gKLVTruckZ);
        theTruckGearInTimer = now + kHookUpDelay;
        return;
    }
    if (!(now > theTruckGearInTimer)) return;
    if (XPLMGetDataf(gDataParkBrake) != kBrakeReleased) {
        if (wasBreakSet != 1 || now > theBreakMessTempo) {
            TruckGroundMessageInterpretor(kCrewConfirmBrake);
            ShowTempoDialog(GroundMessage, kQuestionSeconds, kTempoColourRed);
            wasBreakSet = 1;
            theBreakMessTempo = now + kBrakeQuestionEvery;
        }
        return;
    }
    gKLVTruckMovementPhase = kTruckPushing;
    gKLVisPlaneMoving = true;
    TruckGroundMessageInterpretor(wasBreakSet == 1 ? kCrewThanksStarting : kCrewStarting);
    ShowTempoDialog(GroundMessage, kMessageSeconds, kTempoColourGreen);
}

void RideOnGear(float now) {
    GearPostionOGL(gKLVGearIndex, &gKLVTruckX, &gKLVTruckY, &gKLVTruckZ);
    if (!gKLVisPlaneMoving) {
        theCurrentSpeed = kStartInterval;
        gKLVTruckMovementPhase = kTruckLeaving;
        theTruckGearOutTimer = now + kDriveAwayDelay;
    }
}

/// One step of driving away; true when the truck has gone and the sequence is over.
bool DriveAway(float now) {
    if (!(now > theTruckGearOutTimer)) return false;
    TruckFinalHdg = CalcTruckFinalHdg();
    if (TruckAway(gKLVTruckX, gKLVTruckZ, PrefStepValue, gKLVPlaneRotateDir, &gKLVTruckX, &gKLVTruckZ) != 0)
        return false;
    TruckGroundMessageInterpretor(kCrewTerminated);
    ShowTempoDialog(GroundMessage, kMessageSeconds, kTempoColourGreen);
    ResetWrittenATCswitch = true;
    ResetATCtimer = now + kRestoreTextOutAfter;
    OverrideJoystick(0);
    gKLVTruckMovementPhase = kTruckIdle;
    XPLMSetDataf(gDataParkBrake, kBrakeReleased);
    ResetPlaneMovementParam();
    return true;
}

float TruckStep() {
    FollowLocalOrigin(); // the truck must be in the frame the gear is read in
    const float now = static_cast<float>(GetTimePrecise());
    if (now <= theLastTime) return kContinue;
    // The interval shrinks before the floor is tested, so it may dip below the floor for one step.
    if (!(static_cast<double>(theCurrentSpeed) <= kIntervalFloor))
        theCurrentSpeed = static_cast<float>(theCurrentSpeed - kIntervalStep);
    else
        theCurrentSpeed = static_cast<float>(kIntervalFloor);
    theLastTime = now + theCurrentSpeed;
    if (XPLMGetDatai(gIsSimPaused) != 0) return kContinue;

    switch (gKLVTruckMovementPhase) {
    case kTruckPlaced:
        theCurrentSpeed = kStartInterval;
        gKLVTruckMovementPhase = kTruckApproach;
        return kWaitBeforeMove;
    case kTruckApproach:
        ApproachOrHookUp(now);
        break;
    case kTruckPushing:
        RideOnGear(now);
        break;
    case kTruckLeaving:
        if (DriveAway(now)) return kStop;
        break;
    default:
        break;
    }
    return kContinue;
}

} // namespace

void TruckInitialisation() {
    SetGearIndex();
    CalcTruckParkPos(&gKLVTruckX, &gKLVTruckZ, &TruckInitialHdg);
    gKLVtheTruck.SetVisibility(true);
    ApplyTruckCurrentHeading();
    gKLVTruckMovementPhase = kTruckPlaced;
}

void ResetTruckParam() {
    theOffset = 0.0f;
    theSwitch = 0;
    gKLVtheTruck.ShowXObject(false);
    gKLVTruckMovementPhase = kTruckIdle;
    // Unregistered first so that repeated resets keep a single registration (the host
    // would otherwise call the sequence once per registration each frame).
    XPLMUnregisterFlightLoopCallback(TruckMovementCallBack, nullptr);
    XPLMRegisterFlightLoopCallback(TruckMovementCallBack, kRegisterInterval, nullptr);
}

float TruckMovementCallBack(float /*elapsedSinceLastCall*/, float /*elapsedSinceLastLoop*/, int /*counter*/,
                            void* /*refcon*/) {
    return GuardCallback("truck step", kContinue, TruckStep);
}

int DrawTruckCallBack(int /*phase*/, int /*isBefore*/, void* /*refcon*/) {
    GuardCallback("truck drawing", [] {
        if (!PrefDrawTruck || gKLVTruckMovementPhase == kTruckReserved || !gKLVtheTruck.IsVisible()) return;
        GetApronElev(&gKLVTruckY);
        gKLVtheTruck.Attitude(0.0f, 0.0f, myTruckHeading);
        gKLVtheTruck.PositionLocal(static_cast<float>(gKLVTruckX),
                                   static_cast<float>(gKLVTruckY + kTruckOriginAboveApronM),
                                   static_cast<float>(gKLVTruckZ));
        gKLVtheTruck.ShowXObject(true);
    });
    return 1;
}

void CalcTruckParkPos(double* x, double* z, float* hdg) {
    const float h = AircraftHeading();
    double gx = 0.0, gy = 0.0, gz = 0.0;
    GearPostionOGL(gKLVGearIndex, &gx, &gy, &gz);
    const double a = AuxAngle(h);
    if (PrefFrontWheel) {
        *z = gz - kParkDistanceM * std::sin(a);
        *x = gx + kParkDistanceM * std::cos(a);
        *hdg = h;
    } else {
        *z = gz + kParkDistanceM * std::sin(a);
        *x = gx - kParkDistanceM * std::cos(a);
        *hdg = h - kHalfTurn; // not normalised
    }
}

void TruckApproach(double x, double z, double step, double* outX, double* outZ) {
    const double a = AuxAngle(AircraftHeading());
    *outZ = std::sin(a) * step + z;
    *outX = x - step * std::cos(a);
}

int TruckAway(double x, double z, double step, int rotateDir, double* outX, double* outZ) {
    // A heading written by another plug-in far outside the turns the truck itself makes would keep the
    // end test below out of reach (0.4 degrees a step against a huge number): the step overwrites it
    // with the same direction in [0, 360).
    if (myTruckHeading < kLowestOwnHeading || myTruckHeading >= kHighestOwnHeading) {
        myTruckHeading = std::fmod(myTruckHeading, kFullTurn);
        if (myTruckHeading < 0.0f) myTruckHeading += kFullTurn;
    }
    if (rotateDir == kTurnRight)
        myTruckHeading += kAwayTurnStep;
    else
        myTruckHeading -= kAwayTurnStep;
    // Only differences in [0, 5] end the turn: 359.6 (just short on the other side) does not.
    const float diff = HV_MathUtils::UTIL_Heading0_2_360(myTruckHeading - TruckFinalHdg);
    if (std::fabs(diff) <= kAwayEndWindow) return 0;
    const double b = AuxAngle(myTruckHeading);
    *outZ = std::sin(-b) * step + z;
    *outX = step * std::cos(b) + x;
    return 1;
}

bool TruckEndReached(double truckX, double truckZ, double gearX, double gearZ) {
    const double A = std::floor(truckX * kGridPerMetre);
    const double B = std::floor(truckZ * kGridPerMetre);
    const double C = std::floor(gearX * kGridPerMetre);
    const double D = std::floor(gearZ * kGridPerMetre);
    const bool front = PrefFrontWheel;
    switch (DetermineQuadrant(AircraftHeading())) {
    case 1:
        if (front) return !(C < A) && B >= D;
        return !(A < C) && D >= B;
    case 2:
        if (front) return !(C < A) && D >= B;
        return !(A < C) && B >= D;
    case 3:
        if (front) return !(A < C) && D >= B;
        return !(C < A) && B >= D;
    case 4:
        if (front) return !(A < C) && B >= D;
        return !(C < A) && D >= B;
    default:
        return false;
    }
}

float CalcTruckFinalHdg() {
    const float psi = AircraftHeading();
    return HV_MathUtils::UTIL_Heading0_2_360(PrefFrontWheel ? psi + kHalfTurn : psi);
}

float CalcDist(double x1, double z1, double x2, double z2) {
    const double sum = (x1 - x2) * (x1 - x2) + (z1 - z2) * (z1 - z2);
    return std::sqrt(static_cast<float>(sum));
}
