// TGA reader: uncompressed true colour only, red and blue put in place.
#include "ImageTestSupport.h"
#include "images/ImageFiles.h"
#include "support/Corpus.h"

#include <gtest/gtest.h>

using kalvora_test::corpusPath;
using kalvora_test::Cut;
using kalvora_test::OwnedBitmap;

namespace {

std::vector<unsigned char> MakeTga(int width, int height, int bits, unsigned char imageType = 2,
                                   unsigned char idLength = 0) {
    std::vector<unsigned char> b = {idLength, 0, imageType, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    b.push_back(static_cast<unsigned char>(width & 0xff));
    b.push_back(static_cast<unsigned char>(width >> 8));
    b.push_back(static_cast<unsigned char>(height & 0xff));
    b.push_back(static_cast<unsigned char>(height >> 8));
    b.push_back(static_cast<unsigned char>(bits));
    b.push_back(0);
    for (int i = 0; i < width * height * bits / 8; ++i)
        b.push_back(static_cast<unsigned char>(i + 1));
    return b;
}

/// Compares a bottom-left-origin TGA with its reference PNG (top row first).
void ExpectMatchesReference(const std::string& tga, const std::string& png, int channels) {
    SCOPED_TRACE(tga);
    OwnedBitmap b;
    ASSERT_EQ(CreateBitmapFromTGA(corpusPath(tga).c_str(), b.get()), 0);
    ASSERT_EQ(b->channels, channels);
    EXPECT_EQ(b->pad, 0);
    kalvora_test::ReferencePng ref;
    ASSERT_TRUE(kalvora_test::ReadReferencePng(corpusPath(png), channels, &ref));
    ASSERT_EQ(b->width, ref.width);
    ASSERT_EQ(b->height, ref.height);
    long mismatches = 0;
    for (long y = 0; y < b->height; ++y)
        for (long x = 0; x < b->width; ++x)
            for (int c = 0; c < channels; ++c)
                mismatches += b.at(x, y, c) != ref.at(x, b->height - 1 - y, c);
    EXPECT_EQ(mismatches, 0);
}

} // namespace

TEST(TgaFile, SwapsBlueAndRedIntoPlaceAndKeepsTheFileRowOrder) {
    for (int bits : {24, 32}) {
        const auto path = kalvora_test::WriteBytes(kalvora_test::ScratchPath("t.tga"), MakeTga(2, 2, bits));
        OwnedBitmap b;
        ASSERT_EQ(CreateBitmapFromTGA(path.c_str(), b.get()), 0) << bits;
        const int ch = bits / 8;
        EXPECT_EQ(b->channels, ch);
        EXPECT_EQ(b->width, 2);
        EXPECT_EQ(b->height, 2);
        EXPECT_EQ(b->pad, 0);
        // File bytes 1, 2, 3(, 4) become 3, 2, 1(, 4); the first pixel of the file stays first.
        EXPECT_EQ(b.at(0, 0, 0), 3);
        EXPECT_EQ(b.at(0, 0, 1), 2);
        EXPECT_EQ(b.at(0, 0, 2), 1);
        if (ch == 4) {
            EXPECT_EQ(b.at(0, 0, 3), 4); // alpha stays last
        }
        EXPECT_EQ(b.at(1, 1, 0), 3 * ch + 3);
    }
}

TEST(TgaFile, RefusesEverythingButUncompressedTrueColour) {
    struct Case {
        const char* name;
        std::vector<unsigned char> bytes;
    } cases[] = {
        {"run-length", MakeTga(2, 2, 24, 10)},
        {"image identifier", MakeTga(2, 2, 24, 2, 3)},
        {"colour mapped", MakeTga(2, 2, 8, 1)},
        {"16 bits", MakeTga(2, 2, 16)},
        {"zero width", MakeTga(0, 2, 24)},
        {"zero height", MakeTga(2, 0, 24)},
        {"truncated pixels", Cut(MakeTga(4, 4, 32), -1)},
        {"truncated header", Cut(MakeTga(4, 4, 32), 15)},
    };
    for (auto& c : cases) {
        const auto path = kalvora_test::WriteBytes(kalvora_test::ScratchPath("bad.tga"), c.bytes);
        OwnedBitmap b;
        EXPECT_NE(CreateBitmapFromTGA(path.c_str(), b.get()), 0) << c.name;
        EXPECT_EQ(b->data, nullptr) << c.name;
    }
    OwnedBitmap b;
    EXPECT_EQ(CreateBitmapFromTGA("/nonexistent/kalvora.tga", b.get()), ENOENT);
}

TEST(TgaFile, UncompressedCorpusFilesMatchTheirReferencePictures) {
    KALVORA_REQUIRE_CORPUS();
    ExpectMatchesReference("images/tga/pillow/common/200x32_rgb_bl_raw.tga",
                           "images/tga/pillow/common/reference/200x32_rgb.png", 3);
    ExpectMatchesReference("images/tga/pillow/common/200x32_rgba_bl_raw.tga",
                           "images/tga/pillow/common/reference/200x32_rgba.png", 4);
}

TEST(TgaFile, CompressedIdentifiedAndColourMappedCorpusFilesAreRefused) {
    KALVORA_REQUIRE_CORPUS();
    const char* refused[] = {
        "pillow/common/200x32_rgb_bl_rle.tga",
        "pillow/common/200x32_rgba_tl_rle.tga",
        "pillow/common/200x32_rgba_tl_raw.tga", // origin not 0
        "pillow/common/200x32_p_bl_raw.tga",
        "pillow/common/200x32_l_bl_raw.tga",
        "pillow/common/1x1_l_bl_raw.tga",
        "pillow/rgb32rle.tga",
        "pillow/tga_id_field.tga",
        "pillow/rgba16.tga",
        "pillow/p_8.tga",
        "truevision_suite/utc24.tga",
        "truevision_suite/utc32.tga",
        "truevision_suite/ctc24.tga",
        "truevision_suite/ucm8.tga",
        "truevision_suite/b5-unused-cmap.tga",
        "truevision_suite/top_left.tga",
        "imagers_misc/black_white.tga",
        "imagers_regression/bad-color-map.tga",
        "imagers_regression/flip-zero-height.tga",
        "imagers_regression/flip-zero-height2.tga",
        "imagers_regression/orientation-zero-width.tga",
        "imagers_regression/overfull-image.tga",
        "imagers_regression/slice-copy-length.tga",
        "imagers_regression/sixteen-bit-gray-colormap.tga",
    };
    for (const char* name : refused) {
        OwnedBitmap b;
        EXPECT_NE(CreateBitmapFromTGA(corpusPath(std::string("images/tga/") + name).c_str(), b.get()), 0)
            << name;
        EXPECT_EQ(b->data, nullptr) << name;
    }
}
