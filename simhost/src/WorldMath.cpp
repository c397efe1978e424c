// Attitude quaternion and flat-earth conversions.
#include "WorldMath.h"

#include <algorithm>
#include <cmath>

namespace simhost::detail {

double wrap360(double deg) {
    double d = std::fmod(deg, 360.0);
    if (d < 0) d += 360.0;
    // Within a float's reach of 360 reads as 360.0f: call it 0.
    return d >= 360.0 - 1e-5 ? 0.0 : d;
}

void eulerToQuaternion(double psiDeg, double thetaDeg, double phiDeg, float q[4]) {
    const double h = kDegToRad / 2; // half angles
    const double cpsi = std::cos(psiDeg * h), spsi = std::sin(psiDeg * h);
    const double cthe = std::cos(thetaDeg * h), sthe = std::sin(thetaDeg * h);
    const double cphi = std::cos(phiDeg * h), sphi = std::sin(phiDeg * h);
    q[0] = static_cast<float>(cpsi * cthe * cphi + spsi * sthe * sphi);
    q[1] = static_cast<float>(cpsi * cthe * sphi - spsi * sthe * cphi);
    q[2] = static_cast<float>(cpsi * sthe * cphi + spsi * cthe * sphi);
    q[3] = static_cast<float>(-cpsi * sthe * sphi + spsi * cthe * cphi);
}

bool quaternionToEuler(const float q[4], double& psiDeg, double& thetaDeg, double& phiDeg) {
    double w = q[0], x = q[1], y = q[2], z = q[3];
    const double n = std::sqrt(w * w + x * x + y * y + z * z);
    if (!(n > 1e-9) || !std::isfinite(n)) return false;
    w /= n;
    x /= n;
    y /= n;
    z /= n;
    phiDeg = std::atan2(2 * (w * x + y * z), 1 - 2 * (x * x + y * y)) / kDegToRad;
    thetaDeg = std::asin(std::clamp(2 * (w * y - z * x), -1.0, 1.0)) / kDegToRad;
    psiDeg = wrap360(std::atan2(2 * (w * z + x * y), 1 - 2 * (y * y + z * z)) / kDegToRad);
    return true;
}

void localToWorld(double refLatDeg, double refLonDeg, double x, double y, double z, double& latDeg,
                  double& lonDeg, double& altM) {
    latDeg = refLatDeg - z / kEarthRadiusM / kDegToRad;
    const double c = std::cos(refLatDeg * kDegToRad);
    lonDeg = refLonDeg + (c > 1e-9 ? x / (kEarthRadiusM * c) / kDegToRad : 0.0);
    altM = y;
}

void worldToLocal(double refLatDeg, double refLonDeg, double latDeg, double lonDeg, double altM, double& x,
                  double& y, double& z) {
    z = -(latDeg - refLatDeg) * kDegToRad * kEarthRadiusM;
    x = (lonDeg - refLonDeg) * kDegToRad * kEarthRadiusM * std::cos(refLatDeg * kDegToRad);
    y = altM;
}

} // namespace simhost::detail
