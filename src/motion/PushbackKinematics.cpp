#include "motion/PushbackKinematics.h"

#include "XPLMUtilities.h"
#include "core/CallbackGuard.h"
#include "core/LocalOrigin.h"
#include "core/Preferences.h"
#include "core/SimulatorDataRefs.h"
#include "core/TruncateToInt.h"
#include "motion/AircraftPlacement.h"
#include "truck/TruckSteering.h"
#include "utils/MathUtils.h"

#include <cmath>

bool gKLVisPlaneMoving = false;
int gKLVPlaneMoveDirection = kMoveNone;
int gKLVPlaneRotateDir = kRotateStraight;
int gKLVautoPbPhase = kPhaseNone;
double gKLVfinalx = 0.0;
double gKLVfinalz = 0.0;
int gKLVfinalPsi = 0;
int gKLVPbLength = 0;
float gKLVRotationRate = 0.0f;
double startx = 0.0;
double startz = 0.0;

namespace {

constexpr float kContinue = -1.0f;     // flight loop: call again next frame
constexpr float kTurnStep = 0.15f;     // degrees per frame
constexpr float kBrakeSet = 1.0f;      // parking brake ratio when the aircraft stops
constexpr float kBrakeReleased = 0.0f; // the push moves only at exactly this ratio
constexpr int kQuarterTurn = 90;       // degrees
constexpr int kHalfTurn = 180;         // degrees
constexpr int kFullTurn = 360;         // degrees
/// Degrees a heading read back from the host may lie off the one written: a few hundred-thousandths
/// of a degree are measured, so this has a wide margin and is still far below a turn step.
constexpr double kHeadingNoiseDeg = 0.01;
constexpr double kPushLengthPerSize = 0.75; // push length per metre of aircraft size
constexpr double kRateSizeFactor = 0.15;    // rate = size * 0.15 / 35
constexpr double kRateSizeDivisor = 35.0;

// Truck steering commands mirror the nose-wheel modes.
constexpr int kSteerStraight = 0;
constexpr int kSteerTailLeft = 1;
constexpr int kSteerTailRight = 2;

// Rotation-rate limits (same unit as PrefTruckSpeed).
constexpr float kRateUp = 0.05f;
constexpr float kRateDown = 0.1f;
constexpr float kRateFloor = 5.0f;
constexpr float kWideAngle = 75.0f; // degrees
constexpr float kNarrowAngle = 15.0f;

/// Phase 2's end test. A turn ends in the frame floor(psi) shows the end heading. A push that does not
/// turn ends at once, its heading unchanged; but the host derives psi back from the single-precision
/// quaternion written each frame, a hair off the start (10 reads back as 9.99999619), and floor takes
/// that for the degree below: so without a turn the heading counts as unchanged within kHeadingNoiseDeg
/// of the degree it started in.
bool EndHeadingReached(float psi) {
    if (gKLVPlaneRotateDir == kRotateTailLeft || gKLVPlaneRotateDir == kRotateTailRight)
        return static_cast<float>(std::floor(psi)) == static_cast<float>(gKLVfinalPsi);
    double fromStartDegree = std::fmod(static_cast<double>(psi) - gKLVfinalPsi, kFullTurn);
    if (fromStartDegree >= kHalfTurn) fromStartDegree -= kFullTurn;
    if (fromStartDegree < -kHalfTurn) fromStartDegree += kFullTurn;
    return fromStartDegree >= -kHeadingNoiseDeg && fromStartDegree < 1.0 + kHeadingNoiseDeg;
}

float StepPlane() {
    FollowLocalOrigin(); // the end point must be in the frame the aircraft is read in
    // x, z and psi are read once the push is known to move: a value that is not a number stops a push,
    // and must not stop what is not under way.
    if (!gKLVisPlaneMoving || XPLMGetDatai(gIsSimPaused) != 0) return kContinue;
    if (XPLMGetDataf(gDataParkBrake) != kBrakeReleased || gKLVPlaneMoveDirection == kMoveNone)
        return kContinue; // a brake set by the pilot halts the push without ending it

    float rot = 0.0f;
    int steer = kSteerStraight;
    if (gKLVautoPbPhase != kPhaseStraightLeg) {
        if (gKLVPlaneRotateDir == kRotateTailRight) {
            rot = -kTurnStep;
            steer = kSteerTailRight;
        } else if (gKLVPlaneRotateDir == kRotateTailLeft) {
            rot = kTurnStep;
            steer = kSteerTailLeft;
        }
    }

    double x = 0.0, z = 0.0;
    float psi = 0.0f;
    GetPlaneXZPsi(&x, &z, &psi);
    if (gKLVautoPbPhase == kPhaseTurn) {
        if (EndHeadingReached(psi)) {
            XPLMSetDataf(gDataParkBrake, kBrakeSet);
            ApplyNWsteering(kSteerStraight);
            CalcTruckSteering(kSteerStraight);
            gKLVautoPbPhase = kPhaseNone;
            gKLVisPlaneMoving = false;
            return kContinue;
        }
    } else if (gKLVautoPbPhase == kPhaseStraightLeg) {
        if (EndReached(x, psi)) {
            gKLVautoPbPhase = kPhaseTurn; // no move in this frame
            return kContinue;
        }
    }

    ApplyNWsteering(steer);
    double d = 0.0;
    if (gKLVPlaneMoveDirection == kMoveForward) {
        CalcTruckSteering(steer);
        d = -PrefStepValue;
    } else {
        CalcTruckSteering(-steer);
        d = PrefStepValue;
    }
    double nx = 0.0, nz = 0.0;
    CalcPBxz(d, &nx, &nz);
    const float newPsi = psi + rot; // not wrapped: the host wraps the quaternion's heading
    ApplyPosition(nx, nz, newPsi);
    return kContinue;
}

} // namespace

