// BMP reader and writer, on bmpsuite files and on hand-made headers.
#include "ImageTestSupport.h"
#include "images/ImageFiles.h"
#include "support/Corpus.h"

#include <gtest/gtest.h>

#include <cstdint>

using kalvora_test::corpusPath;
using kalvora_test::Cut;
using kalvora_test::OwnedBitmap;

namespace {

void Put32(std::vector<unsigned char>& b, size_t at, uint32_t v) {
    for (int i = 0; i < 4; ++i)
        b[at + i] = static_cast<unsigned char>(v >> (8 * i));
}

/// A 24-bit BMP of width x height with the given header values and pixel bytes 1, 2, 3, ...
std::vector<unsigned char> MakeBmp(int32_t width, int32_t height, uint16_t bits = 24,
                                   int64_t claimedFileSize = -1) {
    const long pad = (width * 3L + 3) / 4 * 4 - width * 3L;
    const long data = (width * 3L + pad) * (height < 0 ? -height : height);
    std::vector<unsigned char> b(static_cast<size_t>(54 + data));
    b[0] = 'B';
    b[1] = 'M';
    Put32(b, 2,
          claimedFileSize >= 0 ? static_cast<uint32_t>(claimedFileSize) : static_cast<uint32_t>(b.size()));
    Put32(b, 10, 54);
    Put32(b, 14, 40);
    Put32(b, 18, static_cast<uint32_t>(width));
    Put32(b, 22, static_cast<uint32_t>(height));
    b[26] = 1;
    b[28] = static_cast<unsigned char>(bits);
    for (size_t i = 54; i < b.size(); ++i)
        b[i] = static_cast<unsigned char>(i - 53);
    return b;
}

} // namespace

TEST(BmpFile, ReadsA24BitFileWithItsPaddingAndByteOrder) {
    const auto path = kalvora_test::WriteBytes(kalvora_test::ScratchPath("3x2.bmp"), MakeBmp(3, 2));
    OwnedBitmap b;
    ASSERT_EQ(CreateBitmapFromFile(path.c_str(), b.get()), 0);
    EXPECT_EQ(b->width, 3);
    EXPECT_EQ(b->height, 2);
    EXPECT_EQ(b->pad, 3);
    EXPECT_EQ(b->channels, 3);
    // Bytes exactly as stored: blue-green-red, bottom row first, padding kept.
    EXPECT_EQ(b.at(0, 0, 0), 1);
    EXPECT_EQ(b.at(2, 0, 2), 9);
    EXPECT_EQ(b.at(0, 1, 0), 13);
}

TEST(BmpFile, RefusesOtherDepthsTopDownAndShortClaims) {
    // Sides of 2^31 - 1 pixels, whose byte count does not fit 64 bits, in a file claiming 4 GiB.
    std::vector<unsigned char> largest = MakeBmp(1, 1, 24, 0xFFFFFFFFu);
    Put32(largest, 18, 0x7FFFFFFF);
    Put32(largest, 22, 0x7FFFFFFF);
    struct Case {
        const char* name;
        std::vector<unsigned char> bytes;
    } cases[] = {
        {"32-bit", MakeBmp(4, 2, 32)},
        {"top-down", MakeBmp(4, -2)},
        {"zero width", MakeBmp(0, 2)},
        {"claims too little data", MakeBmp(4, 4, 24, 54 + 4 * 4 * 3 - 1)},
        {"largest sides", largest},
        {"truncated", Cut(MakeBmp(4, 4), -1)},
        {"header only", Cut(MakeBmp(4, 4), 30)},
        {"empty", {}},
    };
    for (auto& c : cases) {
        const auto path = kalvora_test::WriteBytes(kalvora_test::ScratchPath("bad.bmp"), c.bytes);
        OwnedBitmap b;
        EXPECT_NE(CreateBitmapFromFile(path.c_str(), b.get()), 0) << c.name;
        EXPECT_EQ(b->data, nullptr) << c.name;
    }
    OwnedBitmap b;
    EXPECT_EQ(CreateBitmapFromFile("/nonexistent/kalvora.bmp", b.get()), ENOENT);
}

