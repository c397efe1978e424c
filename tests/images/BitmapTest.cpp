// In-memory bitmap operations: row padding, fill, rotation, channel swap, colour key.
#include "ImageTestSupport.h"
#include "images/Bitmap.h"

#include <gtest/gtest.h>

using kalvora_test::OwnedBitmap;

namespace {

/// Fills every pixel with (x, y, channel) dependent bytes so that moves are traceable.
void FillPattern(OwnedBitmap& b) {
    for (long y = 0; y < b->height; ++y)
        for (long x = 0; x < b->width; ++x)
            for (int c = 0; c < b->channels; ++c)
                b.pixel(x, y)[c] = static_cast<unsigned char>(16 * y + 4 * x + c);
}

} // namespace

TEST(Bitmap, RowsArePaddedToFourBytes) {
    struct Case {
        long width;
        short channels;
        long pad;
    } cases[] = {{3, 3, 3}, {4, 3, 0}, {1, 3, 1}, {2, 3, 2}, {5, 4, 0}, {7, 1, 1}};
    for (const Case& c : cases) {
        OwnedBitmap b;
        ASSERT_EQ(CreateNewBitmap(c.width, 2, c.channels, b.get()), 0);
        EXPECT_EQ(b->pad, c.pad) << c.width << " x " << c.channels;
        EXPECT_EQ(BitmapRowBytes(b.get()) % 4, 0);
        EXPECT_NE(b->data, nullptr);
    }
}

TEST(Bitmap, FillSkipsTheBytesOfThePadding) {
    OwnedBitmap b;
    ASSERT_EQ(CreateNewBitmap(3, 2, 3, b.get()), 0); // rows of 9 + 3 bytes
    const size_t total = static_cast<size_t>(BitmapRowBytes(b.get()) * b->height);
    std::fill(b->data, b->data + total, 0);
    FillBitmap(b.get(), 7);
    // width x height x channels = 18 bytes from the start, padding not counted:
    // the first row and its padding, then 6 bytes of the second row.
    for (size_t i = 0; i < total; ++i)
        EXPECT_EQ(b->data[i], i < 18 ? 7 : 0) << "byte " << i;
}

TEST(Bitmap, RotationTurnsAQuarterCounterClockwise) {
    OwnedBitmap b;
    ASSERT_EQ(CreateNewBitmap(2, 3, 3, b.get()), 0);
    FillPattern(b);
    std::vector<int> old; // first channel, stored row by stored row
    for (long y = 0; y < 3; ++y)
        for (long x = 0; x < 2; ++x)
            old.push_back(b.at(x, y, 0));
    RotateBitmapCCW(b.get());
    ASSERT_EQ(b->width, 3);
    ASSERT_EQ(b->height, 2);
    EXPECT_EQ(b->pad, 3); // 3 pixels x 3 bytes = 9, padded to 12
    // Stored row 0 holds the old column 0 from the top row down.
    for (long x = 0; x < 3; ++x)
        EXPECT_EQ(b.at(x, 0, 0), old[(2 - x) * 2 + 0]) << "column " << x;
    for (long x = 0; x < 3; ++x)
        EXPECT_EQ(b.at(x, 1, 0), old[(2 - x) * 2 + 1]) << "column " << x;
    // All channels of a pixel move together.
    EXPECT_EQ(b.at(0, 0, 1), b.at(0, 0, 0) + 1);
    EXPECT_EQ(b.at(0, 0, 2), b.at(0, 0, 0) + 2);
}

TEST(Bitmap, FourRotationsGiveTheOriginalBack) {
    OwnedBitmap b;
    ASSERT_EQ(CreateNewBitmap(5, 3, 4, b.get()), 0);
    FillPattern(b);
    std::vector<int> first;
    for (long y = 0; y < 3; ++y)
        for (long x = 0; x < 5; ++x)
            for (int c = 0; c < 4; ++c)
                first.push_back(b.at(x, y, c));
    for (int i = 0; i < 4; ++i)
        RotateBitmapCCW(b.get());
    ASSERT_EQ(b->width, 5);
    ASSERT_EQ(b->height, 3);
    size_t i = 0;
    for (long y = 0; y < 3; ++y)
        for (long x = 0; x < 5; ++x)
            for (int c = 0; c < 4; ++c)
                EXPECT_EQ(b.at(x, y, c), first[i++]);
}

