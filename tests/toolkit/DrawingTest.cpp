// What panels and pictures put on the screen, read back from simhost's renderer, and the pictures of
// the toolkit shown in its documentation, written to $KALVORA_SCREENSHOT_DIR (default: the build
// folder). Skipped where no OpenGL context can be made.

#include "ToolkitFixture.h"
#include "images/Texture.h"
#include "support/Corpus.h"
#include "support/Frames.h"
#include "support/Pictures.h"
#include "support/TempFolder.h"
#include "toolkit/CtrlArray.h"
#include "toolkit/Dialog.h"
#include "toolkit/FileDialog.h"
#include "toolkit/PanelStyle.h"
#include "toolkit/PopupMenu.h"

using namespace toolkit_test;
using Rgb = kalvora_test::Rgb;

namespace {

class Drawing : public ToolkitTest {
protected:
    Drawing() : ToolkitTest(true) {}
    void SetUp() override {
        ToolkitTest::SetUp();
        if (!host().renderingAvailable()) GTEST_SKIP() << "no OpenGL context";
    }
    void TearDown() override {
        HV_Message::Close();
        XSBPopupCleanup();
        ToolkitTest::TearDown();
    }
    /// The colour at the middle of a widget as drawn on the next frame.
    Rgb MiddleOf(XPWidgetID w) {
        const Rect r = GeometryOf(w);
        return kalvora_test::ColorOf(kalvora_test::GrabFrame(host()).at(r.midX(), r.midY()));
    }
    void Shoot(XPWidgetID w, const std::string& name) {
        kalvora_test::DocumentationPicture(host(), w, "toolkit-screenshots", name);
    }
    kalvora_test::TempFolder dir{"kalvora-toolkit-drawing"};
};

TEST_F(Drawing, APictureShowsItsPieceAndTheNightTintDarkensIt) {
    const std::string bmp = dir.file("solid.bmp");
    ASSERT_TRUE(kalvora_test::WritePicture(bmp, kalvora_test::PictureFormat::Bmp, 16, Rgb{0, 255, 0}));
    HV_Texture texture(true);
    ASSERT_TRUE(texture.LoadBMP(bmp.c_str()));
    HV_Window pictures(nullptr, nullptr, 200, "Pictures", false, true);
    auto* day = new HV_CtrlPicture(&texture, 0, 0, 16, 16, false, true);
    auto* night = new HV_CtrlPicture(&texture, 0, 0, 16, 16, true, true);
    ASSERT_TRUE(pictures.AddChild(day));
    ASSERT_TRUE(pictures.AddChild(night));
    host().set("sim/graphics/misc/cockpit_light_level_r", 0.0);
    host().set("sim/graphics/misc/cockpit_light_level_g", 0.25);
    host().set("sim/graphics/misc/cockpit_light_level_b", 0.0);
    const Rgb lit = MiddleOf(day->widget);
    EXPECT_GT(lit.g, 200);
    EXPECT_LT(lit.r, 60);
    // A quarter of the light, or none where the texture kept dataref handles of an earlier host in
    // this process: either way far darker than the day picture.
    EXPECT_LT(MiddleOf(night->widget).g, 120);
}

TEST_F(Drawing, PicturesForTheDocumentation) {
    HV_Window window(nullptr, nullptr, 360, "Every control", true, true);
    auto* panel = new HV_Panel(Style_Up(1.0f), false, 0, nullptr, true, true);
    ASSERT_TRUE(window.AddChild(panel));
    panel->AddChild(new HV_CtrlText("A line of text, centred", kAlignCenter, true), 0);
    panel->AddChild(new HV_CtrlButton("Push button", kAlignLeft, true, true), 0);
    panel->AddChild(new HV_CtrlButtonChkBox("Toggle button", kAlignRight, true, true, true), 0);
    panel->AddChild(new HV_CtrlCheckBox("Check box, ticked", true, true, true), 0);
    panel->AddChild(new HV_CtrlCheckBox("Check box, not ticked", false, true, true), 0);
    panel->AddChild(new HV_CtrlSlider("Truck speed", 0, 50, 12, 1, true, true, true), 0);
    panel->AddChild(new HV_CtrlProgress(0, 100, 65), 0);
    panel->AddChild(new HV_CtrlTextBox("Tail number", "HB-JLT", 8, false, nullptr, true, true), 0);
    auto* popup = new HV_CtrlPopup("Truck", "Small tug;Large tug;Towbarless", 1, true, true);
    panel->AddChild(popup, 0);
    auto* table = new HV_CtrlArray(2, 4, true, true);
    table->SetColumn(0, "Model", 200);
    table->SetColumn(1, "Size", 80);
    table->SetRowCount(6);
    const char* names[] = {"tug_small.obj", "tug_large.obj", "towbarless.obj",
                           "gpu.obj",       "stairs.obj",    "cart.obj"};
    for (int i = 0; i < 6; ++i) {
        table->SetCellText(i, 0, names[i]);
        table->SetCellText(i, 1, std::to_string(12 + 7 * i).append(" kB").c_str());
    }
    table->SetSelectedRow(1);
    panel->AddChild(table, 0);
    HV_Texture texture(true);
    if (kalvora_test::corpusAvailable() &&
        texture.LoadPNG(kalvora_test::corpusPath("images/pngsuite/basn2c08.png").c_str()))
        panel->AddChild(new HV_CtrlPicture(&texture, 0, 0, 32, 32, false, true), 0);
    panel->Pack();
    window.Pack();
    window.Center();
    Shoot(window.widget, "toolkit-controls.png");
    ASSERT_TRUE(simhost::clickWidget(host(), popup->widget));
    ASSERT_TRUE(XSBPopupIsOpen());
    Shoot(window.widget, "toolkit-popup.png");
    host().click(1000, 10);
    window.SetVisible(false);

    HV_Dialog::Show("Kalvora", "The aircraft is moving.;Stop the push-back now?", "Stop", "Continue",
                    nullptr);
    Shoot(MainWindows().back(), "toolkit-dialog.png");
    simhost::clickWidget(host(), simhost::findWidget("Stop", MainWindows().back()));

    HV_Message::Show("Ground: brakes released, push-back begins.", 10, 2);
    // An invisible frame over the message's corner of the screen to take the picture through.
    XPWidgetID frame =
        XPCreateCustomWidget(0, 740, 400, 640, 0, "", 1, nullptr,
                             [](XPWidgetMessage, XPWidgetID, intptr_t, intptr_t) { return 0; });
    Shoot(frame, "toolkit-message.png");
    XPDestroyWidget(frame, 1);

    std::filesystem::create_directories(dir / "Trucks/Liveries");
    for (const char* name : {"tug_small.obj", "tug_large.obj", "towbarless.obj", "readme.txt"})
        dir.write(std::string("Trucks/") + name, "x\n");
    OpenFileDialog(
        "Choose a truck", dir.file("Trucks").c_str(), "*.obj", [](const char*, void*) {}, nullptr);
    Shoot(MainWindows().back(), "toolkit-filedialog.png");
    simhost::clickWidget(host(), simhost::findWidget("Cancel", MainWindows().back()));
}

} // namespace
