// HV_Texture: loading, padding to powers of two, and pieces drawn, turned,
// tinted and faded, checked on simhost's off-screen frame.
#include "GlFixture.h"
#include "images/Texture.h"
#include "support/Pictures.h"
#include "support/TempFolder.h"

namespace kalvora_test {
namespace {

constexpr Rgb kRed{255, 0, 0}, kBlue{0, 0, 255}, kWhite{255, 255, 255};

class Textures : public GlTest {
protected:
    void SetUp() override {
        GlTest::SetUp();
        HV_Texture::FindDataRefs(); // this test's simulator, as at plug-in start
    }
    /// Writes a picture and returns its path.
    std::string Picture(const std::string& name, PictureFormat format, int width, int height,
                        const std::function<Rgb(int x, int yFromBottom)>& color) {
        EXPECT_TRUE(WritePicture(folder.file(name), format, width, height, color));
        return folder.file(name);
    }
    /// A PNG: left half red, right half blue.
    std::string Halves(int width, int height) {
        return Picture("halves.png", PictureFormat::Png, width, height,
                       [width](int x, int) { return x < width / 2 ? kRed : kBlue; });
    }
    std::string White() {
        return Picture("white.png", PictureFormat::Png, 32, 32, [](int, int) { return kWhite; });
    }

