// The About window: its layout, a missing logo, and the credit lines padded by
// the host's version (one window at a time is checked through the real plug-in).
#include "dialogs/DialogsFixture.h"

#include "core/About.h"
#include "core/SimulatorDataRefs.h"
#include "images/Texture.h"

namespace kalvora_test {
namespace {

using AboutTest = DialogsTest;

TEST_F(AboutTest, CreditsFollowTheHostVersionAndAMissingLogoLeavesAnEmptyPicture) {
    const auto creditLines = [this] {
        std::vector<std::string> lines;
        for (simhost::WidgetHandle w : simhost::findWidgets(
                 [](const simhost::WidgetInfo& i) { return i.descriptor.find("....") != std::string::npos; },
                 ShownWindow("About Kalvora...")))
            lines.push_back(simhost::widgetDescriptor(w));
        return lines;
    };
    XPVersion = 740;
    About::OpenAbout();
    simhost::WidgetHandle window = ShownWindow("About Kalvora...");
    ASSERT_NE(window, nullptr);
    EXPECT_NE(simhost::findWidget("Special thanks to:", window), nullptr);
    const auto versionLine = [](const simhost::WidgetInfo& w) {
        return w.descriptor.find("v1.2.2b3") != std::string::npos;
    };
    EXPECT_EQ(simhost::findWidgets(versionLine, window).size(), 1u) << "one version line";
    // The in-process plug-in has no folder, so there is no Bitmaps/KLVlogo.png to find.
    EXPECT_EQ(gAbout->logo->textureID, 0);
    simhost::WidgetInfo info;
    ASSERT_TRUE(simhost::widgetInfo(window, info));
    EXPECT_GT(info.top - info.bottom, 246) << "the picture keeps its 246 pixels";
    const std::vector<std::string> newer = creditLines();

    ASSERT_TRUE(simhost::clickCloseBox(*host, window));
    EXPECT_EQ(gAbout, nullptr);
    EXPECT_EQ(ShownWindows("About Kalvora...").size(), 0u);
    XPVersion = 739;
    About::OpenAbout();
    EXPECT_NE(gAbout, nullptr);
    EXPECT_EQ(ShownWindows("About Kalvora...").size(), 1u);
    const std::vector<std::string> older = creditLines();
    ASSERT_FALSE(newer.empty());
    ASSERT_EQ(newer.size(), older.size());
    EXPECT_NE(newer, older) << "the credits' padding follows the host version";
}

} // namespace
} // namespace kalvora_test
