// In-memory bitmap operations: row padding, fill, channel swap, colour key.
#include "ImageTestSupport.h"

#include <gtest/gtest.h>

#include <cerrno>

using kalvora_test::OwnedBitmap;

namespace {

/// Bytes that say where they are, so that moves are traceable.
int Pattern(long x, long y, int c) {
    return static_cast<int>(16 * y + 4 * x + c);
}

} // namespace

TEST(Bitmap, RowsArePaddedToFourBytesAndFillSkipsThePadding) {
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
    }
    OwnedBitmap b(3, 2, 3, [](long, long, int) { return 0; }); // rows of 9 + 3 bytes
    FillBitmap(b.get(), 7);
    // width x height x channels = 18 bytes from the start, padding not counted: the first row and its
    // padding, then 6 bytes of the second row.
    for (long i = 0; i < BitmapRowBytes(b.get()) * b->height; ++i)
        EXPECT_EQ(b->data[i], i < 18 ? 7 : 0) << "byte " << i;
}

TEST(Bitmap, MagentaIsTheColourKeyOfTransparencyBothWays) {
    OwnedBitmap b(3, 2, 3, Pattern); // padded rows in the source
    const unsigned char magenta[3] = {255, 0, 255}, nearly[3] = {255, 1, 255};
    std::copy(magenta, magenta + 3, b.pixel(0, 0));
    std::copy(nearly, nearly + 3, b.pixel(2, 1));
    ASSERT_EQ(ConvertBitmapToAlpha(b.get()), 0);
    ASSERT_EQ(b->channels, 4);
    EXPECT_EQ(b->pad, 0);
    for (int c = 0; c < 4; ++c)
        EXPECT_EQ(b.at(0, 0, c), 0) << "magenta becomes transparent black";
    EXPECT_EQ(b.at(2, 1, 1), 1);
    EXPECT_EQ(b.at(2, 1, 3), 255) << "anything else is opaque";
    EXPECT_EQ(b.at(1, 1, 2), Pattern(1, 1, 2)) << "the padding was skipped";
    const unsigned char* data = b->data;
    EXPECT_EQ(ConvertBitmapToAlpha(b.get()), 0);
    EXPECT_EQ(b->data, data) << "already four channels: unchanged";
}

TEST(Bitmap, ImpossibleSizesFailLikeAnAllocationAndLeaveNoPixels) {
    for (long side : {-1L, 1L << 30, 1L << 40}) {
        OwnedBitmap b;
        EXPECT_EQ(CreateNewBitmap(side, side, 4, b.get()), ENOMEM) << side;
        EXPECT_EQ(b->data, nullptr);
        // The conversions leave a bitmap without pixels alone.
        SwapRB(b.get());
        EXPECT_EQ(ConvertBitmapToAlpha(b.get()), 0);
        EXPECT_EQ(b->data, nullptr);
    }
}
