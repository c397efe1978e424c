#include "truck/TruckSteering.h"

#include "core/Preferences.h"
#include "core/SimulatorDataRefs.h"
#include "core/TruncateToInt.h"
#include "motion/AircraftPlacement.h"
#include "truck/TruckState.h"
#include "utils/MathUtils.h"

#include <cmath>

int k_KLV_Front_Gear = 0;
int k_KLV_Rear_Gear = 0;
int gKLVGearIndex = 0;

namespace {

constexpr int kNewGearLayoutAfterVersion = 799; // later hosts put the nose gear at 0, the mains at 1
constexpr int kOldFrontGear = 67;
constexpr int kOldRearGear = 68;
constexpr int kNewFrontGear = 0;
constexpr int kNewRearGear = 1;

/// pi/180 rounded to single precision, used in double.
constexpr double kGearDegToRad = 0.01745329238474369;

constexpr float kHalfTurn = 180.0f;  // degrees
constexpr float kSteerRate = 0.15f;  // degrees of offset per step
constexpr float kSteerLimit = 11.0f; // degrees
constexpr int kStraightLow = 2;      // whole degrees of heading difference
constexpr int kStraightHigh = 10;
constexpr int kNearlyAligned = 358;
constexpr int kOffsetEaseLimit = 10; // whole degrees

/// One element of a per-gear float array; 0 when the host has no such element.
double GearValue(XPLMDataRef ref, int gear) {
    return ReadHostFloatAt(ref, gear);
}

} // namespace

int SetGearIndex() {
    if (XPVersion > kNewGearLayoutAfterVersion) {
        k_KLV_Front_Gear = kNewFrontGear;
        k_KLV_Rear_Gear = kNewRearGear;
    } else {
        k_KLV_Front_Gear = kOldFrontGear;
        k_KLV_Rear_Gear = kOldRearGear;
    }
    gKLVGearIndex = PrefFrontWheel ? k_KLV_Front_Gear : k_KLV_Rear_Gear;
    return gKLVGearIndex;
}

int ForceFrontGearUsage() {
    gKLVGearIndex = k_KLV_Front_Gear;
    return gKLVGearIndex;
}

void GetGearPos(int gear, double* x, double* y, double* z) {
    *x = GearValue(gGearPosX, gear);
    *y = GearValue(gGearPosY, gear);
    *z = GearValue(gGearPosZ, gear);
}

void GetGearGeom(int gear, double* legLen, double* tyreRadius) {
    *legLen = GearValue(gGear_leglen, gear);
    *tyreRadius = GearValue(gGear_tirrad, gear);
}

void PlaneToOGL(double x, double y, double z, double phi, double theta, double psi, double* outX,
                double* outY, double* outZ) {
    const double c1 = std::cos(phi * kGearDegToRad), s1 = std::sin(phi * kGearDegToRad);
    const double c2 = std::cos(theta * kGearDegToRad), s2 = std::sin(theta * kGearDegToRad);
    const double c3 = std::cos(psi * kGearDegToRad), s3 = std::sin(psi * kGearDegToRad);
    // Roll.
    const double x1 = c1 * x + s1 * y;
    const double y1 = c1 * y - s1 * x;
    // Pitch.
    const double z1 = c2 * z + s2 * y1;
    // Heading. outY deliberately pairs y1 with the unrotated z, not z1.
    *outX = c3 * x1 - s3 * z1;
    *outY = y1 * c2 - s2 * z;
    *outZ = x1 * s3 + z1 * c3;
}

void GearPostionOGL(int gear, double* x, double* y, double* z) {
    double px = 0.0, py = 0.0, pz = 0.0;
    float psi = 0.0f, theta = 0.0f, phi = 0.0f;
    GetPlaneAllPos(&px, &py, &pz, &psi, &theta, &phi);
    double gx = 0.0, gy = 0.0, gz = 0.0;
    GetGearPos(gear, &gx, &gy, &gz);
    double ox = 0.0, oy = 0.0, oz = 0.0;
    PlaneToOGL(gx, gy, gz, phi, theta, psi, &ox, &oy, &oz);
    *x = px + ox;
    *y = py + oy;
    *z = pz + oz;
}

void ApplyTruckCurrentHeading() {
    const float psi = ReadHostFloat(gPositionPsi);
    myTruckHeading = PrefFrontWheel ? psi : psi - kHalfTurn;
}

void CalcTruckSteering(int turn) {
    const float psi = ReadHostFloat(gPositionPsi);
    const float d = HV_MathUtils::UTIL_Heading0_2_360(psi - myTruckHeading);
    // Whole-degree tests against 2, 10 and 358, float tests against 11: both kinds on purpose.
    const int intD = TruncateToInt(d);
    switch (turn) {
    case 0:
        if (intD >= kStraightLow && intD <= kStraightHigh) {
            if (!(theOffset < 0.0f)) // also a NaN offset
                theOffset = 0.0f;
            else
                theOffset += kSteerRate;
        } else if (intD > kNearlyAligned) {
            return; // a small offset to this side is kept
        } else if (theOffset <= 0.0f) {
            theOffset = 0.0f;
        } else {
            theOffset -= kSteerRate;
        }
        break;
    case 1:
    case -2:
        if (intD < kStraightLow) {
            const float e = HV_MathUtils::UTIL_Heading0_2_360(myTruckHeading - psi);
            if (e >= kSteerLimit) {
                myTruckHeading = psi + kSteerLimit;
                return;
            }
            const int intOffset = TruncateToInt(theOffset);
            if (intOffset >= -kOffsetEaseLimit && intOffset <= kOffsetEaseLimit)
                theOffset += kSteerRate;
            else
                theOffset = kSteerLimit;
        } else if (theOffset < kSteerLimit) {
            theOffset += kSteerRate;
        } else {
            theOffset = kSteerLimit;
        }
        break;
    case 2:
    case -1:
        if (intD <= kNearlyAligned) {
            if (theOffset <= -kSteerLimit)
                theOffset = -kSteerLimit;
            else
                theOffset -= kSteerRate;
        } else {
            // d is then at least 359, so at least the limit: the truck is set to the limit at once
            // (the easing that a smaller d would take is never reached from here).
            myTruckHeading = psi - kSteerLimit;
            return;
        }
        break;
    default:
        return;
    }
    ApplyTruckCurrentHeading();
    myTruckHeading += theOffset;
}
