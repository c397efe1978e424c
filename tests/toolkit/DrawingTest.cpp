// What panels and pictures put on the screen, read back from simhost's renderer.
#include <filesystem>

#include "ToolkitFixture.h"
#include "images/Bitmap.h"
#include "images/ImageFiles.h"
#include "images/Texture.h"
#include "toolkit/Controls.h"
#include "toolkit/PanelStyle.h"
#include "toolkit/Window.h"

using namespace toolkit_test;
namespace fs = std::filesystem;

namespace {

struct Rgb {
    int r, g, b;
};

class Drawing : public ToolkitTest {
protected:
    Drawing() : ToolkitTest(true) {}
    void SetUp() override {
        ToolkitTest::SetUp();
        if (!host().renderingAvailable()) GTEST_SKIP() << "no OpenGL context";
        dir = fs::temp_directory_path() /
              ("kalvora-toolkit-drawing-" +
               std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::create_directories(dir);
    }
    void TearDown() override {
        if (!dir.empty()) fs::remove_all(dir);
        ToolkitTest::TearDown();
    }
    /// The colour at the middle of a widget as drawn on the next frame.
    Rgb MiddleOf(XPWidgetID w) {
        const std::string path = (dir / "shot.png").string();
        std::string why;
        EXPECT_TRUE(simhost::screenshotWidget(host(), w, path, &why)) << why;
        ImageInfo image{};
        EXPECT_EQ(CreateBitmapFromPNG(path.c_str(), &image), 0);
        if (!image.data) return {-1, -1, -1};
        const long x = image.width / 2, y = image.height / 2;
        const unsigned char* p = image.data + y * BitmapRowBytes(&image) + x * image.channels;
        const Rgb colour{p[0], p[1], p[2]};
        DestroyBitmap(&image);
        return colour;
    }
    /// A 16 x 16 BMP of one colour.
    std::string SolidBmp(unsigned char r, unsigned char g, unsigned char b) {
        ImageInfo image{};
        EXPECT_EQ(CreateNewBitmap(16, 16, 3, &image), 0);
        for (long y = 0; y < 16; ++y)
            for (long x = 0; x < 16; ++x) {
                unsigned char* p = image.data + y * BitmapRowBytes(&image) + x * 3;
                p[0] = b; // BMP pixels are blue-green-red
                p[1] = g;
                p[2] = r;
            }
        const std::string path = (dir / "solid.bmp").string();
        EXPECT_EQ(WriteBitmapToFile(&image, path.c_str()), 0);
        DestroyBitmap(&image);
        return path;
    }
    fs::path dir;
};

TEST_F(Drawing, APanelIsFilledWithItsStylesBackground) {
    static const float kRed[3] = {1.0f, 0.0f, 0.0f};
    static const float kBlue[3] = {0.0f, 0.0f, 1.0f};
    HV_Window window(nullptr, nullptr, 200, "Styled", false, true);
    auto* panel = new HV_Panel(Style_BorderBack(1.0f, kBlue, kRed, 1.0f), false, 0, nullptr, true, true);
    ASSERT_TRUE(window.AddChild(panel));
    auto* spacer = new HV_Panel(kHV_NoStyle, false, 0, nullptr, true, true);
    spacer->bottom = spacer->minHeight = spacer->maxHeight = 40;
    ASSERT_TRUE(panel->AddChild(spacer, 0));
    const Rgb middle = MiddleOf(panel->widget);
    EXPECT_GT(middle.r, 200);
    EXPECT_LT(middle.g, 60);
    EXPECT_LT(middle.b, 60);

    panel->SetVisible(false); // hidden panels draw nothing
    const Rgb hidden = MiddleOf(panel->widget);
    EXPECT_LT(hidden.r, 200);
}

TEST_F(Drawing, APictureShowsItsPieceAndTheNightTintDarkensIt) {
    HV_Texture texture(true);
    ASSERT_TRUE(texture.LoadBMP(SolidBmp(0, 255, 0).c_str()));
    HV_Window window(nullptr, nullptr, 200, "Pictures", false, true);
    auto* day = new HV_CtrlPicture(&texture, 0, 0, 16, 16, false, true);
    auto* night = new HV_CtrlPicture(&texture, 0, 0, 16, 16, true, true);
    ASSERT_TRUE(window.AddChild(day));
    ASSERT_TRUE(window.AddChild(night));
    EXPECT_EQ(day->bottom, 16);
    EXPECT_EQ(GeometryOf(day->widget).width(), 16);
    EXPECT_EQ(GeometryOf(day->widget).height(), 16);

    host().set("sim/graphics/misc/cockpit_light_level_r", 0.0);
    host().set("sim/graphics/misc/cockpit_light_level_g", 0.25);
    host().set("sim/graphics/misc/cockpit_light_level_b", 0.0);
    const Rgb lit = MiddleOf(day->widget);
    const Rgb tinted = MiddleOf(night->widget);
    EXPECT_GT(lit.g, 200);
    EXPECT_LT(lit.r, 60);
    // A quarter of the light, or none where the texture kept dataref handles of an earlier host in
    // this process: either way far darker than the day picture.
    EXPECT_LT(tinted.g, 120);
}

} // namespace
