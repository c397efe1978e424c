// HV_Texture: loading, padding to powers of two, and pieces drawn, turned,
// tinted and faded, checked on simhost's off-screen frame.
#include "GlFixture.h"
#include "images/ImageFiles.h"
#include "images/ImageTestSupport.h"
#include "images/Texture.h"

#include <functional>
#include <string>
#include <vector>

using kalvora_gl_test::GlTest;
using kalvora_gl_test::kFrameH;
using kalvora_gl_test::kFrameW;
using kalvora_gl_test::Rgb;

namespace {

/// RGB rows of a width x height picture, top row first, coloured by (x, row from the bottom).
std::vector<unsigned char> Picture(int width, int height,
                                   const std::function<Rgb(int x, int yFromBottom)>& color) {
    std::vector<unsigned char> rows;
    for (int row = 0; row < height; ++row)
        for (int x = 0; x < width; ++x) {
            const Rgb c = color(x, height - 1 - row);
            rows.push_back(static_cast<unsigned char>(c.r));
            rows.push_back(static_cast<unsigned char>(c.g));
            rows.push_back(static_cast<unsigned char>(c.b));
        }
    return rows;
}

constexpr Rgb kRed{255, 0, 0}, kBlue{0, 0, 255};

class Textures : public GlTest {
protected:
    void SetUp() override {
        GlTest::SetUp();
        HV_Texture::FindDataRefs(); // this test's simulator, as at plug-in start
    }
    /// Writes a PNG of the picture (no gamma chunk: pixels load unchanged) and returns its path.
    std::string Png(const std::string& name, int width, int height,
                    const std::function<Rgb(int x, int yFromBottom)>& color) {
        const std::string path = kalvora_test::ScratchPath(name);
        EXPECT_TRUE(kalvora_test::WritePng(path, width, height, PNG_COLOR_TYPE_RGB, 8,
                                           Picture(width, height, color), 0));
        return path;
    }
    /// Left half red, right half blue.
    std::string Halves(int width, int height) {
        return Png("halves.png", width, height, [width](int x, int) { return x < width / 2 ? kRed : kBlue; });
    }
};

/// An X-Plane 10 host, which still has the transparent-panel setting.
class OlderSimTextures : public Textures {
protected:
    simhost::HostOptions Options() const override {
        simhost::HostOptions o;
        o.xplaneVersion = 10510;
        return o;
    }
};

} // namespace

TEST_F(Textures, OnlyPicturesWithNoPowerOfTwoSideArePadded) {
    struct Case {
        int w, h, texW, texH;
    } cases[] = {
        {100, 60, 128, 64}, {256, 100, 256, 100}, {100, 64, 100, 64}, {3, 1, 4, 2}, {64, 64, 64, 64}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.w << " x " << c.h);
        HV_Texture t(true);
        ASSERT_TRUE(t.LoadPNG(Halves(c.w, c.h).c_str()));
        EXPECT_EQ(t.width, static_cast<unsigned>(c.texW));
        EXPECT_EQ(t.height, static_cast<unsigned>(c.texH));
        EXPECT_EQ(t.imageWidth, static_cast<unsigned>(c.w));
        EXPECT_EQ(t.imageHeight, static_cast<unsigned>(c.h));
        EXPECT_EQ(t.bitsPerPixel, 32); // PNGs gain the colour key's alpha
        EXPECT_EQ(t.data, nullptr);    // only the texture name remains
        EXPECT_GT(t.textureID, 0);
        EXPECT_EQ(glIsTexture(static_cast<GLuint>(t.textureID)), GL_TRUE);
        t.DeleteTexture(t.textureID);
    }
}

TEST_F(Textures, WithoutBuildingThePixelsStayUntilBuilt) {
    HV_Texture t(false);
    ASSERT_TRUE(t.LoadPNG(Halves(100, 60).c_str()));
    EXPECT_NE(t.data, nullptr);
    EXPECT_EQ(t.textureID, 0);
    EXPECT_EQ(t.width, 100u);
    t.BuildTextureFromData();
    EXPECT_EQ(t.data, nullptr);
    EXPECT_EQ(t.width, 128u);
    EXPECT_GT(t.textureID, 0);
}

TEST_F(Textures, FailedLoadsReturnFalse) {
    HV_Texture t(true);
    EXPECT_FALSE(t.LoadPNG("/nonexistent/picture.png"));
    EXPECT_FALSE(t.LoadBMP("/nonexistent/picture.bmp"));
    EXPECT_FALSE(t.LoadTGA(Halves(8, 8).c_str())); // a PNG is no TGA
    EXPECT_EQ(t.textureID, 0);
    EXPECT_EQ(t.data, nullptr);
    // Drawing a texture that never loaded draws nothing and does not fail.
    t.DrawTexturePeace(0, 0, 10, 10, 10, 10, false, false, 0, nullptr);
    EndFrame();
    EXPECT_TRUE(IsBlack(Px(15, 15)));
}

