// PNG reader: PngSuite against its reference pixels, refusals, gamma, row order.
#include "ImageTestSupport.h"
#include "images/ImageFiles.h"
#include "support/Corpus.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cmath>
#include <cstdlib>
#include <dirent.h>

using kalvora_test::corpusPath;
using kalvora_test::OwnedBitmap;

namespace {

constexpr double kScreenGamma = 1.8;

/// What libpng's gamma correction makes of `value` (out of `maxValue`) for a file gamma.
int Corrected(long value, long maxValue, double fileGamma) {
    return static_cast<int>(std::floor(
        255.0 * std::pow(static_cast<double>(value) / maxValue, 1.0 / (kScreenGamma * fileGamma)) + 0.5));
}

/// Compares a decoded PngSuite image with its JSON reference (RGBA, top row first, 8 or
/// 16 bits). Colour channels are gamma-corrected from the file's gamma 1.0; alpha is not,
/// and 16-bit alpha is cut to its high byte. 16-bit colour is corrected before it is cut to
/// 8 bits, which moves the darkest shades (where the curve is steepest) by up to 2.
void ExpectMatchesReference(const std::string& name, bool sixteenBit) {
    SCOPED_TRACE(name);
    OwnedBitmap b;
    ASSERT_EQ(CreateBitmapFromPNG(corpusPath("images/pngsuite/" + name + ".png").c_str(), b.get()), 0);
    const std::vector<long> ref =
        kalvora_test::ReadJsonIntegers(corpusPath("images/pngsuite/json/" + name + ".json"));
    ASSERT_EQ(static_cast<long>(ref.size()), b->width * b->height * 4);
    EXPECT_EQ(b->pad, 0);
    const long maxValue = sixteenBit ? 65535 : 255;
    int worst = 0;
    long alphaMismatches = 0;
    for (long y = 0; y < b->height; ++y)
        for (long x = 0; x < b->width; ++x) {
            const long* px = &ref[static_cast<size_t>(((b->height - 1 - y) * b->width + x) * 4)];
            for (int c = 0; c < 3; ++c)
                worst = std::max(worst, std::abs(b.at(x, y, c) - Corrected(px[c], maxValue, 1.0)));
            if (b->channels == 4)
                alphaMismatches +=
                    std::abs(b.at(x, y, 3) - static_cast<int>(sixteenBit ? px[3] >> 8 : px[3])) > 0;
        }
    EXPECT_LE(worst, sixteenBit ? 2 : 1) << "largest colour difference";
    EXPECT_EQ(alphaMismatches, 0);
}

std::vector<std::string> PngSuiteNames(char first) {
    std::vector<std::string> names;
    if (DIR* d = opendir(corpusPath("images/pngsuite").c_str())) {
        while (dirent* e = readdir(d)) {
            std::string n = e->d_name;
            if (n.size() > 4 && n[0] == first && n.compare(n.size() - 4, 4, ".png") == 0) names.push_back(n);
        }
        closedir(d);
    }
    return names;
}

} // namespace

TEST(PngFile, PngSuiteBasicImagesDecodeToTheReferencePixels) {
    KALVORA_REQUIRE_CORPUS();
    struct Case {
        const char* name;
        short channels;
        bool sixteenBit;
    } cases[] = {
        {"basn0g01", 3, false}, {"basn0g02", 3, false}, {"basn0g04", 3, false}, {"basn0g08", 3, false},
        {"basn0g16", 3, true},  {"basn2c08", 3, false}, {"basn2c16", 3, true},  {"basn4a08", 4, false},
        {"basn4a16", 4, true},  {"basn6a08", 4, false}, {"basn6a16", 4, true},  {"basi0g01", 3, false},
        {"basi0g02", 3, false}, {"basi0g04", 3, false}, {"basi0g08", 3, false}, {"basi0g16", 3, true},
        {"basi2c08", 3, false}, {"basi2c16", 3, true},  {"basi4a08", 4, false}, {"basi4a16", 4, true},
        {"basi6a08", 4, false}, {"basi6a16", 4, true},  {"tp0n0g08", 3, false}, {"tp0n2c08", 3, false},
    };
    for (const Case& c : cases) {
        OwnedBitmap b;
        ASSERT_EQ(CreateBitmapFromPNG(corpusPath(std::string("images/pngsuite/") + c.name + ".png").c_str(),
                                      b.get()),
                  0)
            << c.name;
        EXPECT_EQ(b->width, 32) << c.name;
        EXPECT_EQ(b->height, 32) << c.name;
        EXPECT_EQ(b->channels, c.channels) << c.name;
        ExpectMatchesReference(c.name, c.sixteenBit);
    }
}

TEST(PngFile, TransparencyChunkAddsAnAlphaChannel) {
    KALVORA_REQUIRE_CORPUS();
    // The transparent colour of a grey or RGB image becomes alpha 0, everything else 255.
    const std::pair<const char*, bool> cases[] = {
        {"tbbn0g04", false}, {"tbrn2c08", false}, {"tbwn0g16", true}, {"tbbn2c16", true}, {"tbgn2c16", true}};
    for (const auto& c : cases) {
        OwnedBitmap b;
        ASSERT_EQ(CreateBitmapFromPNG(corpusPath(std::string("images/pngsuite/") + c.first + ".png").c_str(),
                                      b.get()),
                  0)
            << c.first;
        EXPECT_EQ(b->channels, 4) << c.first;
        ExpectMatchesReference(c.first, c.second);
    }
}

