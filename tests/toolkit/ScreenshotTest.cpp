// Pictures of the toolkit drawn by simhost's renderer: a panel with every control, a dialog and a
// message. They are written to $KALVORA_SCREENSHOT_DIR (default: the build folder) and checked for
// what must be on them. Skipped where no OpenGL context can be made.
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "ToolkitFixture.h"
#include "images/Texture.h"
#include "support/Corpus.h"
#include "toolkit/Controls.h"
#include "toolkit/CtrlArray.h"
#include "toolkit/Dialog.h"
#include "toolkit/FileDialog.h"
#include "toolkit/PopupMenu.h"
#include "toolkit/PanelStyle.h"
#include "toolkit/Window.h"

using namespace toolkit_test;
namespace fs = std::filesystem;

namespace {

class Screenshots : public ToolkitTest {
protected:
    Screenshots() : ToolkitTest(true) {}
    void SetUp() override {
        ToolkitTest::SetUp();
        if (!host().renderingAvailable()) GTEST_SKIP() << "no OpenGL context for pictures";
        const char* dir = std::getenv("KALVORA_SCREENSHOT_DIR");
        outDir = dir && *dir ? fs::path(dir) : fs::path(KALVORA_BINARY_DIR) / "toolkit-screenshots";
        fs::create_directories(outDir);
    }
    void TearDown() override {
        HV_Message::Close();
        ToolkitTest::TearDown();
    }
    /// Writes the picture of a widget's rectangle and checks that it is a PNG file.
    void Shoot(XPWidgetID w, const std::string& name) {
        const fs::path path = outDir / name;
        std::string why;
        ASSERT_TRUE(simhost::screenshotWidget(host(), w, path.string(), &why)) << why;
        ASSERT_TRUE(fs::exists(path));
        EXPECT_GT(fs::file_size(path), 100u);
    }
    fs::path outDir;
};

void IgnoreAnswer(int) {}

int DrawNothing(XPWidgetMessage, XPWidgetID, intptr_t, intptr_t) {
    return 0;
}

TEST_F(Screenshots, APanelWithEveryControl) {
    KALVORA_REQUIRE_CORPUS();
    HV_Texture texture(true);
    ASSERT_TRUE(texture.LoadPNG(kalvora_test::corpusPath("images/pngsuite/basn2c08.png").c_str()));

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
    panel->AddChild(new HV_CtrlPopup("Truck", "Small tug;Large tug;Towbarless", 1, true, true), 0);
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
    auto* picture = new HV_CtrlPicture(&texture, 0, 0, 32, 32, false, true);
    panel->AddChild(picture, 0);
    panel->Pack();
    window.Pack();
    window.Center();
    Shoot(window.widget, "toolkit-controls.png");
}

void IgnorePath(const char*, void*) {}

TEST_F(Screenshots, TheOpenFileDialog) {
    const fs::path folder = fs::temp_directory_path() / "Kalvora" / "Trucks";
    fs::create_directories(folder / "Liveries");
    for (const char* name : {"tug_small.obj", "tug_large.obj", "towbarless.obj", "readme.txt"})
        std::ofstream(folder / name) << "x\n";
    OpenFileDialog("Choose a truck", folder.string().c_str(), "*.obj", IgnorePath, nullptr);
    const std::vector<XPWidgetID> windows = MainWindows();
    ASSERT_EQ(windows.size(), 1u);
    Shoot(windows[0], "toolkit-filedialog.png");
    simhost::clickWidget(host(), FindByDescriptor(windows[0], "Cancel"));
    fs::remove_all(folder.parent_path());
}

TEST_F(Screenshots, AnOpenPopupMenu) {
    HV_Window window(nullptr, nullptr, 260, "Popup", false, true);
    auto* popup = new HV_CtrlPopup("Truck", "Small tug;Large tug;Towbarless", 1, true, true);
    ASSERT_TRUE(window.AddChild(popup));
    window.Pack();
    window.SetSize(260, 120);
    ASSERT_TRUE(simhost::clickWidget(host(), popup->widget));
    ASSERT_TRUE(XSBPopupIsOpen());
    Shoot(window.widget, "toolkit-popup.png");
    host().click(1000, 10);
    XSBPopupCleanup();
}

TEST_F(Screenshots, ATwoButtonDialog) {
    HV_Dialog::Show("Kalvora", "The aircraft is moving.;Stop the push-back now?", "Stop", "Continue",
                    IgnoreAnswer);
    const std::vector<XPWidgetID> windows = MainWindows();
    ASSERT_EQ(windows.size(), 1u);
    Shoot(windows[0], "toolkit-dialog.png");
    simhost::clickWidget(host(), FindByDescriptor(windows[0], "Stop"));
}

TEST_F(Screenshots, ATimedMessage) {
    HV_Message::Show("Ground: brakes released, push-back begins.", 10, 2);
    // An invisible frame over the message's corner of the screen to take the picture through.
    XPWidgetID frame = XPCreateCustomWidget(0, 740, 400, 640, 0, "", 1, nullptr, DrawNothing);
    Shoot(frame, "toolkit-message.png");
    XPDestroyWidget(frame, 1);
}

} // namespace
