// The About window: one at a time, its layout, and a missing logo.
#include "dialogs/DialogsFixture.h"

#include "core/About.h"
#include "core/SimulatorDataRefs.h"
#include "images/Texture.h"

namespace kalvora_test {
namespace {

using AboutTest = DialogsTest;

TEST_F(AboutTest, OneWindowAtATimeAndANewOneAfterClosing) {
    About::OpenAbout();
    About* first = gAbout;
    ASSERT_NE(first, nullptr);
    About::OpenAbout();
    EXPECT_EQ(gAbout, first);
    EXPECT_EQ(CountWindows("About Kalvora..."), 1);

    ASSERT_TRUE(simhost::clickCloseBox(*host, Window("About Kalvora...")));
    EXPECT_EQ(gAbout, nullptr);
    EXPECT_EQ(CountWindows("About Kalvora..."), 0);

    About::OpenAbout();
    EXPECT_NE(gAbout, nullptr);
    EXPECT_EQ(CountWindows("About Kalvora..."), 1);
}

TEST_F(AboutTest, MissingLogoLeavesAnEmptyPictureAndTheWindowOpens) {
    // The in-process plug-in has no folder, so there is no Bitmaps/KLVlogo.png to find.
    About::OpenAbout();
    ASSERT_NE(gAbout, nullptr);
    EXPECT_EQ(gAbout->logo->textureID, 0);
    simhost::WidgetHandle window = Window("About Kalvora...");
    ASSERT_NE(window, nullptr);
    simhost::WidgetInfo info;
    ASSERT_TRUE(simhost::widgetInfo(window, info));
    EXPECT_EQ(info.right - info.left, 376);
    EXPECT_GT(info.top - info.bottom, 246) << "the picture keeps its 246 pixels";
}

TEST_F(AboutTest, CreditsThanksAndTheVersionLine) {
    About::OpenAbout();
    simhost::WidgetHandle window = Window("About Kalvora...");
    ASSERT_NE(window, nullptr);
    EXPECT_NE(simhost::findWidget("Special thanks to:", window), nullptr);
    const auto versions = simhost::findWidgets(
        [](const simhost::WidgetInfo& w) {
            const std::string& d = w.descriptor;
            return d.size() > 8 && d.compare(d.size() - 8, 8, "v1.2.2b3") == 0;
        },
        window);
    EXPECT_EQ(versions.size(), 1u);
}

TEST_F(AboutTest, CreditPaddingFollowsTheHostVersion) {
    auto creditLines = [this] {
        About::OpenAbout();
        std::vector<std::string> lines;
        for (simhost::WidgetHandle w : simhost::findWidgets(
                 [](const simhost::WidgetInfo& i) { return i.descriptor.find("....") != std::string::npos; },
                 Window("About Kalvora...")))
            lines.push_back(simhost::widgetDescriptor(w));
        simhost::clickCloseBox(*host, Window("About Kalvora..."));
        return lines;
    };
    XPVersion = 740;
    const auto newer = creditLines();
    XPVersion = 739;
    const auto older = creditLines();
    ASSERT_FALSE(newer.empty());
    ASSERT_EQ(newer.size(), older.size());
    EXPECT_NE(newer, older);
}

} // namespace
} // namespace kalvora_test
