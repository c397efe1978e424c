// Pixel interpolation on doubles, used by the scaled bitmap copies.
#pragma once

/// lo when v < lo, else hi when v > hi, else v.
double clamp(double v, double lo, double hi);
/// (1 - t) a + t b.
double BilinearInterpolate1d(double a, double b, double t);
/// Bilinear blend of the four corners p00 (left bottom), p10, p01, p11 at (fx, fy) in 0..1.
double BilinearInterpolate2d(double p00, double p10, double p01, double p11, double fx, double fy);
/// Cubic through p1 (t = 0) and p2 (t = 1) shaped by p0 and p3, limited to 0..255.
double BicubicInterpolate1d(double p0, double p1, double p2, double p3, double t);
/// Bicubic over four rows of four samples (first row first): rows along x with fx, then along y with fy.
double BicubicInterpolate2d(const double samples[16], double fx, double fy);
