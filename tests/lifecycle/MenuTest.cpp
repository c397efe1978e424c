// The "Kalvora" menu as a user sees and uses it: its items, the manoeuvres,
// the refusals, "Stop PushBack!", and choosing a truck.
#include "support/InstalledPlugin.h"

namespace kalvora_test {
namespace {

using MenuTest = InstalledPluginTest;

TEST_F(MenuTest, TheItemsAndTheTrucksOfTheFolderAndTheChosenTruckSurvivesARestart) {
    AddTruck("TugB");
    AddTruck("TugA");
    WritePreferences("Truck=GoneTug\n");
    Load();
    const std::string menu = std::string(kMenu) + "/";
    // The table's items come first; more may follow "Trucks" (their references are negative).
    const std::vector<std::string> items = host->menuItems(kMenu);
    ASSERT_GE(items.size(), 15u);
    EXPECT_EQ(std::vector<std::string>(items.begin(), items.begin() + 15),
              (std::vector<std::string>{"About...", "Preferences...", "-", "GPU", "-", "Push straight back",
                                        "Turn tail right", "Turn tail left", "-", "Automated tail right",
                                        "Automated tail left", "-", "Stop PushBack!", "-", "Trucks"}));
    EXPECT_EQ(host->menuItems(menu + "Trucks"), (std::vector<std::string>{"TugA", "TugB"}));
    // A truck no longer on disk is not looked for: the default one is, and nothing is checked.
    EXPECT_EQ(PluginLog().find((PluginFolder() / "GoneTug").string()), std::string::npos);
    EXPECT_EQ(host->menuCheck(menu + "Trucks/TugA"), 0);

    ASSERT_TRUE(Pick("Trucks/TugA"));
    ASSERT_TRUE(Pick("Trucks/TugB"));
    EXPECT_EQ(host->menuCheck(menu + "Trucks/TugA"), 0);
    EXPECT_EQ(host->menuCheck(menu + "Trucks/TugB"), 2);
    Unload();
    EXPECT_EQ(PrefValue("Truck"), "TugB");
    Load();
    EXPECT_EQ(host->menuCheck(menu + "Trucks/TugB"), 2);
}

TEST_F(MenuTest, ManoeuvresAreAnnouncedRefusedAndStoppedAsTheUserSeesThem) {
    constexpr const char* kExternal = "sim/graphics/view/view_is_external";
    Load();
    EXPECT_TRUE(host->menuItems(std::string(kMenu) + "/Trucks").empty()) << "no models in the data folder";
    ASSERT_TRUE(Pick("Stop PushBack!"));
    host->runFrames(10);
    EXPECT_EQ(simhost::findWidget("Warning..."), nullptr) << "harmless when idle";

    host->removeCommand("sim/view/still_spot"); // a host from before the command API
    const std::pair<const char*, const char*> announced[] = {{"Push straight back", "push back straight"},
                                                             {"Turn tail right", "push back tail right"},
                                                             {"Turn tail left", "push back tail left"},
                                                             {"Automated tail right", "push back tail right"},
                                                             {"Automated tail left", "push back tail left"}};
    for (const auto& [item, words] : announced) {
        ASSERT_EQ(host->geti(kExternal), 0);
        MarkPosition();
        ASSERT_TRUE(Pick(item));
        host->runFrames(2);
        const std::vector<std::string> speech = host->transcriptTexts("speech");
        ASSERT_FALSE(speech.empty());
        EXPECT_NE(speech.back().find(words), std::string::npos) << item << ": " << speech.back();
        EXPECT_EQ(Moved(), 0.0) << "nothing moves before the brake is released";
        EXPECT_EQ(host->geti(kExternal), 1) << "the outside view, from the legacy button";
        ASSERT_TRUE(Pick("Stop PushBack!"));
        host->set(kExternal, 0);
    }
    EXPECT_TRUE(Contains(host->transcriptTexts("key"), "button press 46"));

    StartPush("Push straight back");
    ASSERT_EQ(host->geti(kStatus), 1);
    ASSERT_TRUE(Pick("Automated tail left"));
    // The refusal for a manoeuvre already running, one caption per line.
    EXPECT_TRUE(Contains(DialogTexts("Warning..."), "Please wait for the current maneuver to finish"))
        << simhost::widgetTree();
    const double before = Moved();
    host->runFor(1);
    EXPECT_EQ(host->geti(kStatus), 1);
    EXPECT_GT(Moved(), before) << "the running push goes on";
    ASSERT_TRUE(Pick("About...")); // opens whatever the push-back state
    EXPECT_NE(simhost::findWidget("About Kalvora..."), nullptr) << simhost::widgetTree();

    ASSERT_TRUE(Pick("Stop PushBack!"));
    host->runFrames(2);
    const double stoppedAt = Moved();
    host->runFor(3);
    EXPECT_EQ(host->geti(kStatus), 0);
    EXPECT_NEAR(Moved(), stoppedAt, 1e-6);
}

} // namespace
} // namespace kalvora_test
