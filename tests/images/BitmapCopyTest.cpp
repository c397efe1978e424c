// Interpolation helpers and the scaled and warped bitmap copies.
#include "ImageTestSupport.h"
#include "images/BitmapCopy.h"
#include "images/Interpolation.h"

#include <gtest/gtest.h>

using kalvora_test::OwnedBitmap;

namespace {

/// A width x height bitmap whose channel c at (x, y) is (x * 13 + y * 29 + c * 7) % 256.
void MakePattern(OwnedBitmap& b, long width, long height, short channels) {
    ASSERT_EQ(CreateNewBitmap(width, height, channels, b.get()), 0);
    for (long y = 0; y < height; ++y)
        for (long x = 0; x < width; ++x)
            for (int c = 0; c < channels; ++c)
                b.pixel(x, y)[c] = static_cast<unsigned char>((x * 13 + y * 29 + c * 7) % 256);
}

void MakeBlank(OwnedBitmap& b, long width, long height, short channels) {
    ASSERT_EQ(CreateNewBitmap(width, height, channels, b.get()), 0);
    std::fill(b->data, b->data + BitmapRowBytes(b.get()) * height, 0);
}

} // namespace

TEST(Interpolation, ClampAndBilinearBlend) {
    EXPECT_EQ(clamp(-1, 0, 255), 0);
    EXPECT_EQ(clamp(300, 0, 255), 255);
    EXPECT_EQ(clamp(12.5, 0, 255), 12.5);
    EXPECT_DOUBLE_EQ(BilinearInterpolate1d(10, 20, 0.25), 12.5);
    // Corners at the ends, the mean in the middle.
    EXPECT_DOUBLE_EQ(BilinearInterpolate2d(10, 20, 30, 40, 0, 0), 10);
    EXPECT_DOUBLE_EQ(BilinearInterpolate2d(10, 20, 30, 40, 1, 0), 20);
    EXPECT_DOUBLE_EQ(BilinearInterpolate2d(10, 20, 30, 40, 0, 1), 30);
    EXPECT_DOUBLE_EQ(BilinearInterpolate2d(10, 20, 30, 40, 1, 1), 40);
    EXPECT_DOUBLE_EQ(BilinearInterpolate2d(10, 20, 30, 40, 0.5, 0.5), 25);
}

TEST(Interpolation, BicubicPassesThroughTheInnerSamplesAndStaysInByteRange) {
    EXPECT_DOUBLE_EQ(BicubicInterpolate1d(40, 100, 200, 90, 0), 100);
    EXPECT_NEAR(BicubicInterpolate1d(40, 100, 200, 90, 1), 200, 1e-9);
    // The outer-sample term is divided by 7: with p0 + p2 = 2 p1 the curve is
    // b t^3 + (p2 - b - p1) t + p1, b = (p3 - p2) / 7.
    const double b = (0.0 - 200.0) / 7.0;
    EXPECT_NEAR(BicubicInterpolate1d(0, 100, 200, 0, 0.5), b / 8 + (200 - b - 100) / 2 + 100, 1e-9);
    EXPECT_EQ(BicubicInterpolate1d(0, 255, 255, 0, 0.5), 255); // overshoot limited
    EXPECT_EQ(BicubicInterpolate1d(255, 0, 0, 255, 0.5), 0);   // undershoot limited
    // A constant field stays constant; the 2-D form interpolates rows first.
    double flat[16];
    std::fill(flat, flat + 16, 77.0);
    EXPECT_NEAR(BicubicInterpolate2d(flat, 0.3, 0.8), 77.0, 1e-9);
    double rows[16];
    for (int r = 0; r < 4; ++r)
        for (int k = 0; k < 4; ++k)
            rows[4 * r + k] = 10.0 * r + k;
    EXPECT_NEAR(BicubicInterpolate2d(rows, 0, 0), rows[5], 1e-9);
    EXPECT_NEAR(BicubicInterpolate2d(rows, 1, 1), rows[10], 1e-9);
}

TEST(BitmapCopy, SameSizeCopyIsExactInsideAndAtTheBorder) {
    OwnedBitmap src, dst;
    MakePattern(src, 9, 7, 3);
    MakeBlank(dst, 12, 10, 3);
    CopyBitmapSection(src.get(), dst.get(), 0, 0, 9, 7, 2, 1, 11, 8);
    for (long y = 0; y < 7; ++y)
        for (long x = 0; x < 9; ++x)
            for (int c = 0; c < 3; ++c)
                ASSERT_EQ(dst.at(x + 2, y + 1, c), src.at(x, y, c)) << x << "," << y;
    EXPECT_EQ(dst.at(0, 0, 0), 0); // outside the destination rectangle: untouched
    EXPECT_EQ(dst.at(11, 9, 2), 0);
}