TEST_F(Textures, PiecesLandOnTheirScreenRectangles) {
    HV_Texture t(true);
    ASSERT_TRUE(t.LoadPNG(Halves(64, 32).c_str()));
    t.DrawTexturePeaceComplete(0, 0, 32, 32, 20, 20, 64, 64, false, false, 0, nullptr); // red half, scaled x2
    t.DrawTexturePeace(32, 0, 64, 32, 120, 20, false, false, 0, nullptr);               // blue half, 1:1
    EndFrame();
    EXPECT_EQ(Count(22, 22, 82, 82, IsRed), 60 * 60);
    EXPECT_EQ(Count(122, 22, 150, 50, IsBlue), 28 * 28);
    EXPECT_TRUE(IsBlack(Px(18, 50)));  // left of the first piece
    EXPECT_TRUE(IsBlack(Px(50, 86)));  // above it
    EXPECT_TRUE(IsBlack(Px(154, 30))); // right of the 32-pixel piece
}

TEST_F(Textures, APaddedPictureSitsAtTheTopOfItsTexture) {
    // 100 x 60: bottom half red, top half blue, padded to 128 x 64 with the picture's top
    // row at the texture's top. The piece (0, 0)-(100, 60) reaches t = 60/64: its bottom
    // four rows are the transparent padding and the picture's top four rows are cut.
    HV_Texture t(true);
    ASSERT_TRUE(
        t.LoadPNG(Png("split.png", 100, 60, [](int, int y) { return y < 30 ? kRed : kBlue; }).c_str()));
    t.DrawTexturePeace(0, 0, 100, 60, 10, 10, false, false, 0, nullptr);
    EndFrame();
    EXPECT_EQ(Count(12, 10, 108, 13, [](Rgb p) { return !IsBlack(p); }), 0); // padding: transparent
    EXPECT_EQ(Count(12, 16, 108, 42, IsRed), 96 * 26);  // picture rows 0..29 on screen rows 14..43
    EXPECT_EQ(Count(12, 46, 108, 69, IsBlue), 96 * 23); // rows 30..55 on 44..69, 56..59 cut
    EXPECT_TRUE(IsBlack(Px(50, 71)));
}

TEST_F(Textures, AnAngleTurnsThePieceAboutItsOwnCentre) {
    HV_Texture t(true);
    ASSERT_TRUE(t.LoadPNG(Halves(64, 64).c_str()));
    // A quarter turn counter-clockwise: the red left half goes to the bottom.
    t.DrawTexturePeaceComplete(0, 0, 64, 64, 100, 60, 64, 64, false, false, 90.0f, nullptr);
    EndFrame();
    EXPECT_EQ(Count(104, 64, 160, 88, IsRed), 56 * 24);
    EXPECT_EQ(Count(104, 96, 160, 120, IsBlue), 56 * 24);
    auto lit = [](Rgb p) { return !IsBlack(p); };
    EXPECT_EQ(Count(0, 0, 98, kFrameH, lit), 0); // still inside its own rectangle
    EXPECT_EQ(Count(166, 0, kFrameW, kFrameH, lit), 0);
    EXPECT_EQ(Count(0, 0, kFrameW, 58, lit), 0);
}

TEST_F(Textures, NightLightingAndAnExplicitColourTintThePiece) {
    host().set("sim/graphics/misc/cockpit_light_level_r", 0.5);
    host().set("sim/graphics/misc/cockpit_light_level_g", 0.5);
    host().set("sim/graphics/misc/cockpit_light_level_b", 0.25);
    HV_Texture t(true);
    ASSERT_TRUE(t.LoadPNG(Png("white.png", 32, 32, [](int, int) { return Rgb{255, 255, 255}; }).c_str()));
    t.DrawTexturePeace(0, 0, 32, 32, 10, 10, true, false, 0, nullptr);
    t.DrawTexturePeace(0, 0, 32, 32, 60, 10, false, false, 0, nullptr);
    const float teal[3] = {0.0f, 0.5f, 1.0f};
    t.DrawTexturePeace(0, 0, 32, 32, 110, 10, true, false, 0, teal); // the colour wins over night lighting
    EndFrame();
    EXPECT_NEAR(Px(26, 26).r, 128, 2);
    EXPECT_NEAR(Px(26, 26).b, 64, 2);
    EXPECT_EQ(Px(76, 26).r, 255);
    EXPECT_EQ(Px(126, 26).r, 0);
    EXPECT_NEAR(Px(126, 26).g, 128, 2);
    EXPECT_EQ(Px(126, 26).b, 255);
}

TEST_F(Textures, AnExplicitColourKeepsTheCurrentAlpha) {
    HV_Texture t(true);
    ASSERT_TRUE(t.LoadPNG(Png("white.png", 32, 32, [](int, int) { return Rgb{255, 255, 255}; }).c_str()));
    const float yellow[3] = {1.0f, 1.0f, 0.0f};
    glColor4f(0.0f, 0.0f, 0.0f, 0.5f); // only the alpha of the current colour stays
    t.DrawTexturePeace(0, 0, 32, 32, 10, 10, false, false, 0, yellow);
    EndFrame();
    EXPECT_NEAR(Px(26, 26).r, 128, 2);
    EXPECT_NEAR(Px(26, 26).g, 128, 2);
    EXPECT_EQ(Px(26, 26).b, 0);
}

