// The "Kalvora" menu as a user sees and uses it: its items, the manoeuvres,
// the refusals, "Stop PushBack!", and choosing a truck.
#include "support/InstalledPlugin.h"

#include <algorithm>

namespace kalvora_test {
namespace {

using MenuTest = InstalledPluginTest;

std::string Item(const std::string& name) {
    return std::string(kMenu) + "/" + name;
}

TEST_F(MenuTest, TheMenuHasEveryItemInOrderAndTheTrucksOfTheFolder) {
    AddTruck("Tug2");
    AddTruck("Tug1");
    Load();
    // The table's items come first; more may follow "Trucks" (their references are negative).
    const std::vector<std::string> items = host->menuItems(kMenu);
    ASSERT_GE(items.size(), 15u);
    EXPECT_EQ(std::vector<std::string>(items.begin(), items.begin() + 15),
              (std::vector<std::string>{"About...", "Preferences...", "-", "GPU", "-", "Push straight back",
                                        "Turn tail right", "Turn tail left", "-", "Automated tail right",
                                        "Automated tail left", "-", "Stop PushBack!", "-", "Trucks"}));
    EXPECT_EQ(host->menuCheck(Item("GPU")), 1);
    EXPECT_EQ(host->menuItems(Item("Trucks")), (std::vector<std::string>{"Tug1", "Tug2"}));
}

TEST_F(MenuTest, AboutAndPreferencesOpenTheirWindowsWhateverThePushBackState) {
    Load();
    StartPush("Push straight back"); // the start checks refuse, but these two items do not care
    ASSERT_TRUE(Pick("About..."));
    EXPECT_NE(simhost::findWidget("About Kalvora..."), nullptr) << simhost::widgetTree();
    ASSERT_TRUE(Pick("Preferences..."));
    EXPECT_NE(simhost::findWidget("Kalvora Preferences"), nullptr) << simhost::widgetTree();
    EXPECT_EQ(simhost::findWidget("Warning..."), nullptr);
}

TEST_F(MenuTest, TheHotKeyOfThePreferencesOpensTheTruckView) {
    constexpr int kF11 = 0x7A; // virtual key codes
    constexpr int kF12 = 0x7B; // the default truck-view key
    Load();
    host->pressKey(kF12);
    host->runFrames(2);
    EXPECT_TRUE(host->camera().controlled);
    EXPECT_EQ(host->camera().controllerPluginId, kalvora);

    // Another key from the preferences file, taken at the next start.
    Unload();
    std::string prefs = ReadFile(PrefsPath());
    prefs.replace(prefs.find("TruckView_KEY=123"), 17, "TruckView_KEY=122");
    WritePreferences(prefs);
    Load();
    host->pressKey(kF12);
    host->runFrames(2);
    EXPECT_FALSE(host->camera().controlled);
    host->pressKey(kF11);
    host->runFrames(2);
    EXPECT_TRUE(host->camera().controlled);
}

TEST_F(MenuTest, EachManoeuvreIsAnnouncedByName) {
    Load();
    const std::pair<const char*, const char*> cases[] = {{"Push straight back", "push back straight"},
                                                         {"Turn tail right", "push back tail right"},
                                                         {"Turn tail left", "push back tail left"},
                                                         {"Automated tail right", "push back tail right"},
                                                         {"Automated tail left", "push back tail left"}};
    for (const auto& [item, words] : cases) {
        MarkPosition();
        ASSERT_TRUE(Pick(item));
        host->runFrames(2);
        const std::vector<std::string> speech = host->transcriptTexts("speech");
        ASSERT_FALSE(speech.empty());
        EXPECT_NE(speech.back().find(words), std::string::npos) << item << ": " << speech.back();
        EXPECT_EQ(Moved(), 0.0) << "nothing moves before the brake is released";
        ASSERT_TRUE(Pick("Stop PushBack!"));
    }
}

TEST_F(MenuTest, WithoutTheSpotViewCommandTheOutsideViewComesFromTheLegacyButton) {
    constexpr const char* kExternal = "sim/graphics/view/view_is_external";
    Load();
    host->removeCommand("sim/view/still_spot"); // a host from before the command API
    ASSERT_EQ(host->geti(kExternal), 0);
    ASSERT_TRUE(Pick("Push straight back"));
    host->runFrames(2);
    EXPECT_EQ(host->geti(kExternal), 1);
    const std::vector<std::string> keys = host->transcriptTexts("key");
    EXPECT_NE(std::find(keys.begin(), keys.end(), "button press 46"), keys.end());
}

TEST_F(MenuTest, AManoeuvreWhileMovingIsRefusedAndTheRunningOneGoesOn) {
    Load();
    StartPush("Push straight back");
    const int status = host->geti(kStatus);
    ASSERT_EQ(status, 1);
    ASSERT_TRUE(Pick("Automated tail left"));
    const std::vector<std::string> dialog = DialogTexts("Warning...");
    ASSERT_FALSE(dialog.empty()) << "no refusal dialog";
    // The refusal for a manoeuvre already running (code -3), one caption per line.
    EXPECT_NE(std::find(dialog.begin(), dialog.end(), "Please wait for the current maneuver to finish"),
              dialog.end())
        << simhost::widgetTree();
    const double before = Moved();
    host->runFor(1);
    EXPECT_EQ(host->geti(kStatus), status);
    EXPECT_GT(Moved(), before) << "the running push stopped";
}

TEST_F(MenuTest, StopPushBackStopsAPushAndIsHarmlessWhenIdle) {
    Load();
    ASSERT_TRUE(Pick("Stop PushBack!"));
    host->runFrames(10);
    EXPECT_EQ(simhost::findWidget("Warning..."), nullptr);

    StartPush("Push straight back");
    ASSERT_TRUE(Pick("Stop PushBack!"));
    host->runFrames(2);
    const double stoppedAt = Moved();
    host->runFor(3);
    EXPECT_EQ(host->geti(kStatus), 0);
    EXPECT_NEAR(Moved(), stoppedAt, 1e-6);
}

TEST_F(MenuTest, EnginesRunningRefuseTheStartWithTheWarningDialog) {
    Load();
    host->aircraft().engineRunning[0] = true;
    host->runFrames(2);
    ASSERT_TRUE(Pick("Push straight back"));
    EXPECT_FALSE(DialogTexts("Warning...").empty());
    host->runFor(5);
    EXPECT_FALSE(Said("ready to push back"));
    EXPECT_EQ(host->geti(kStatus), 0);
}

TEST_F(MenuTest, ChoosingATruckChecksOnlyItAndSurvivesARestart) {
    AddTruck("TugA");
    AddTruck("TugB");
    AddTruck("TugC");
    Load();
    EXPECT_EQ(host->menuCheck(Item("Trucks/TugA")), 0); // KLVdefault: nothing is checked
    ASSERT_TRUE(Pick("Trucks/TugB"));
    EXPECT_EQ(host->menuCheck(Item("Trucks/TugA")), 0);
    EXPECT_EQ(host->menuCheck(Item("Trucks/TugB")), 2);
    ASSERT_TRUE(Pick("Trucks/TugC"));
    EXPECT_EQ(host->menuCheck(Item("Trucks/TugB")), 0);
    EXPECT_EQ(host->menuCheck(Item("Trucks/TugC")), 2);

    Unload();
    EXPECT_EQ(PrefValue("Truck"), "TugC");
    Load();
    EXPECT_EQ(host->menuCheck(Item("Trucks/TugC")), 2);
    EXPECT_EQ(host->menuCheck(Item("Trucks/TugA")), 0);
}

TEST_F(MenuTest, WithoutModelsTheTrucksMenuIsEmptyAndTheDefaultTruckIsUsed) {
    Load();
    EXPECT_TRUE(host->menuItems(Item("Trucks")).empty());
    // The default model is asked for in the plug-in folder (none there, so its load fails).
    EXPECT_NE(PluginLog().find((PluginFolder() / "KLVdefault").string()), std::string::npos) << PluginLog();
    Unload();
    EXPECT_EQ(PrefValue("Truck"), "KLVdefault");
}

TEST_F(MenuTest, ATruckNoLongerOnDiskFallsBackToTheDefault) {
    AddTruck("TugA");
    AddTruck("TugB");
    WritePreferences("Truck=GoneTug\n");
    Load();
    EXPECT_EQ(PluginLog().find((PluginFolder() / "GoneTug").string()), std::string::npos)
        << "the missing truck was looked for";
    EXPECT_NE(PluginLog().find((PluginFolder() / "KLVdefault").string()), std::string::npos) << PluginLog();
    EXPECT_EQ(host->menuCheck(Item("Trucks/TugA")), 0);
    EXPECT_EQ(host->menuCheck(Item("Trucks/TugB")), 0);
    Unload();
    EXPECT_EQ(PrefValue("Truck"), "KLVdefault");
}

TEST_F(MenuTest, GPUItemTogglesTheUnitAndItsCheckMark) {
    Load();
    ASSERT_TRUE(Pick("GPU"));
    EXPECT_EQ(host->menuCheck(Item("GPU")), 2);
    EXPECT_NE(host->geti(kGPUStatus), 0);
    // With the unit at the aircraft, a push-back is refused.
    ASSERT_TRUE(Pick("Push straight back"));
    EXPECT_FALSE(DialogTexts("Warning...").empty());
    ASSERT_TRUE(Pick("GPU"));
    EXPECT_EQ(host->menuCheck(Item("GPU")), 1);
}

TEST_F(MenuTest, GPUItemDoesNothingWhenThePluginDoesNotHandleTheUnit) {
    WritePreferences("HANDLE_GPU=0\n");
    Load();
    ASSERT_TRUE(Pick("GPU"));
    EXPECT_EQ(host->menuCheck(Item("GPU")), 1);
    EXPECT_EQ(host->geti(kGPUStatus), 0);
}

} // namespace
} // namespace kalvora_test
