// The scaled and warped bitmap copies and the interpolation they sample with.
#include "ImageTestSupport.h"
#include "images/BitmapCopy.h"
#include "images/Interpolation.h"

#include <gtest/gtest.h>

using kalvora_test::OwnedBitmap;

namespace {

int Pattern(long x, long y, int c) {
    return (x * 13 + y * 29 + c * 7) % 256;
}
int Blank(long, long, int) {
    return 0;
}

} // namespace

TEST(Interpolation, BicubicPassesThroughTheInnerSamplesAndStaysInByteRange) {
    EXPECT_DOUBLE_EQ(BicubicInterpolate1d(40, 100, 200, 90, 0), 100);
    EXPECT_NEAR(BicubicInterpolate1d(40, 100, 200, 90, 1), 200, 1e-9);
    // The outer-sample term is divided by 7: with p0 + p2 = 2 p1 the curve is
    // b t^3 + (p2 - b - p1) t + p1, b = (p3 - p2) / 7.
    const double b = (0.0 - 200.0) / 7.0;
    EXPECT_NEAR(BicubicInterpolate1d(0, 100, 200, 0, 0.5), b / 8 + (200 - b - 100) / 2 + 100, 1e-9);
    EXPECT_EQ(BicubicInterpolate1d(0, 255, 255, 0, 0.5), 255); // overshoot limited
    EXPECT_EQ(BicubicInterpolate1d(255, 0, 0, 255, 0.5), 0);   // undershoot limited
    double rows[16];                                           // the 2-D form interpolates rows first
    for (int r = 0; r < 4; ++r)
        for (int k = 0; k < 4; ++k)
            rows[4 * r + k] = 10.0 * r + k;
    EXPECT_NEAR(BicubicInterpolate2d(rows, 0, 0), rows[5], 1e-9);
    EXPECT_NEAR(BicubicInterpolate2d(rows, 1, 1), rows[10], 1e-9);
}

TEST(BitmapCopy, SameSizeIsExactEnlargingBlendsAtTheBorderShrinkingSamples) {
    OwnedBitmap src(9, 7, 3, Pattern), dst(12, 10, 3, Blank);
    CopyBitmapSection(src.get(), dst.get(), 0, 0, 9, 7, 2, 1, 11, 8);
    for (long y = 0; y < 7; ++y)
        for (long x = 0; x < 9; ++x)
            for (int c = 0; c < 3; ++c)
                ASSERT_EQ(dst.at(x + 2, y + 1, c), src.at(x, y, c)) << x << "," << y;
    EXPECT_EQ(dst.at(0, 0, 0), 0); // outside the destination rectangle: untouched
    EXPECT_EQ(dst.at(11, 9, 2), 0);

    // Two pixels 0 and 200 spread over three: the middle falls halfway, on the border, where sampling
    // is bilinear.
    OwnedBitmap two(2, 1, 3, [](long x, long, int) { return 200 * x; }), three(3, 1, 3, Blank);
    CopyBitmapSection(two.get(), three.get(), 0, 0, 2, 1, 0, 0, 3, 1);
    for (long x = 0; x < 3; ++x)
        EXPECT_EQ(three.at(x, 0, 0), 100 * x);

    // A ramp 0, 10, ... 90 (10 wide) onto 4 pixels samples positions 0, 3, 6, 9.
    OwnedBitmap ramp(10, 6, 4, [](long x, long, int) { return 10 * x; }), four(4, 2, 4, Blank);
    CopyBitmapSection(ramp.get(), four.get(), 0, 0, 10, 6, 0, 0, 4, 2);
    for (long y = 0; y < 2; ++y)
        for (long x = 0; x < 4; ++x)
            EXPECT_EQ(four.at(x, y, 3), 30 * x) << x;
}

TEST(BitmapCopy, AWarpedRectangleCopiesLikeTheScaledCopyAndCanMirror) {
    OwnedBitmap src(11, 8, 3, Pattern), a(17, 13, 3, Blank), b(17, 13, 3, Blank);
    CopyBitmapSection(src.get(), a.get(), 1, 2, 10, 8, 0, 0, 17, 13);
    CopyBitmapSectionWarped(src.get(), b.get(), 1, 2, 9, 2, 9, 7, 1, 7, 0, 0, 17, 13);
    for (long y = 0; y < 13; ++y)
        for (long x = 0; x < 17; ++x)
            for (int c = 0; c < 3; ++c)
                ASSERT_EQ(a.at(x, y, c), b.at(x, y, c)) << x << "," << y;

    OwnedBitmap small(6, 5, 3, Pattern), mirrored(6, 5, 3, Blank);
    // Corners bottom-left, bottom-right, top-right, top-left taken from the opposite side.
    CopyBitmapSectionWarped(small.get(), mirrored.get(), 5, 0, 0, 0, 0, 4, 5, 4, 0, 0, 6, 5);
    for (long y = 0; y < 5; ++y)
        for (long x = 0; x < 6; ++x)
            EXPECT_EQ(mirrored.at(x, y, 1), small.at(5 - x, y, 1)) << x << "," << y;
}

TEST(BitmapCopy, RectanglesOutsideEitherBitmapAreClippedNotOverrun) {
    OwnedBitmap src(4, 4, 3, Pattern), dst(4, 4, 3, Blank), rgba(4, 4, 4, Blank);
    CopyBitmapSection(src.get(), dst.get(), -5, -5, 40, 40, -3, -3, 9, 9);
    CopyBitmapSectionWarped(src.get(), dst.get(), -100, -100, 100, -100, 100, 100, -100, 100, -2, -2, 8, 8);
    CopyBitmapSection(src.get(), dst.get(), 0, 0, 4, 4, 1, 1, 2, 2); // single destination pixel
    EXPECT_EQ(dst.at(1, 1, 0), src.at(0, 0, 0));
    CopyBitmapSection(src.get(), rgba.get(), 0, 0, 4, 4, 0, 0, 4, 4); // channel mismatch: nothing
    EXPECT_EQ(rgba.at(2, 2, 0), 0);
}