TEST(Bitmap, SwapRBExchangesOnlyThreeChannelPixels) {
    OwnedBitmap rgb;
    ASSERT_EQ(CreateNewBitmap(3, 2, 3, rgb.get()), 0);
    FillPattern(rgb);
    SwapRB(rgb.get());
    for (long y = 0; y < 2; ++y)
        for (long x = 0; x < 3; ++x) {
            const int base = static_cast<int>(16 * y + 4 * x);
            EXPECT_EQ(rgb.at(x, y, 0), base + 2);
            EXPECT_EQ(rgb.at(x, y, 1), base + 1);
            EXPECT_EQ(rgb.at(x, y, 2), base);
        }

    OwnedBitmap rgba;
    ASSERT_EQ(CreateNewBitmap(2, 2, 4, rgba.get()), 0);
    FillPattern(rgba);
    SwapRB(rgba.get());
    EXPECT_EQ(rgba.at(1, 1, 0), 16 + 4);
    EXPECT_EQ(rgba.at(1, 1, 2), 16 + 4 + 2);
}

TEST(Bitmap, MagentaBecomesTransparentBlackAndEverythingElseOpaque) {
    OwnedBitmap b;
    ASSERT_EQ(CreateNewBitmap(3, 2, 3, b.get()), 0); // padded rows in the source
    FillPattern(b);
    const unsigned char magenta[3] = {255, 0, 255}, nearly[3] = {255, 1, 255};
    std::copy(magenta, magenta + 3, b.pixel(0, 0));
    std::copy(nearly, nearly + 3, b.pixel(2, 1));
    ASSERT_EQ(ConvertBitmapToAlpha(b.get()), 0);
    ASSERT_EQ(b->channels, 4);
    EXPECT_EQ(b->pad, 0);
    for (int c = 0; c < 4; ++c)
        EXPECT_EQ(b.at(0, 0, c), 0);
    EXPECT_EQ(b.at(2, 1, 0), 255);
    EXPECT_EQ(b.at(2, 1, 1), 1);
    EXPECT_EQ(b.at(2, 1, 3), 255);
    // Padding was skipped: the second row starts with the pattern's second row.
    EXPECT_EQ(b.at(0, 1, 0), 16);
    EXPECT_EQ(b.at(1, 1, 2), 16 + 4 + 2);
    EXPECT_EQ(b.at(1, 1, 3), 255);
    // Already four channels: unchanged.
    const unsigned char* data = b->data;
    EXPECT_EQ(ConvertBitmapToAlpha(b.get()), 0);
    EXPECT_EQ(b->data, data);
}

TEST(Bitmap, AnyTranslucencyBecomesTheColourKeyWithPaddedRows) {
    OwnedBitmap b;
    ASSERT_EQ(CreateNewBitmap(3, 2, 4, b.get()), 0);
    FillPattern(b);
    b.pixel(0, 0)[3] = 255;
    b.pixel(1, 0)[3] = 254;
    b.pixel(2, 0)[3] = 0;
    for (long x = 0; x < 3; ++x)
        b.pixel(x, 1)[3] = 255;
    ASSERT_EQ(ConvertAlphaToBitmap(b.get()), 0);
    ASSERT_EQ(b->channels, 3);
    EXPECT_EQ(b->pad, 3);
    EXPECT_EQ(b.at(0, 0, 0), 0);
    EXPECT_EQ(b.at(0, 0, 2), 2);
    for (long x = 1; x < 3; ++x) {
        EXPECT_EQ(b.at(x, 0, 0), 255);
        EXPECT_EQ(b.at(x, 0, 1), 0);
        EXPECT_EQ(b.at(x, 0, 2), 255);
    }
    EXPECT_EQ(b.at(2, 1, 0), 16 + 8);
    EXPECT_EQ(b.at(2, 1, 2), 16 + 8 + 2);

    // And back: the keyed pixels are transparent again, the rest opaque.
    ASSERT_EQ(ConvertBitmapToAlpha(b.get()), 0);
    EXPECT_EQ(b.at(0, 0, 3), 255);
    EXPECT_EQ(b.at(1, 0, 3), 0);
    EXPECT_EQ(b.at(2, 0, 3), 0);
    EXPECT_EQ(b.at(2, 1, 3), 255);
}

TEST(Bitmap, ImpossibleSizesFailLikeAnAllocationAndLeaveNoPixels) {
    for (long side : {-1L, 1L << 30, 1L << 40}) {
        OwnedBitmap b;
        EXPECT_EQ(CreateNewBitmap(side, side, 4, b.get()), 12) << side;
        EXPECT_EQ(b->data, nullptr);
        // The conversions leave a bitmap without pixels alone.
        RotateBitmapCCW(b.get());
        SwapRB(b.get());
        EXPECT_EQ(ConvertAlphaToBitmap(b.get()), 0);
        EXPECT_EQ(b->data, nullptr);
    }
}
