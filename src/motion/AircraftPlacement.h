// Placing the aircraft while it is pushed: its horizontal position and an
// attitude quaternion written straight into the host, the angle conversions
// that go with them, nose-wheel steering through the yoke heading axis and
// the override that takes that axis from the user.
//
// Angles are degrees; positions are metres in the host's local frame
// (+x east, +y up, +z south; heading 0 looks towards -z). Every value read from
// the host goes through ReadHost* (SimulatorDataRefs.h): one that is not a
// number throws before anything is computed from it or written.
#pragma once

/// Radians per degree as the 32-bit float the motion code uses (0.017453292).
constexpr float DegToRad = 0.017453292f;
/// Degrees per radian (64-bit).
constexpr double kRadToDeg = 57.2957763671875;

/// Writes local x/z (metres) and the quaternion of (heading, current pitch, current roll).
void ApplyPosition(double x, double z, float heading);
/// Heading, pitch, roll (degrees) to the host's quaternion q0 (scalar) .. q3.
void HPRToQuaternion(const float hpr[3], float q[4]);
/// The inverse: quaternion to heading, pitch, roll in degrees.
void QuaternionToHPR(const float q[4], float hpr[3]);
/// Heading and pitch (degrees), seen from (x, y, z), of the line to the aircraft; heading in -360..0.
void HeadingPitchToPlane(double x, double y, double z, float* heading, float* pitch);
/// One nose-wheel steering step: 0 centre, 1 tail left, 2 tail right, -2/-1 ease back; only with a joystick.
void ApplyNWsteering(int mode);
/// Takes (1) or gives back (0) the heading axis; only with a joystick.
void OverrideJoystick(int on);

/// Local x, z (metres) and true heading psi (degrees) of the aircraft.
void GetPlaneXZPsi(double* x, double* z, float* psi);
/// Local x, y, z of the aircraft, metres.
void GetPlaneXYZ(double* x, double* y, double* z);
/// Local x, y, z (metres) and psi, theta, phi (degrees) of the aircraft.
void GetPlaneAllPos(double* x, double* y, double* z, float* psi, float* theta, float* phi);
