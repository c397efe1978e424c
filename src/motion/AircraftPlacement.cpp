#include "motion/AircraftPlacement.h"

#include "core/SimulatorDataRefs.h"

#include <cmath>

namespace {

constexpr int kQuaternionSize = 4;
constexpr int kJoystickPresent = 1;
constexpr float kSteeringStep = 0.02f; // yoke heading ratio per frame
constexpr float kSteeringLimit = 0.3f; // largest yoke heading ratio the push uses

enum SteeringMode {
    kSteerEaseFromRight = -2,
    kSteerEaseFromLeft = -1,
    kSteerCentre = 0,
    kSteerTailLeft = 1,
    kSteerTailRight = 2,
};

bool HasJoystick() {
    return XPLMGetDatai(gIsJoystickPresent) == kJoystickPresent;
}

} // namespace

void ApplyPosition(double x, double z, float heading) {
    XPLMSetDatad(gPositionLocalx, x);
    XPLMSetDatad(gPositionLocalz, z);
    // local_y is left to the host, which keeps the aircraft on the ground.
    const float hpr[3] = {heading, ReadHostFloat(gPositionThe), ReadHostFloat(gPositionPhi)};
    float q[kQuaternionSize];
    HPRToQuaternion(hpr, q);
    XPLMSetDatavf(gqDataRef, q, 0, kQuaternionSize);
}

void HPRToQuaternion(const float hpr[3], float q[4]) {
    // Half angles in radians, single precision; their sines and cosines in double.
    const float h = hpr[0] * DegToRad / 2.0f;
    const float p = hpr[1] * DegToRad / 2.0f;
    const float r = hpr[2] * DegToRad / 2.0f;
    const double ch = std::cos(h), sh = std::sin(h);
    const double cp = std::cos(p), sp = std::sin(p);
    const double cr = std::cos(r), sr = std::sin(r);
    q[0] = static_cast<float>(ch * cr * cp + sh * sr * sp);
    q[1] = static_cast<float>(ch * cp * sr - sh * cr * sp);
    q[2] = static_cast<float>(ch * cr * sp + sh * cp * sr);
    q[3] = static_cast<float>(sh * cr * cp - ch * sr * sp);
}

void QuaternionToHPR(const float q[4], float hpr[3]) {
    const double q0 = q[0], q1 = q[1], q2 = q[2], q3 = q[3];
    hpr[0] = static_cast<float>(std::atan2(2.0 * (q1 * q2 + q0 * q3), q0 * q0 + q1 * q1 - q2 * q2 - q3 * q3) *
                                kRadToDeg);
    hpr[1] = static_cast<float>(std::asin(-2.0 * (q1 * q3 - q0 * q2)) * kRadToDeg);
    hpr[2] = static_cast<float>(std::atan2(2.0 * (q2 * q3 + q0 * q1), q0 * q0 - q1 * q1 - q2 * q2 + q3 * q3) *
                                kRadToDeg);
}

void HeadingPitchToPlane(double x, double y, double z, float* heading, float* pitch) {
    double px = 0.0, py = 0.0, pz = 0.0;
    GetPlaneXYZ(&px, &py, &pz);
    const double dx = px - x;
    const double dy = py - y;
    const double dz = pz - z;
    *heading = static_cast<float>(std::atan2(-dx, dz) * kRadToDeg - 180.0);
    *pitch = static_cast<float>(std::atan(dy / std::sqrt(dx * dx + dz * dz)) * kRadToDeg);
}

void ApplyNWsteering(int mode) {
    if (!HasJoystick()) return;
    const float s = ReadHostFloat(gJoystickRatio);
    switch (mode) {
    case kSteerCentre:
        XPLMSetDataf(gJoystickRatio, 0.0f);
        break;
    case kSteerTailLeft:
        if (s > -kSteeringLimit) XPLMSetDataf(gJoystickRatio, s - kSteeringStep);
        break;
    case kSteerTailRight:
        if (s < kSteeringLimit) XPLMSetDataf(gJoystickRatio, s + kSteeringStep);
        break;
    case kSteerEaseFromRight:
        if (s > 0.0f) XPLMSetDataf(gJoystickRatio, s - kSteeringStep);
        break;
    case kSteerEaseFromLeft:
        if (s < 0.0f) XPLMSetDataf(gJoystickRatio, s + kSteeringStep);
        break;
    default:
        break;
    }
}

void OverrideJoystick(int on) {
    if (!HasJoystick() || (on != 0 && on != 1)) return;
    XPLMSetDatai(gJoyOverride, on);
}

void GetPlaneXZPsi(double* x, double* z, float* psi) {
    *x = ReadHostDouble(gPositionLocalx);
    *z = ReadHostDouble(gPositionLocalz);
    *psi = ReadHostFloat(gPositionPsi);
}

void GetPlaneXYZ(double* x, double* y, double* z) {
    *x = ReadHostDouble(gPositionLocalx);
    *y = ReadHostDouble(gPositionLocaly);
    *z = ReadHostDouble(gPositionLocalz);
}

void GetPlaneAllPos(double* x, double* y, double* z, float* psi, float* theta, float* phi) {
    GetPlaneXYZ(x, y, z);
    *psi = ReadHostFloat(gPositionPsi);
    *theta = ReadHostFloat(gPositionThe);
    *phi = ReadHostFloat(gPositionPhi);
}