    const TempFolder folder;
};

TEST_F(Textures, OnlyPicturesWithNoPowerOfTwoSideArePaddedAndFailedLoadsLeaveNothing) {
    const struct {
        int w, h, texW, texH;
    } cases[] = {
        {100, 60, 128, 64}, {256, 100, 256, 100}, {100, 64, 100, 64}, {3, 1, 4, 2}, {64, 64, 64, 64}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.w << " x " << c.h);
        HV_Texture t(true);
        ASSERT_TRUE(t.LoadPNG(Halves(c.w, c.h).c_str()));
        EXPECT_EQ(t.width, static_cast<unsigned>(c.texW));
        EXPECT_EQ(t.height, static_cast<unsigned>(c.texH));
        EXPECT_EQ(t.data, nullptr); // only the texture name remains
        EXPECT_EQ(glIsTexture(static_cast<GLuint>(t.textureID)), GL_TRUE);
        t.DeleteTexture(t.textureID);
    }
    HV_Texture t(true);
    EXPECT_FALSE(t.LoadPNG("/nonexistent/picture.png"));
    EXPECT_FALSE(t.LoadBMP("/nonexistent/picture.bmp"));
    EXPECT_FALSE(t.LoadTGA(Halves(8, 8).c_str())); // a PNG is no TGA
    EXPECT_EQ(t.textureID, 0);
    EXPECT_EQ(t.data, nullptr);
    t.DrawTexturePeace(0, 0, 10, 10, 10, 10, false, false, 0, nullptr); // draws nothing, does not fail
    EndFrame();
    EXPECT_TRUE(IsBlack(Px(15, 15)));
}

TEST_F(Textures, PiecesLandOnTheirScreenRectanglesScaledTurnedAndFromTheTopOfAPaddedTexture) {
    HV_Texture t(true);
    ASSERT_TRUE(t.LoadPNG(Halves(64, 32).c_str()));
    t.DrawTexturePeaceComplete(0, 0, 32, 32, 20, 20, 64, 64, false, false, 0, nullptr); // red half, scaled x2
    t.DrawTexturePeace(32, 0, 64, 32, 120, 20, false, false, 0, nullptr);               // blue half, 1:1
    EndFrame();
    EXPECT_EQ(Count(22, 22, 82, 82, IsRed), 60 * 60);
    EXPECT_EQ(Count(122, 22, 150, 50, IsBlue), 28 * 28);
    EXPECT_EQ(Count(0, 0, kFrameW, kFrameH, IsLit), 64 * 64 + 32 * 32) << "nothing beside them";

    // A quarter turn counter-clockwise about the piece's own centre: the red left half goes to the bottom.
    StartFrame(0, 0, 0);
    HV_Texture square(true);
    ASSERT_TRUE(square.LoadPNG(Halves(64, 64).c_str()));
    square.DrawTexturePeaceComplete(0, 0, 64, 64, 100, 60, 64, 64, false, false, 90.0f, nullptr);
    EndFrame();
    EXPECT_EQ(Count(104, 64, 160, 88, IsRed), 56 * 24);
    EXPECT_EQ(Count(104, 96, 160, 120, IsBlue), 56 * 24);
    EXPECT_EQ(Count(0, 0, kFrameW, kFrameH, IsLit), Count(98, 58, 166, 126, IsLit)) << "inside its rectangle";

    // 100 x 60, bottom half red, top half blue, padded to 128 x 64 with the picture's top row at the
    // texture's top. The piece (0, 0)-(100, 60) reaches t = 60/64: its bottom four rows are the transparent
    // padding and the picture's top four rows are cut.
    StartFrame(0, 0, 0);
    HV_Texture padded(true);
    ASSERT_TRUE(padded.LoadPNG(Picture("split.png", PictureFormat::Png, 100, 60, [](int, int y) {
                                   return y < 30 ? kRed : kBlue;
                               }).c_str()));
    padded.DrawTexturePeace(0, 0, 100, 60, 10, 10, false, false, 0, nullptr);
    EndFrame();
    EXPECT_EQ(Count(12, 10, 108, 13, IsLit), 0);        // padding: transparent
    EXPECT_EQ(Count(12, 16, 108, 42, IsRed), 96 * 26);  // picture rows 0..29 on screen rows 14..43
    EXPECT_EQ(Count(12, 46, 108, 69, IsBlue), 96 * 23); // rows 30..55 on 44..69, 56..59 cut
    EXPECT_TRUE(IsBlack(Px(50, 71)));
}

TEST_F(Textures, NightLightingColoursAndAlphaTintThePiece) {
    host().set("sim/graphics/misc/cockpit_light_level_r", 0.5);
    host().set("sim/graphics/misc/cockpit_light_level_g", 0.5);
    host().set("sim/graphics/misc/cockpit_light_level_b", 0.25);
    HV_Texture t(true), halves(true);
    ASSERT_TRUE(t.LoadPNG(White().c_str()));
    ASSERT_TRUE(halves.LoadPNG(Halves(32, 32).c_str()));
    t.DrawTexturePeace(0, 0, 32, 32, 10, 10, true, false, 0, nullptr);
    t.DrawTexturePeace(0, 0, 32, 32, 60, 10, false, false, 0, nullptr);
    const float teal[3] = {0.0f, 0.5f, 1.0f}, yellow[3] = {1.0f, 1.0f, 0.0f}, green[3] = {0, 1, 0};
    t.DrawTexturePeace(0, 0, 32, 32, 110, 10, true, false, 0, teal); // the colour wins over night lighting
    glColor4f(0.0f, 0.0f, 0.0f, 0.5f); // with an explicit colour, only the alpha of the current one stays
    t.DrawTexturePeace(0, 0, 32, 32, 160, 10, false, false, 0, yellow);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    halves.DrawTexturePeaceTransparent(0, 0, 16, 32, 10, 60, 16, 32, 0.5f, false, 0, nullptr);
    halves.DrawTexturePeaceTransparent(0, 0, 16, 32, 40, 60, 16, 32, 0.25f, false, 0, green);
    EndFrame();
    ExpectPx(26, 26, {128, 128, 64});  // white at night: times the light levels
    ExpectPx(76, 26, {255, 255, 255}); // by day as it is
    ExpectPx(126, 26, {0, 128, 255});
    ExpectPx(176, 26, {128, 128, 0});
    ExpectPx(18, 76, {128, 0, 0});
    ExpectPx(48, 76, {0, 0, 0}, 1); // green tint on a red texel: nothing left
}

/// An X-Plane 10 host, which still has the transparent-panel setting.
class OlderSimTextures : public Textures {
protected:
    simhost::HostOptions Options() const override {
        simhost::HostOptions o;
        o.xplaneVersion = 10510;
        return o;
    }
};

TEST_F(OlderSimTextures, PiecesFadeWithATransparentPanelWhenAsked) {
    HV_Texture t(true);
    ASSERT_TRUE(t.LoadPNG(White().c_str()));
    host().set("sim/graphics/settings/transparent_panel", 1);
    t.DrawTexturePeace(0, 0, 32, 32, 10, 10, false, true, 0, nullptr);
    t.DrawTexturePeace(0, 0, 32, 32, 60, 10, false, false, 0, nullptr);
    host().set("sim/graphics/settings/transparent_panel", 0);
    t.DrawTexturePeace(0, 0, 32, 32, 110, 10, false, true, 0, nullptr);
    EndFrame();
    ExpectPx(26, 26, {102, 102, 102}); // 0.4 x 255
    ExpectPx(76, 26, kWhite);
    ExpectPx(126, 26, kWhite);
}

} // namespace
} // namespace kalvora_test