TEST(BitmapCopy, EnlargingBlendsNeighboursAtTheBorder) {
    // Two source pixels 0 and 200 spread over three: the middle falls halfway, on the
    // border, where sampling is bilinear.
    OwnedBitmap src, dst;
    MakeBlank(src, 2, 1, 3);
    for (int c = 0; c < 3; ++c)
        src.pixel(1, 0)[c] = 200;
    MakeBlank(dst, 3, 1, 3);
    CopyBitmapSection(src.get(), dst.get(), 0, 0, 2, 1, 0, 0, 3, 1);
    EXPECT_EQ(dst.at(0, 0, 0), 0);
    EXPECT_EQ(dst.at(1, 0, 0), 100);
    EXPECT_EQ(dst.at(2, 0, 0), 200);
}

TEST(BitmapCopy, ShrinkingSamplesTheStretchedPositions) {
    // A horizontal ramp 0, 10, 20, ... 90 (10 wide) onto 4 pixels: positions 0, 3, 6, 9.
    OwnedBitmap src, dst;
    MakeBlank(src, 10, 6, 4);
    for (long y = 0; y < 6; ++y)
        for (long x = 0; x < 10; ++x)
            for (int c = 0; c < 4; ++c)
                src.pixel(x, y)[c] = static_cast<unsigned char>(10 * x);
    MakeBlank(dst, 4, 2, 4);
    CopyBitmapSection(src.get(), dst.get(), 0, 0, 10, 6, 0, 0, 4, 2);
    const int expected[4] = {0, 30, 60, 90};
    for (long y = 0; y < 2; ++y)
        for (long x = 0; x < 4; ++x)
            EXPECT_EQ(dst.at(x, y, 3), expected[x]) << x;
}

TEST(BitmapCopy, AWarpedRectangleCopiesLikeTheScaledCopy) {
    OwnedBitmap src, a, b;
    MakePattern(src, 11, 8, 3);
    MakeBlank(a, 17, 13, 3);
    MakeBlank(b, 17, 13, 3);
    CopyBitmapSection(src.get(), a.get(), 1, 2, 10, 8, 0, 0, 17, 13);
    CopyBitmapSectionWarped(src.get(), b.get(), 1, 2, 9, 2, 9, 7, 1, 7, 0, 0, 17, 13);
    for (long y = 0; y < 13; ++y)
        for (long x = 0; x < 17; ++x)
            for (int c = 0; c < 3; ++c)
                ASSERT_EQ(a.at(x, y, c), b.at(x, y, c)) << x << "," << y;
}

TEST(BitmapCopy, AWarpedQuadrilateralCanMirror) {
    OwnedBitmap src, dst;
    MakePattern(src, 6, 5, 3);
    MakeBlank(dst, 6, 5, 3);
    // Corners bottom-left, bottom-right, top-right, top-left taken from the opposite side.
    CopyBitmapSectionWarped(src.get(), dst.get(), 5, 0, 0, 0, 0, 4, 5, 4, 0, 0, 6, 5);
    for (long y = 0; y < 5; ++y)
        for (long x = 0; x < 6; ++x)
            EXPECT_EQ(dst.at(x, y, 1), src.at(5 - x, y, 1)) << x << "," << y;
}

TEST(BitmapCopy, RectanglesOutsideEitherBitmapAreClippedNotOverrun) {
    OwnedBitmap src, dst;
    MakePattern(src, 4, 4, 3);
    MakeBlank(dst, 4, 4, 3);
    CopyBitmapSection(src.get(), dst.get(), -5, -5, 40, 40, -3, -3, 9, 9);
    CopyBitmapSectionWarped(src.get(), dst.get(), -100, -100, 100, -100, 100, 100, -100, 100, -2, -2, 8, 8);
    CopyBitmapSection(src.get(), dst.get(), 0, 0, 4, 4, 1, 1, 2, 2); // single destination pixel
    EXPECT_EQ(dst.at(1, 1, 0), src.at(0, 0, 0));
    OwnedBitmap rgba;
    MakeBlank(rgba, 4, 4, 4);
    CopyBitmapSection(src.get(), rgba.get(), 0, 0, 4, 4, 0, 0, 4, 4); // channel mismatch: nothing
    EXPECT_EQ(rgba.at(2, 2, 0), 0);
}
