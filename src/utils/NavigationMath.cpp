// Headings and distances on the sphere and in the simulator's flat local frame.
#include "utils/MathUtils.h"

#include <algorithm>
#include <cmath>

namespace {

/// pi as the single-precision value the navigation formulas are defined with.
constexpr float kPi = 3.1415927f;
/// Radians to degrees for the great-circle course, single precision.
constexpr double kCourseDegreesPerRadian = 57.295776;
/// Radians to degrees for the flat heading (the float nearest 180/pi).
constexpr double kFlatDegreesPerRadian = 57.2957763671875;
/// Minutes of arc (nautical miles) per degree.
constexpr double kNauticalMilesPerDegree = 60.0;
constexpr float kFullTurnDegrees = 360.0f;
constexpr float kHalfTurnDegrees = 180.0f;

/// Degrees to radians in single precision; the trigonometry itself runs in double.
double ToRadians(float degrees) {
    return static_cast<double>(degrees * kPi / 180.0f);
}

/// acos of a cosine that rounding may have pushed just outside [-1, 1].
double SafeAcos(double cosine) {
    return std::acos(std::clamp(cosine, -1.0, 1.0));
}

/// Central angle between two points, radians.
double CentralAngle(float lat1, float lon1, float lat2, float lon2) {
    const double a1 = ToRadians(lat1), o1 = ToRadians(lon1), a2 = ToRadians(lat2), o2 = ToRadians(lon2);
    return SafeAcos(std::sin(a1) * std::sin(a2) + std::cos(a1) * std::cos(a2) * std::cos(o1 - o2));
}

} // namespace

namespace HV_MathUtils {

float Math_GetDistance(float lat1, float lon1, float lat2, float lon2) {
    const double d = CentralAngle(lat1, lon1, lat2, lon2);
    return static_cast<float>(d * 180.0 * kNauticalMilesPerDegree / kPi);
}

int Math_GetHeading(float lat1, float lon1, float lat2, float lon2) {
    const double d = CentralAngle(lat1, lon1, lat2, lon2);
    const double a1 = ToRadians(lat1), a2 = ToRadians(lat2);
    const double c = SafeAcos((std::sin(a2) - std::sin(a1) * std::cos(d)) / (std::cos(a1) * std::sin(d)));
    const double course = std::sin(ToRadians(lon2) - ToRadians(lon1)) < 0 ? 2 * kPi - c : c;
    const double degrees = course * kCourseDegreesPerRadian + 0.5;
    // Identical points or a start at a pole have no course: 0 rather than an undefined cast.
    if (!std::isfinite(degrees)) return 0;
    return static_cast<int>(degrees);
}

float Math_Get3DDistance(float x1, float y1, float z1, float x2, float y2, float z2) {
    const float dx = x2 - x1, dy = y2 - y1, dz = z2 - z1;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

float Math_GetFlatHeading(double x1, double z1, double x2, double z2) {
    // "+ 0.0" turns -0.0 into +0.0, so that due north gives 0 rather than -360.
    const double east = -(x2 - x1) + 0.0;
    return static_cast<float>(std::atan2(east, z2 - z1) * kFlatDegreesPerRadian - kHalfTurnDegrees);
}

float UTIL_Heading0_2_360(float h) {
    if (h >= kFullTurnDegrees) h -= kFullTurnDegrees;
    if (h < 0) h += kFullTurnDegrees;
    return h;
}

float UTIL_MagneticFromTrueWith(float trueHeading, float derivation) {
    return UTIL_Heading0_2_360(trueHeading - derivation);
}

float UTIL_TrueFromMagneticWith(float magneticHeading, float derivation) {
    if (derivation < 0) derivation = std::fabs(std::trunc(derivation));
    return UTIL_Heading0_2_360(magneticHeading - derivation);
}

} // namespace HV_MathUtils