float PlaneMoveCallBack(float /*elapsedSinceLastCall*/, float /*elapsedSinceLastLoop*/, int /*counter*/,
                        void* /*refcon*/) {
    return GuardCallback("push step", kContinue, StepPlane);
}

void CalcPBxz(double d, double* x, double* z) {
    double px = 0.0, pz = 0.0;
    float psi = 0.0f;
    GetPlaneXZPsi(&px, &pz, &psi);
    const float a = (90.0f - psi) * DegToRad;
    *x = px - d * std::cos(static_cast<double>(a));
    *z = pz + d * std::sin(static_cast<double>(a));
}

void CalcFinalxz(int length, double* fx, double* fz) {
    CalcPBxz(static_cast<double>(length), fx, fz);
}

void CalcFinalPsi(int rotateDir, int* finalPsi) {
    const int h = TruncateToInt(ReadHostFloat(gPositionPsi)); // truncated toward zero
    if (rotateDir == kRotateTailLeft) {
        *finalPsi = h + kQuarterTurn;
        if (*finalPsi > kFullTurn) *finalPsi = h - (kFullTurn - kQuarterTurn); // exactly 360 is kept
    } else if (rotateDir == kRotateTailRight) {
        *finalPsi = h - kQuarterTurn;
        if (*finalPsi < 0) *finalPsi = 2 * (h - kQuarterTurn); // negative: a heading floor(psi) never equals
    } else {
        *finalPsi = h;
    }
}

int DetermineQuadrant(float psi) {
    const float a = (psi - 90.0f) * DegToRad;
    const float c = std::cos(a);
    const float s = std::sin(a);
    if (s < 0.0f && c > 0.0f) return 1;
    if (s > 0.0f && c > 0.0f) return 2;
    if (s > 0.0f && c < 0.0f) return 3;
    if (s < 0.0f && c < 0.0f) return 4;
    return 1; // a zero component
}

bool EndReached(double x, float psi) {
    const int q = DetermineQuadrant(psi);
    if (q == 1 || q == 2) return gKLVfinalx > x;
    return x > gKLVfinalx;
}

void SetPBlenght(int* length, float* rate) {
    int sizeX = 0, sizeZ = 0;
    RetrievePlaneBoundingBox(&sizeX, &sizeZ);
    *length = TruncateToInt(sizeZ * kPushLengthPerSize);
    *rate = static_cast<float>(sizeZ * kRateSizeFactor / kRateSizeDivisor);
}

void RetrievePlaneBoundingBox(int* sizeX, int* sizeZ) {
    *sizeX = TruncateToInt(XPLMGetDataf(gAircraftShadowSizeX));
    *sizeZ = TruncateToInt(XPLMGetDataf(gAircraftShadowSizeZ));
}

void GetApronElev(double* elevation) {
    double gx = 0.0, gy = 0.0, gz = 0.0;
    GearPostionOGL(gKLVGearIndex, &gx, &gy, &gz);
    double legLength = 0.0, tyreRadius = 0.0;
    GetGearGeom(gKLVGearIndex, &legLength, &tyreRadius);
    *elevation = gy - (legLength + tyreRadius);
}

void ResetPlaneMovementParam() {
    gKLVisPlaneMoving = false;
    gKLVautoPbPhase = kPhaseNone;
    gKLVPlaneRotateDir = kRotateStraight;
    gKLVPlaneMoveDirection = kMoveNone;
    gKLVfinalPsi = 0;
    startx = 0.0;
    startz = 0.0;
    gKLVfinalz = 0.0;
    gKLVfinalx = 0.0;
}

float AdjustRotationRate(float headingA, float headingB, float rate) {
    float delta = HV_MathUtils::UTIL_Heading0_2_360(headingB - headingA);
    if (delta > 90.0f) delta = HV_MathUtils::UTIL_Heading0_2_360(headingA - headingB);
    if (delta > kWideAngle) return PrefTruckSpeed > rate ? rate + kRateUp : PrefTruckSpeed;
    if (delta < kNarrowAngle) return rate > kRateFloor ? rate - kRateDown : kRateFloor;
    return PrefTruckSpeed;
}