TEST(PngFile, PaletteImagesAreRefused) {
    KALVORA_REQUIRE_CORPUS();
    int seen = 0;
    for (char first : {'b', 's', 't', 'c', 'g', 'p'})
        for (const std::string& n : PngSuiteNames(first)) {
            if (n.find("3p") == std::string::npos) continue;
            ++seen;
            OwnedBitmap b;
            EXPECT_EQ(CreateBitmapFromPNG(corpusPath("images/pngsuite/" + n).c_str(), b.get()), -1) << n;
            EXPECT_EQ(b->data, nullptr) << n;
        }
    EXPECT_GT(seen, 40);
    OwnedBitmap b;
    EXPECT_EQ(CreateBitmapFromPNG(corpusPath("images/xplane_textures/osm2xp_dom-holenderski_LIT.png").c_str(),
                                  b.get()),
              -1);
}

TEST(PngFile, CorruptPngSuiteFilesAreRefused) {
    KALVORA_REQUIRE_CORPUS();
    const std::vector<std::string> corrupt = PngSuiteNames('x');
    ASSERT_GE(corrupt.size(), 14u);
    for (const std::string& n : corrupt) {
        OwnedBitmap b;
        EXPECT_EQ(CreateBitmapFromPNG(corpusPath("images/pngsuite/" + n).c_str(), b.get()), -1) << n;
        EXPECT_EQ(b->data, nullptr) << n;
    }
}

TEST(PngFile, EveryOtherPngSuiteFileDecodesOrIsRefusedCleanly) {
    KALVORA_REQUIRE_CORPUS();
    for (char first : {'b', 'c', 'e', 'f', 'g', 'o', 'p', 's', 't', 'z'})
        for (const std::string& n : PngSuiteNames(first)) {
            OwnedBitmap b;
            int status = CreateBitmapFromPNG(corpusPath("images/pngsuite/" + n).c_str(), b.get());
            if (status == 0) {
                EXPECT_GT(b->width, 0) << n;
                EXPECT_TRUE(b->channels == 3 || b->channels == 4) << n;
            } else {
                EXPECT_EQ(b->data, nullptr) << n;
            }
        }
}

TEST(PngFile, RowsComeBottomFirstAndGammaFollowsTheFile) {
    // 2 x 2 RGB, top row red then green, bottom row blue then grey 128.
    const std::vector<unsigned char> rows = {255, 0, 0, 0, 255, 0, 0, 0, 255, 128, 128, 128};
    struct Case {
        double fileGamma; // <= 0: no gAMA chunk
        double expectedGamma;
    } cases[] = {
        {0, 1.0 / kScreenGamma}, {1.0 / kScreenGamma, 1.0 / kScreenGamma}, {1.0, 1.0}, {0.45455, 0.45455}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fileGamma);
        const std::string path = kalvora_test::ScratchPath("rgb.png");
        ASSERT_TRUE(kalvora_test::WritePng(path, 2, 2, PNG_COLOR_TYPE_RGB, 8, rows, c.fileGamma));
        OwnedBitmap b;
        ASSERT_EQ(CreateBitmapFromPNG(path.c_str(), b.get()), 0);
        ASSERT_EQ(b->channels, 3);
        EXPECT_EQ(b.at(0, 1, 0), 255); // top left red
        EXPECT_EQ(b.at(1, 1, 1), 255); // top right green
        EXPECT_EQ(b.at(0, 0, 2), 255); // bottom left blue
        EXPECT_EQ(b.at(0, 0, 0), 0);
        EXPECT_NEAR(b.at(1, 0, 0), Corrected(128, 255, c.expectedGamma), 1);
    }
}

TEST(PngFile, GreyBecomesRgbAndSixteenBitsAreStripped) {
    const std::vector<unsigned char> grey16 = {0x12, 0x34, 0xff, 0xff, 0x00, 0x00, 0x80, 0x00};
    const std::string path = kalvora_test::ScratchPath("grey16.png");
    ASSERT_TRUE(kalvora_test::WritePng(path, 2, 2, PNG_COLOR_TYPE_GRAY, 16, grey16, 1.0 / kScreenGamma));
    OwnedBitmap b;
    ASSERT_EQ(CreateBitmapFromPNG(path.c_str(), b.get()), 0);
    ASSERT_EQ(b->channels, 3);
    for (int c = 0; c < 3; ++c) {
        EXPECT_EQ(b.at(0, 1, c), 0x12);
        EXPECT_EQ(b.at(1, 1, c), 0xff);
        EXPECT_EQ(b.at(0, 0, c), 0x00);
        EXPECT_EQ(b.at(1, 0, c), 0x80);
    }
}

TEST(PngFile, TruncatedAndMissingFilesAreRefused) {
    const std::vector<unsigned char> rows(4 * 4 * 3, 77);
    const std::string path = kalvora_test::ScratchPath("whole.png");
    ASSERT_TRUE(kalvora_test::WritePng(path, 4, 4, PNG_COLOR_TYPE_RGB, 8, rows, 0));
    std::FILE* f = std::fopen(path.c_str(), "rb");
    ASSERT_NE(f, nullptr);
    std::vector<unsigned char> bytes(4096);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), f));
    std::fclose(f);
    for (size_t keep : {size_t{0}, size_t{7}, size_t{8}, size_t{30}, bytes.size() - 20}) {
        const std::string cut =
            kalvora_test::WriteBytes(kalvora_test::ScratchPath("cut.png"),
                                     std::vector<unsigned char>(bytes.begin(), bytes.begin() + keep));
        OwnedBitmap b;
        EXPECT_EQ(CreateBitmapFromPNG(cut.c_str(), b.get()), -1) << keep << " bytes";
        EXPECT_EQ(b->data, nullptr);
    }
    OwnedBitmap b;
    EXPECT_EQ(CreateBitmapFromPNG("/nonexistent/kalvora.png", b.get()), -1);
}
