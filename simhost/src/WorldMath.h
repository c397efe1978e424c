// Pure geometry of the world: the attitude quaternion and the flat earth.
#pragma once

namespace simhost::detail {

constexpr double kPi = 3.14159265358979323846;
constexpr double kDegToRad = kPi / 180.0;
constexpr double kEarthRadiusM = 6371008.8; ///< mean Earth radius, metres (as XPLMWorldToLocal uses)

/// Heading in [0, 360) degrees.
double wrap360(double deg);
/// X-Plane's attitude quaternion [w, x, y, z] from heading, pitch and roll (degrees).
void eulerToQuaternion(double psiDeg, double thetaDeg, double phiDeg, float q[4]);
/// The inverse: heading in [0, 360), pitch and roll in degrees. False for a zero quaternion.
bool quaternionToEuler(const float q[4], double& psiDeg, double& thetaDeg, double& phiDeg);
/// Flat earth around a reference point: local metres (x east, y up, z south) to degrees and metres MSL.
void localToWorld(double refLatDeg, double refLonDeg, double x, double y, double z, double& latDeg,
                  double& lonDeg, double& altM);
/// The inverse of localToWorld.
void worldToLocal(double refLatDeg, double refLonDeg, double latDeg, double lonDeg, double altM, double& x,
                  double& y, double& z);

} // namespace simhost::detail
