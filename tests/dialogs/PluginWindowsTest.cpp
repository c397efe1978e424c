// The real Kalvora.xpl with its pictures, used from the host's menu and keys:
// the windows open from "Kalvora" and "Tools", preferences reach the file at
// stop, the truck view takes the camera. Pictures of every window are written
// to $KALVORA_SCREENSHOT_DIR (default <build>/dialogs-screenshots/).
#include "support/InstalledPlugin.h"
#include "dialogs/ShownWindow.h"
#include "support/Frames.h"

#include "XPStandardWidgets.h"

#include <algorithm>

namespace kalvora_test {
namespace {

class PluginWindowsTest : public InstalledPluginTest {
protected:
    void SetUp() override {
        InstalledPluginTest::SetUp();
        fs::copy(KALVORA_SOURCE_DIR "/assets/Kalvora/Bitmaps", DataFolder() / "Bitmaps");
        options.render = true;
    }

    void Picture(simhost::WidgetHandle window, const std::string& name) {
        DocumentationPicture(*host, window, "dialogs-screenshots", name);
    }
};

TEST_F(PluginWindowsTest, TheWindowsOpenFromTheMenusAndTakeKeysOnlyWhileOpenAndEnabled) {
    Load();
    ASSERT_TRUE(Pick("About..."));
    ASSERT_TRUE(Pick("About..."));
    simhost::WidgetHandle about = ShownWindow("About Kalvora...");
    ASSERT_NE(about, nullptr);
    EXPECT_EQ(ShownWindows("About Kalvora...").size(), 1u) << "one at a time";
    Picture(about, "dialogs-about.png");
    ASSERT_TRUE(simhost::clickCloseBox(*host, about));
    EXPECT_EQ(ShownWindow("About Kalvora..."), nullptr);

    EXPECT_EQ(host->menuItems(std::string(kMenu) + "/Tools"),
              (std::vector<std::string>{"Free move panel", "Texture cutter", "Measuring window"}));
    ASSERT_TRUE(Pick("Tools/Free move panel"));
    simhost::WidgetHandle panel = ShownWindow("Truck Movements Control Panel");
    ASSERT_NE(panel, nullptr);
    Picture(panel, "dialogs-free-move.png");
    EXPECT_EQ(Registered("key sniffer"), 1);
    host->disablePlugin(kalvora);
    EXPECT_EQ(Registered("key sniffer"), 0) << "a disabled plug-in keeps no keys from the others";
    ASSERT_TRUE(host->enablePlugin(kalvora));
    EXPECT_EQ(Registered("key sniffer"), 1) << "the open panel takes its keys again";
    ASSERT_TRUE(simhost::clickCloseBox(*host, panel));
    EXPECT_EQ(Registered("key sniffer"), 0);
    ASSERT_TRUE(Pick("Tools/Measuring window"));
    Picture(ShownWindow("Measure"), "dialogs-measure.png");
    ASSERT_TRUE(Pick("Tools/Texture cutter"));
    simhost::WidgetHandle chooser = ShownWindow("Texture to cut");
    ASSERT_NE(chooser, nullptr);
    ASSERT_TRUE(simhost::typeInto(*host, simhost::findWidgetByClass(xpWidgetClass_TextField, chooser),
                                  "Bitmaps/iconTruck.png"));
    ASSERT_TRUE(ClickText(*host, chooser, "OK"));
    simhost::WidgetHandle cutter = ShownWindow("Texture cutter");
    ASSERT_NE(cutter, nullptr);
    simhost::WidgetInfo info;
    ASSERT_TRUE(simhost::widgetInfo(cutter, info));
    // Drag across the picture, which starts below the title bar at the left margin, so that the
    // picture shows a selected rectangle.
    const int x = info.left + 20, y = info.top - 40;
    host->mouseDown(x, y);
    host->mouseDrag(x + 20, y - 10);
    host->mouseUp(x + 30, y - 15);
    EXPECT_NE(host->logText().find("(30 x 15)"), std::string::npos) << "the cut is logged";
    Picture(cutter, "dialogs-texture-cutter.png");
    EXPECT_EQ(PluginLog().find("[WRNG] No picture"), std::string::npos) << "the logo and truck icon load";
}

TEST_F(PluginWindowsTest, PreferencesFromTheMenuReachTheFileAtStop) {
    Load();
    ASSERT_TRUE(Pick("Preferences..."));
    simhost::WidgetHandle prefs = ShownWindow("Kalvora Preferences");
    // The boxes come first, in the window's order: the fourth is "Draw truck".
    ASSERT_TRUE(simhost::clickWidget(*host, simhost::findWidgetByClass(xpWidgetClass_Button, prefs, 3)));
    ASSERT_TRUE(simhost::dragSliderTo(*host, simhost::findWidgetByClass(xpWidgetClass_ScrollBar, prefs), 25));
    Picture(prefs, "dialogs-preferences.png");
    ASSERT_TRUE(ClickText(*host, prefs, "  OK  "));
    EXPECT_EQ(ShownWindow("Kalvora Preferences"), nullptr);
    Unload();
    EXPECT_EQ(PrefValue("DRAW_TRUCK"), "0");
    EXPECT_EQ(PrefValue("TRUCK_SPEED"), "25.000000");
    EXPECT_EQ(PrefValue("TruckView_KEY"), "0") << "OK without a new key takes key 0";
}

TEST_F(PluginWindowsTest, TheCrewMessageIsReadableInsideItsBoxOnEveryHost) {
    // Before 11.50 the tug is drawn in the legacy 3-D phases, which leave back-face culling on.
    for (int version : {740, 11410, 12100}) {
        SCOPED_TRACE(version);
        host.reset();
        options.xplaneVersion = version;
        options.sandboxDir = (root / ("xplane-" + std::to_string(version))).string();
        fs::create_directories(options.sandboxDir);
        shippedData = true;
        Load();
        if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL context";
        ASSERT_TRUE(Pick("Push straight back"));
        host->runFrames(2);
        const std::vector<simhost::WindowInfo> windows = host->windows();
        // The message stands 10 px from the screen's left edge.
        const auto box = std::find_if(windows.begin(), windows.end(), [&](const simhost::WindowInfo& w) {
            return w.pluginId == kalvora && w.visible && w.left == 10;
        });
        ASSERT_NE(box, windows.end()) << "no message window";
        simhost::gfx::Image frame;
        ASSERT_TRUE(simhost::gfx::readFrame(frame));
        // Pixels of the green crew text, (0.4, 0.9, 0.4): within the box's rows, starting in the box.
        // (simhost's letters are 7 px wide where the box allows 6, so a long line runs past its right end.)
        const int low = std::min(box->bottom, box->top), high = std::max(box->bottom, box->top);
        const auto text = [&](int x, int y, bool inRows) {
            return !Differ(ColorOf(frame.at(x, y)), {102, 230, 102}, 30) && (y >= low && y <= high) == inRows;
        };
        EXPECT_GT(PixelsWhere(frame, [&](int x, int y) { return x <= box->right && text(x, y, true); }).count,
                  100)
            << "no text in the box";
        EXPECT_EQ(PixelsWhere(frame, [&](int x, int y) { return text(x, y, false); }).count, 0)
            << "text above or below the box";
        EXPECT_EQ(PixelsWhere(frame, [&](int x, int y) { return x <= box->left && text(x, y, true); }).count,
                  0)
            << "text left of the box";
    }
}

} // namespace
} // namespace kalvora_test
