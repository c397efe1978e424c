// The image file readers (BMP, TGA, PNG), on hand-made files
// and on the bmpsuite, PngSuite and TGA test suites.
#include "ImageTestSupport.h"
#include "images/ImageFiles.h"
#include "support/Corpus.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <png.h>

#include <cmath>
#include <cstdint>
#include <filesystem>

using kalvora_test::corpusPath;
using kalvora_test::OwnedBitmap;

namespace {

using Reader = int (*)(const char*, ImageInfo*);
constexpr double kScreenGamma = 1.8;

/// `value` (out of `maxValue`) as libpng's gamma correction makes it for a file gamma.
int Corrected(long value, long maxValue, double fileGamma) {
    return static_cast<int>(std::floor(
        255.0 * std::pow(static_cast<double>(value) / maxValue, 1.0 / (kScreenGamma * fileGamma)) + 0.5));
}

void Put(std::string& b, size_t at, uint32_t v, int bytes) {
    for (int i = 0; i < bytes; ++i)
        b[at + i] = static_cast<char>(v >> (8 * i));
}

/// A BMP of width x height with the given header values and pixel bytes 1, 2, 3, ...
std::string MakeBmp(int32_t width, int32_t height, uint16_t bits = 24, int64_t claimedFileSize = -1) {
    const long rowBytes = (width * 3L + 3) / 4 * 4;
    std::string b(static_cast<size_t>(54 + rowBytes * std::abs(height)), '\0');
    b[0] = 'B';
    b[1] = 'M';
    Put(b, 2, static_cast<uint32_t>(claimedFileSize >= 0 ? claimedFileSize : static_cast<int64_t>(b.size())),
        4);
    Put(b, 10, 54, 4); // pixels after the two headers
    Put(b, 14, 40, 4); // information header size
    Put(b, 18, static_cast<uint32_t>(width), 4);
    Put(b, 22, static_cast<uint32_t>(height), 4);
    Put(b, 26, 1, 2); // planes
    Put(b, 28, bits, 2);
    for (size_t i = 54; i < b.size(); ++i)
        b[i] = static_cast<char>(i - 53);
    return b;
}

/// A TGA of width x height with pixel bytes 1, 2, 3, ...
std::string MakeTga(int width, int height, int bits, char imageType = 2, char idLength = 0) {
    std::string b(18, '\0');
    b[0] = idLength;
    b[2] = imageType;
    Put(b, 12, static_cast<uint32_t>(width), 2);
    Put(b, 14, static_cast<uint32_t>(height), 2);
    b[16] = static_cast<char>(bits);
    for (int i = 0; i < width * height * bits / 8; ++i)
        b += static_cast<char>(i + 1);
    return b;
}

/// A whole PNG file of 4 x 4 RGB pixels.
std::string MakePng(const kalvora_test::TempFolder& dir) {
    const std::string path = dir.file("whole.png");
    EXPECT_TRUE(
        kalvora_test::WritePng(path, 4, 4, PNG_COLOR_TYPE_RGB, 8, std::vector<unsigned char>(48, 77), 0));
    return kalvora_test::ReadFile(path);
}

/// Reads `path`, expecting a refusal that leaves nothing behind.
void ExpectRefused(Reader read, const std::string& path, const std::string& what) {
    OwnedBitmap b;
    EXPECT_NE(read(path.c_str(), b.get()), 0) << what;
    EXPECT_EQ(b->data, nullptr) << what;
}

} // namespace