TEST(BmpFile, WrittenFilesReadBackUnchanged) {
    OwnedBitmap out;
    ASSERT_EQ(CreateNewBitmap(5, 3, 3, out.get()), 0);
    for (long i = 0; i < BitmapRowBytes(out.get()) * 3; ++i)
        out->data[i] = static_cast<unsigned char>(i * 7);
    const auto path = kalvora_test::ScratchPath("round.bmp");
    ASSERT_EQ(WriteBitmapToFile(out.get(), path.c_str()), 0);
    OwnedBitmap in;
    ASSERT_EQ(CreateBitmapFromFile(path.c_str(), in.get()), 0);
    ASSERT_EQ(in->width, 5);
    ASSERT_EQ(in->height, 3);
    ASSERT_EQ(in->pad, out->pad);
    for (long y = 0; y < 3; ++y)
        for (long x = 0; x < 5; ++x)
            for (int c = 0; c < 3; ++c)
                EXPECT_EQ(in.at(x, y, c), out.at(x, y, c));
    EXPECT_NE(WriteBitmapToFile(out.get(), "/nonexistent/dir/x.bmp"), 0);
}

TEST(BmpFile, BmpsuiteTrueColourFileMatchesItsReferencePicture) {
    KALVORA_REQUIRE_CORPUS();
    OwnedBitmap b;
    ASSERT_EQ(CreateBitmapFromFile(corpusPath("images/bmpsuite/g/rgb24.bmp").c_str(), b.get()), 0);
    ASSERT_EQ(b->width, 127);
    ASSERT_EQ(b->height, 64);
    EXPECT_EQ(b->pad, 3);
    kalvora_test::ReferencePng ref;
    ASSERT_TRUE(kalvora_test::ReadReferencePng(corpusPath("images/bmpsuite/html/rgb24.png"), 3, &ref));
    ASSERT_EQ(ref.width, 127);
    int mismatches = 0;
    for (long y = 0; y < 64; ++y)
        for (long x = 0; x < 127; ++x)
            for (int c = 0; c < 3; ++c) // stored blue-green-red, bottom row first
                mismatches += b.at(x, y, 2 - c) != ref.at(x, 63 - y, c);
    EXPECT_EQ(mismatches, 0);
}

TEST(BmpFile, BmpsuiteFilesOtherThan24BitBottomUpAreRefused) {
    KALVORA_REQUIRE_CORPUS();
    const char* refused[] = {
        "g/rgb32.bmp",         "g/rgb32bf.bmp",        "g/rgb16.bmp",        "g/pal8.bmp",
        "g/pal8topdown.bmp",   "g/pal1.bmp",           "g/pal4rle.bmp",      "b/badbitcount.bmp",
        "b/badbitssize.bmp",   "b/baddens1.bmp",       "b/baddens2.bmp",     "b/badfilesize.bmp",
        "b/badheadersize.bmp", "b/badpalettesize.bmp", "b/badplanes.bmp",    "b/badrle.bmp",
        "b/badrle4.bmp",       "b/badrle4bis.bmp",     "b/badrle4ter.bmp",   "b/badrlebis.bmp",
        "b/badrleter.bmp",     "b/badwidth.bmp",       "b/pal8badindex.bmp", "b/reallybig.bmp",
        "b/rgb16-880.bmp",     "b/rletopdown.bmp",     "b/shortfile.bmp"};
    for (const char* name : refused) {
        OwnedBitmap b;
        EXPECT_NE(CreateBitmapFromFile(corpusPath(std::string("images/bmpsuite/") + name).c_str(), b.get()),
                  0)
            << name;
        EXPECT_EQ(b->data, nullptr) << name;
    }
}