TEST_F(Textures, ExplicitAlphaBlendsThePiece) {
    HV_Texture t(true);
    ASSERT_TRUE(t.LoadPNG(Halves(32, 32).c_str()));
    t.DrawTexturePeaceTransparent(0, 0, 16, 32, 10, 10, 16, 32, 0.5f, false, 0, nullptr);
    const float green[3] = {0, 1, 0};
    t.DrawTexturePeaceTransparent(0, 0, 16, 32, 40, 10, 16, 32, 0.25f, false, 0, green);
    EndFrame();
    EXPECT_NEAR(Px(18, 26).r, 128, 2);
    EXPECT_EQ(Px(48, 26).g, 0); // green tint on a red texel: nothing left
    EXPECT_NEAR(Px(48, 26).r, 0, 1);
}

TEST_F(OlderSimTextures, PiecesFadeWithATransparentPanelWhenAsked) {
    HV_Texture t(true);
    ASSERT_TRUE(t.LoadPNG(Png("white.png", 32, 32, [](int, int) { return Rgb{255, 255, 255}; }).c_str()));
    host().set("sim/graphics/settings/transparent_panel", 1);
    t.DrawTexturePeace(0, 0, 32, 32, 10, 10, false, true, 0, nullptr);
    t.DrawTexturePeace(0, 0, 32, 32, 60, 10, false, false, 0, nullptr);
    host().set("sim/graphics/settings/transparent_panel", 0);
    t.DrawTexturePeace(0, 0, 32, 32, 110, 10, false, true, 0, nullptr);
    EndFrame();
    EXPECT_NEAR(Px(26, 26).r, 102, 2); // 0.4 x 255
    EXPECT_EQ(Px(76, 26).r, 255);
    EXPECT_EQ(Px(126, 26).r, 255);
}

TEST_F(Textures, BmpAndTgaPicturesKeepTheirColours) {
    // A BMP stores blue-green-red; a TGA is read as red-green-blue.
    ImageInfo bmp{};
    ASSERT_EQ(CreateNewBitmap(32, 16, 3, &bmp), 0);
    for (long y = 0; y < 16; ++y)
        for (long x = 0; x < 32; ++x) {
            unsigned char* p = bmp.data + y * BitmapRowBytes(&bmp) + x * 3;
            p[0] = x < 16 ? 0 : 255; // blue
            p[1] = 0;
            p[2] = x < 16 ? 255 : 0; // red
        }
    const std::string bmpPath = kalvora_test::ScratchPath("halves.bmp");
    ASSERT_EQ(WriteBitmapToFile(&bmp, bmpPath.c_str()), 0);
    DestroyBitmap(&bmp);
    std::vector<unsigned char> tga = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 16, 0, 16, 0, 24, 0};
    for (int i = 0; i < 16 * 16; ++i) {
        tga.push_back(0);   // blue
        tga.push_back(0);   // green
        tga.push_back(255); // red
    }
    const std::string tgaPath = kalvora_test::WriteBytes(kalvora_test::ScratchPath("red.tga"), tga);

    HV_Texture b(true), t(true);
    ASSERT_TRUE(b.LoadBMP(bmpPath.c_str()));
    ASSERT_TRUE(t.LoadTGA(tgaPath.c_str()));
    EXPECT_EQ(b.bitsPerPixel, 24);
    b.DrawTexturePeace(0, 0, 32, 16, 10, 10, false, false, 0, nullptr);
    t.DrawTexturePeace(0, 0, 16, 16, 60, 10, false, false, 0, nullptr);
    EndFrame();
    EXPECT_TRUE(IsRed(Px(15, 18)));
    EXPECT_TRUE(IsBlue(Px(36, 18)));
    EXPECT_TRUE(IsRed(Px(68, 18)));
}

TEST_F(Textures, RealSceneryTexturesLoad) {
    const std::string dir = std::string(KALVORA_CORPUS_DIR) + "/images/xplane_textures/";
    HV_Texture png(true), bmp(true);
    if (!png.LoadPNG((dir + "KSBD_example.png").c_str()))
        GTEST_SKIP() << "test corpus not found at " << KALVORA_CORPUS_DIR;
    EXPECT_EQ(png.width, 512u);
    EXPECT_EQ(png.height, 256u);
    ASSERT_TRUE(bmp.LoadBMP((dir + "KSBD_exampleLIT.bmp").c_str()));
    EXPECT_EQ(bmp.width, 512u);
    EXPECT_EQ(bmp.height, 256u);
    HV_Texture palette(true);
    EXPECT_FALSE(palette.LoadPNG((dir + "osm2xp_dom-holenderski_LIT.png").c_str()));
}