TEST(ImageFiles, BadFilesAreRefusedWithNothingLeftBehind) {
    kalvora_test::TempFolder dir;
    std::string largest = MakeBmp(1, 1, 24, 0xFFFFFFFFu); // sides whose byte count does not fit 64 bits
    Put(largest, 18, 0x7FFFFFFF, 4);
    Put(largest, 22, 0x7FFFFFFF, 4);
    const std::string png = MakePng(dir);
    const struct Case {
        Reader read;
        const char* name;
        std::string bytes;
    } cases[] = {
        {CreateBitmapFromFile, "32-bit BMP", MakeBmp(4, 2, 32)},
        {CreateBitmapFromFile, "zero width BMP", MakeBmp(0, 2)},
        {CreateBitmapFromFile, "BMP claiming too little data", MakeBmp(4, 4, 24, 54 + 4 * 4 * 3 - 1)},
        {CreateBitmapFromFile, "BMP of the largest sides", largest},
        {CreateBitmapFromFile, "truncated BMP", MakeBmp(4, 4).substr(0, 54 + 47)},
        {CreateBitmapFromTGA, "run-length TGA", MakeTga(2, 2, 24, 10)},
        {CreateBitmapFromTGA, "TGA with an image identifier", MakeTga(2, 2, 24, 2, 3)},
        {CreateBitmapFromTGA, "16-bit TGA", MakeTga(2, 2, 16)},
        {CreateBitmapFromTGA, "zero width TGA", MakeTga(0, 2, 24)},
        {CreateBitmapFromTGA, "truncated TGA", MakeTga(4, 4, 32).substr(0, 18 + 63)},
        {CreateBitmapFromPNG, "empty PNG", ""},
        {CreateBitmapFromPNG, "PNG signature cut", png.substr(0, 7)},
        {CreateBitmapFromPNG, "PNG without its end", png.substr(0, png.size() - 20)},
    };
    for (const Case& c : cases)
        ExpectRefused(c.read, dir.write("bad", c.bytes), c.name);
    for (Reader read : {CreateBitmapFromFile, CreateBitmapFromTGA, CreateBitmapFromPNG})
        ExpectRefused(read, "/nonexistent/kalvora.img", "missing file");
    OwnedBitmap b;
    EXPECT_EQ(CreateBitmapFromFile("/nonexistent/kalvora.bmp", b.get()), ENOENT);
    EXPECT_EQ(CreateBitmapFromTGA("/nonexistent/kalvora.tga", b.get()), ENOENT);
}

TEST(ImageFiles, TgaSwapsBlueAndRedIntoPlaceAndKeepsTheFileRowOrder) {
    kalvora_test::TempFolder dir;
    for (int bits : {24, 32}) {
        OwnedBitmap b;
        ASSERT_EQ(CreateBitmapFromTGA(dir.write("t.tga", MakeTga(2, 2, bits)).c_str(), b.get()), 0) << bits;
        const int ch = bits / 8;
        EXPECT_EQ(b->channels, ch);
        EXPECT_EQ(b->width, 2);
        EXPECT_EQ(b->height, 2);
        EXPECT_EQ(b->pad, 0);
        // File bytes 1, 2, 3(, 4) become 3, 2, 1(, 4); the first pixel of the file stays first.
        for (int c = 0; c < ch; ++c)
            EXPECT_EQ(b.at(0, 0, c), c < 3 ? 3 - c : 4);
        EXPECT_EQ(b.at(1, 1, 0), 3 * ch + 3);
    }
}

TEST(ImageFiles, PngRowsComeBottomFirstAndGammaFollowsTheFile) {
    kalvora_test::TempFolder dir;
    const std::string path = dir.file("x.png");
    // 2 x 2 RGB, top row red then green, bottom row blue then grey 128.
    const std::vector<unsigned char> rows = {255, 0, 0, 0, 255, 0, 0, 0, 255, 128, 128, 128};
    const std::pair<double, double> gammas[] = {// file gamma (0: no gAMA chunk), gamma applied
                                                {0, 1.0 / kScreenGamma},
                                                {1.0, 1.0},
                                                {0.45455, 0.45455}};
    for (const auto& g : gammas) {
        SCOPED_TRACE(g.first);
        ASSERT_TRUE(kalvora_test::WritePng(path, 2, 2, PNG_COLOR_TYPE_RGB, 8, rows, g.first));
        OwnedBitmap b;
        ASSERT_EQ(CreateBitmapFromPNG(path.c_str(), b.get()), 0);
        ASSERT_EQ(b->channels, 3);
        EXPECT_EQ(b.at(0, 1, 0), 255); // top left red
        EXPECT_EQ(b.at(1, 1, 1), 255); // top right green
        EXPECT_EQ(b.at(0, 0, 2), 255); // bottom left blue
        EXPECT_EQ(b.at(0, 0, 0), 0);
        EXPECT_NEAR(b.at(1, 0, 0), Corrected(128, 255, g.second), 1);
    }
}

