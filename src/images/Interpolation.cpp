// Interpolation helpers for the scaled bitmap copies.
#include "images/Interpolation.h"

namespace {
constexpr double kByteMax = 255.0;
/// Divides the outer-sample term of the cubic; the program's own choice for this curve.
constexpr double kBicubicDivisor = 7.0;
} // namespace

double clamp(double v, double lo, double hi) {
    if (v < lo) return lo;
    if (v > hi) return hi;
    return v;
}

double BilinearInterpolate1d(double a, double b, double t) {
    return (1.0 - t) * a + t * b;
}

double BilinearInterpolate2d(double p00, double p10, double p01, double p11, double fx, double fy) {
    return ((1.0 - fx) * p00 + fx * p10) * (1.0 - fy) + ((1.0 - fx) * p01 + fx * p11) * fy;
}

double BicubicInterpolate1d(double p0, double p1, double p2, double p3, double t) {
    const double a = (p0 + p2) * 0.5 - p1;
    const double b = (p3 - p2 - 3.0 * a) / kBicubicDivisor;
    const double v = b * t * t * t + a * t * t + (p2 - b - a - p1) * t + p1;
    return clamp(v, 0.0, kByteMax);
}

double BicubicInterpolate2d(const double s[16], double fx, double fy) {
    double rows[4];
    for (int r = 0; r < 4; ++r)
        rows[r] = BicubicInterpolate1d(s[4 * r], s[4 * r + 1], s[4 * r + 2], s[4 * r + 3], fx);
    return BicubicInterpolate1d(rows[0], rows[1], rows[2], rows[3], fy);
}
