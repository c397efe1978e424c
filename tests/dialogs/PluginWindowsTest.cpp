// The real Kalvora.xpl with its pictures, used from the host's menu and keys:
// the windows open from "Kalvora" and "Tools", preferences reach the file at
// stop, the truck view takes the camera. Pictures of every window are written
// to $KALVORA_SCREENSHOT_DIR (default <build>/dialogs-screenshots/).
#include "lifecycle/LoadedPlugin.h"
#include "dialogs/ShownWindow.h"

#include "XPLMDefs.h"
#include "XPStandardWidgets.h"

#include <cstdlib>

namespace kalvora_test {
namespace {

class PluginWindowsTest : public LoadedPluginTest {
protected:
    void SetUp() override {
        LoadedPluginTest::SetUp();
        fs::copy(KALVORA_SOURCE_DIR "/assets/Kalvora/Bitmaps", root / "dist" / "Kalvora" / "Bitmaps");
        options.render = true;
    }

    simhost::WidgetHandle Window(const std::string& title) { return ShownWindow(title); }

    bool Pick(const std::string& item) { return host->pickMenu(std::string(kMenu) + "/" + item); }
    bool ClickText(simhost::WidgetHandle under, const std::string& text) {
        simhost::WidgetHandle w = simhost::findWidget(text, under);
        return w && simhost::clickWidget(*host, w);
    }
    bool Registered(const std::string& what) {
        for (const std::string& line : host->registrations(id))
            if (line.rfind(what, 0) == 0) return true;
        return false;
    }

    /// Writes a picture of the window when the host draws.
    void Picture(simhost::WidgetHandle window, const std::string& name) {
        if (!host->renderingAvailable()) return;
        const char* dir = std::getenv("KALVORA_SCREENSHOT_DIR");
        const fs::path folder = dir ? fs::path(dir) : fs::path(KALVORA_BINARY_DIR) / "dialogs-screenshots";
        fs::create_directories(folder);
        std::string why;
        EXPECT_TRUE(simhost::screenshotWidget(*host, window, (folder / name).string(), &why)) << why;
    }
};

TEST_F(PluginWindowsTest, PreferencesFromTheMenuReachTheFileAtStop) {
    Load();
    ASSERT_TRUE(Pick("Preferences..."));
    simhost::WidgetHandle window = Window("Kalvora Preferences");
    ASSERT_NE(window, nullptr);
    // The boxes come first, in the window's order: the fourth is "Draw truck".
    simhost::WidgetHandle drawTruck = simhost::findWidgetByClass(xpWidgetClass_Button, window, 3);
    ASSERT_TRUE(simhost::clickWidget(*host, drawTruck));
    ASSERT_TRUE(
        simhost::dragSliderTo(*host, simhost::findWidgetByClass(xpWidgetClass_ScrollBar, window), 25));
    Picture(window, "dialogs-preferences.png");
    ASSERT_TRUE(ClickText(window, "  OK  "));
    EXPECT_EQ(Window("Kalvora Preferences"), nullptr);
    Unload();
    EXPECT_EQ(PrefValue("DRAW_TRUCK"), "0");
    EXPECT_EQ(PrefValue("TRUCK_SPEED"), "25.000000");
    EXPECT_EQ(PrefValue("TruckView_KEY"), "0") << "OK without a new key takes key 0";
}

TEST_F(PluginWindowsTest, AboutShowsTheLogoOnceAtATime) {
    Load();
    ASSERT_TRUE(Pick("About..."));
    ASSERT_TRUE(Pick("About..."));
    simhost::WidgetHandle window = Window("About Kalvora...");
    ASSERT_NE(window, nullptr);
    int count = 0;
    for (simhost::WidgetHandle w : simhost::topLevelWidgets())
        count += simhost::widgetDescriptor(w) == "About Kalvora...";
    EXPECT_EQ(count, 1);
    EXPECT_EQ(PluginLog().find("[WRNG] No picture"), std::string::npos) << PluginLog();
    Picture(window, "dialogs-about.png");
    ASSERT_TRUE(simhost::clickCloseBox(*host, window));
    EXPECT_EQ(Window("About Kalvora..."), nullptr);
    ASSERT_TRUE(Pick("About..."));
    EXPECT_NE(Window("About Kalvora..."), nullptr);
}

TEST_F(PluginWindowsTest, ToolsOpenTheFreeMovePanelAndTheLayoutTools) {
    Load();
    EXPECT_EQ(host->menuItems(std::string(kMenu) + "/Tools"),
              (std::vector<std::string>{"Free move panel", "Texture cutter", "Measuring window"}));
    ASSERT_TRUE(Pick("Tools/Free move panel"));
    simhost::WidgetHandle panel = Window("Truck Movements Control Panel");
    ASSERT_NE(panel, nullptr);
    EXPECT_TRUE(Registered("key sniffer"));
    EXPECT_EQ(PluginLog().find("[WRNG] No picture"), std::string::npos) << "the truck icon loads";
    Picture(panel, "dialogs-free-move.png");
    ASSERT_TRUE(simhost::clickCloseBox(*host, panel));
    EXPECT_FALSE(Registered("key sniffer"));

    ASSERT_TRUE(Pick("Tools/Measuring window"));
    simhost::WidgetHandle measure = Window("Measure");
    ASSERT_NE(measure, nullptr);
    Picture(measure, "dialogs-measure.png");

    ASSERT_TRUE(Pick("Tools/Texture cutter"));
    simhost::WidgetHandle chooser = Window("Texture to cut");
    ASSERT_NE(chooser, nullptr);
    ASSERT_TRUE(simhost::typeInto(*host, simhost::findWidgetByClass(xpWidgetClass_TextField, chooser),
                                  "Bitmaps/iconTruck.png"));
    ASSERT_TRUE(ClickText(chooser, "OK"));
    simhost::WidgetHandle cutter = Window("Texture cutter");
    ASSERT_NE(cutter, nullptr);
    simhost::WidgetInfo info;
    ASSERT_TRUE(simhost::widgetInfo(cutter, info));
    // Drag across the picture, which starts below the title bar at the left margin.
    const int x = info.left + 20, y = info.top - 40;
    host->mouseDown(x, y);
    host->mouseDrag(x + 20, y - 10);
    host->mouseUp(x + 30, y - 15);
    EXPECT_NE(host->logText().find("(30 x 15)"), std::string::npos) << "the cut is logged";
    Picture(cutter, "dialogs-texture-cutter.png");
}

TEST_F(PluginWindowsTest, TruckViewKeyDuringAPush) {
    Load();
    StartPush("Push straight back");
    host->pressKey(XPLM_VK_F12);
    host->runFrames(2);
    const simhost::CameraState camera = host->camera();
    EXPECT_TRUE(camera.controlled);
    EXPECT_EQ(camera.controllerPluginId, id);
    // The seat as other plug-ins see the truck: 3.5 m from its reference point, 1.75 m up.
    const double truckX = host->getf("halvern/kalvora/truck/position_ogl_x");
    const double truckY = host->getf("halvern/kalvora/truck/position_ogl_y");
    const double truckZ = host->getf("halvern/kalvora/truck/position_ogl_z");
    EXPECT_NEAR(std::hypot(camera.x - truckX, camera.z - truckZ), 3.5, 0.05);
    EXPECT_NEAR(camera.y, truckY + 1.75, 0.05);
    ASSERT_TRUE(host->runCommand("sim/view/default_view"));
    host->runFrames(2);
    EXPECT_FALSE(host->camera().controlled);
}

} // namespace
} // namespace kalvora_test