TEST(ImageFiles, CorpusFilesMatchTheirReferencePictures) {
    KALVORA_REQUIRE_CORPUS();
    // BMP (stored blue-green-red) and TGA against reference PNGs; both bottom row first.
    const struct {
        Reader read;
        const char *file, *reference;
        int channels;
        bool bgr;
    } pictures[] = {
        {CreateBitmapFromFile, "bmpsuite/g/rgb24.bmp", "bmpsuite/html/rgb24.png", 3, true},
        {CreateBitmapFromTGA, "tga/pillow/common/200x32_rgb_bl_raw.tga",
         "tga/pillow/common/reference/200x32_rgb.png", 3, false},
        {CreateBitmapFromTGA, "tga/pillow/common/200x32_rgba_bl_raw.tga",
         "tga/pillow/common/reference/200x32_rgba.png", 4, false},
    };
    for (const auto& p : pictures) {
        SCOPED_TRACE(p.file);
        OwnedBitmap b;
        kalvora_test::ReferencePng ref;
        ASSERT_EQ(p.read(corpusPath(std::string("images/") + p.file).c_str(), b.get()), 0);
        ASSERT_TRUE(kalvora_test::ReadReferencePng(corpusPath(std::string("images/") + p.reference),
                                                   p.channels, &ref));
        ASSERT_EQ(b->channels, p.channels);
        ASSERT_EQ(b->width, ref.width);
        ASSERT_EQ(b->height, ref.height);
        long mismatches = 0;
        for (long y = 0; y < b->height; ++y)
            for (long x = 0; x < b->width; ++x)
                for (int c = 0; c < p.channels; ++c)
                    mismatches += b.at(x, y, p.bgr && c < 3 ? 2 - c : c) != ref.at(x, b->height - 1 - y, c);
        EXPECT_EQ(mismatches, 0);
    }

    // PngSuite against its JSON references (RGBA, top row first, 8 or 16 bits). Colour is gamma-corrected
    // from the file's gamma 1.0, alpha is not, and 16-bit alpha is cut to its high byte; 16-bit colour is
    // corrected before it is cut, which moves the darkest shades by up to 2. A tRNS chunk adds alpha.
    const char* const pngs[] = {"basn0g01", "basn0g16", "basn2c08", "basn2c16", "basn4a08", "basn6a08",
                                "basn6a16", "basi6a16", "tp0n2c08", "tbbn0g04", "tbwn0g16"};
    for (const std::string name : pngs) {
        SCOPED_TRACE(name);
        const bool sixteenBit = name.substr(6) == "16",
                   alpha = name[4] == '4' || name[4] == '6' || name[1] == 'b';
        OwnedBitmap b;
        ASSERT_EQ(CreateBitmapFromPNG(corpusPath("images/pngsuite/" + name + ".png").c_str(), b.get()), 0);
        const std::vector<long> ref =
            kalvora_test::ReadJsonIntegers(corpusPath("images/pngsuite/json/" + name + ".json"));
        EXPECT_EQ(b->channels, alpha ? 4 : 3);
        EXPECT_EQ(b->pad, 0);
        ASSERT_EQ(static_cast<long>(ref.size()), b->width * b->height * 4);
        int worst = 0;
        long alphaMismatches = 0;
        for (long y = 0; y < b->height; ++y)
            for (long x = 0; x < b->width; ++x) {
                const long* px = &ref[static_cast<size_t>(((b->height - 1 - y) * b->width + x) * 4)];
                for (int c = 0; c < 3; ++c)
                    worst = std::max(
                        worst, std::abs(b.at(x, y, c) - Corrected(px[c], sixteenBit ? 65535 : 255, 1.0)));
                if (b->channels == 4) alphaMismatches += b.at(x, y, 3) != (sixteenBit ? px[3] >> 8 : px[3]);
            }
        EXPECT_LE(worst, sixteenBit ? 2 : 1) << "largest colour difference";
        EXPECT_EQ(alphaMismatches, 0);
    }
}

TEST(ImageFiles, CorpusFilesOtherThanTheReadableKindsAreRefusedCleanly) {
    KALVORA_REQUIRE_CORPUS();
    // Damaged headers (the hand-made cases above cover the unreadable kinds).
    for (const char* name : {"b/badbitcount.bmp", "b/badheadersize.bmp", "b/badwidth.bmp", "b/reallybig.bmp"})
        ExpectRefused(CreateBitmapFromFile, corpusPath(std::string("images/bmpsuite/") + name), name);
    ExpectRefused(CreateBitmapFromTGA, corpusPath("images/tga/imagers_regression/overfull-image.tga"),
                  "overfull TGA");

    // Every PngSuite file decodes as RGB or RGBA, or is refused leaving nothing: the palette ones ("3p")
    // and the corrupt ones ("x") always.
    int palettes = 0, corrupt = 0;
    for (const auto& e : std::filesystem::directory_iterator(corpusPath("images/pngsuite"))) {
        const std::string name = e.path().filename().string();
        if (e.path().extension() != ".png") continue;
        const bool palette = name.find("3p") != std::string::npos, broken = name[0] == 'x';
        palettes += palette;
        corrupt += broken;
        OwnedBitmap b;
        if (palette || broken || CreateBitmapFromPNG(e.path().c_str(), b.get()) != 0) {
            ExpectRefused(CreateBitmapFromPNG, e.path().string(), name);
        } else {
            EXPECT_GT(b->width, 0) << name;
            EXPECT_TRUE(b->channels == 3 || b->channels == 4) << name;
        }
    }
    EXPECT_GT(palettes, 40);
    EXPECT_GE(corrupt, 14);
}
