// Start, enable, disable and stop of the real plug-in: its log, its files, the
// host's log, what it registers and what it leaves behind; and the
// preferences file, kept through bad content and odd installations.
#include "support/InstalledPlugin.h"

#include "XPLMPlugin.h"

#include <algorithm>

namespace kalvora_test {
namespace {

using StartStopTest = InstalledPluginTest;

TEST_F(StartStopTest, StartEnableDisableAndStopLogRegisterAndLeaveOnlyWhatTheyShould) {
    Load();
    std::vector<std::string> log = Lines(PluginLog());
    ASSERT_GE(log.size(), 2u);
    EXPECT_EQ(log[0], "--- Starting Kalvora ---");
    EXPECT_EQ(log[1], "-Running on XPlane v12100");
    EXPECT_FALSE(fs::exists(PrefsPath())) << "the preferences are written only at stop";

    std::vector<std::string> regs = host->registrations(kalvora);
    for (const char* name : {kStatus, kGPUStatus, kTruckHdg})
        EXPECT_TRUE(Contains(regs, std::string("dataref ") + name)) << name;
    EXPECT_TRUE(Contains(regs, "hot key Toggle truckview"));

    host->disablePlugin(kalvora);
    EXPECT_FALSE(Contains(host->registrations(kalvora), "hot key Toggle truckview"));
    EXPECT_NE(PluginLog().find("--- Disabling Kalvora plugin ---"), std::string::npos);
    ASSERT_TRUE(host->enablePlugin(kalvora));
    EXPECT_TRUE(Contains(host->registrations(kalvora), "hot key Toggle truckview"));

    // Open at stop: preferences awaiting a key, the free-move panel, About, the crew's message on the GPU
    // and the warning that refuses a push beside it.
    for (const char* item :
         {"Preferences...", "Tools/Free move panel", "About...", "GPU", "Push straight back"})
        ASSERT_TRUE(Pick(item)) << item;
    ASSERT_TRUE(simhost::clickWidget(*host, simhost::findWidget("Assign new")));
    host->runFrames(2);
    ASSERT_FALSE(DialogTexts("Warning...").empty());
    ASSERT_GE(host->windows().size(), 5u);
    Unload();
    const std::vector<std::string>& left = host->leftoversAtLastUnload();
    for (const std::string& r : left)
        EXPECT_TRUE(r.rfind("flight loop ", 0) == 0 || r.rfind("menu ", 0) == 0) << "left registered: " << r;
    EXPECT_GE(std::count_if(left.begin(), left.end(),
                            [](const std::string& r) { return r.rfind("flight loop ", 0) == 0; }),
              3);
    log = Lines(PluginLog());
    ASSERT_GE(log.size(), 2u);
    EXPECT_EQ(log[log.size() - 2], "--- Disabling Kalvora plugin ---");
    EXPECT_EQ(log.back(), "--- Stopping Kalvora plugin ---");
    EXPECT_NE(host->logText().find("Kalvora: stopped"), std::string::npos);
    EXPECT_EQ(PrefValue("Truck"), "KLVdefault") << "the defaults reach the file at stop";
    EXPECT_EQ(PrefValue("TruckView_KEY"), "123");

    Load();
    EXPECT_EQ(PluginLog().find("--- Stopping Kalvora plugin ---"), std::string::npos) << "truncated at start";
    EXPECT_EQ(PluginLog().rfind("--- Starting Kalvora ---", 0), 0u);
}

TEST_F(StartStopTest, PreferencesReachTheFileOnlyAtStopAsTheyStoodAtDisable) {
    WritePreferences("VERSION=1.2.2b3\nTRUCK_SPEED=25\nTruck=KLVdefault\n");
    Load();
    host->disablePlugin(kalvora);
    WritePreferences("TRUCK_SPEED=99\n"); // edited on disk behind the plug-in's back
    Unload();
    // The container read at start wins; what was stored at disable is saved at stop.
    EXPECT_EQ(PrefValue("TRUCK_SPEED"), "25.000000");
    EXPECT_EQ(PrefValue("VERSION"), "1.2.2b3");
}

TEST_F(StartStopTest, GarbledPreferencesStillGiveAWorkingPluginAndAreRepairedOnDisk) {
    const std::string note = "# " + std::string(300, '-'); // longer than a property line may be
    WritePreferences(note + "\nTruckView_KEY=99999999999\nTruckView_KF=8\nTRUCK_SPEED=fast\nTruck=\n"
                            "HANDLE_GPU=yes\n=\nno equals sign\n");
    Load();
    EXPECT_EQ(Registered("hot key Toggle truckview"), 1);
    for (const char* key : {"TruckView_KEY=99999999999", "TRUCK_SPEED=fast", "HANDLE_GPU=yes"})
        EXPECT_NE(PluginLog().find(std::string("[WRNG] Preferences: ") + key), std::string::npos) << key;
    StartPush("Push straight back"); // the truck comes, hooks up and pushes at the default speed
    Unload();
    EXPECT_EQ(PrefValue("Truck"), "KLVdefault");
    EXPECT_EQ(PrefValue("TRUCK_SPEED"), "10.000000");
    EXPECT_EQ(PrefValue("TruckView_KEY"), "123");
    EXPECT_EQ(PrefValue("HANDLE_GPU"), "1");
    const std::vector<std::string> lines = Lines(ReadFile(PrefsPath()));
    EXPECT_TRUE(Contains(lines, note) && Contains(lines, "no equals sign") && Contains(lines, "="))
        << "lines the preferences cannot hold are kept";
}

TEST_F(StartStopTest, AMissingDataRefGivesTheKalvoraDialogAndTheLogLineAndTheRestWorks) {
    host = std::make_unique<simhost::Host>(options);
    host->removeDataRef(kLocalX);
    Load();
    EXPECT_TRUE(host->pluginEnabled(kalvora));
    EXPECT_NE(PluginLog().find("Data refs initialisation problems\n"), std::string::npos);
    EXPECT_TRUE(Contains(DialogTexts("Kalvora"), "OK")) << simhost::widgetTree();
    EXPECT_EQ(host->menuCheck(kGPUMenu), 1) << "menus and published datarefs are there all the same";
    EXPECT_TRUE(host->exists(kStatus));
}

/// The plug-in installed without its data folder, and in the fat layout
/// (Resources/plugins/Kalvora/lin_x64/Kalvora.xpl).
TEST_F(StartStopTest, OddInstallationsKeepTheUsersPreferences) {
    WritePreferences("TRUCK_SPEED=25\n");
    fs::remove_all(DataFolder());
    Load();
    EXPECT_TRUE(host->pluginEnabled(kalvora));
    EXPECT_NE(host->logText().find("Kalvora: its data folder " + PluginFolder().string() + "/ is missing"),
              std::string::npos)
        << host->logText();
    EXPECT_NE(host->logText().find("Kalvora: cannot write its log"), std::string::npos);
    Unload();
    EXPECT_EQ(PrefValue("TRUCK_SPEED"), "25.000000");
    host.reset();

    fs::remove_all(PluginFolder());
    fs::create_directories(DataFolder() / "GroundServices");
    AddTruck("TugA");
    WriteFile(DataFolder() / "GroundServices" / "GPU.obj", kEmptyObj8);
    layout = simhost::PluginLayout::Fat;
    Load();
    char path[512] = {};
    XPLMGetPluginInfo(kalvora, nullptr, path, nullptr, nullptr);
    EXPECT_EQ(fs::path(path), PluginFolder() / "lin_x64" / "Kalvora.xpl");
    const std::vector<std::string> log = Lines(PluginLog()); // Kalvora/Kalvora.log, beside lin_x64/
    const auto trucks = std::find(log.begin(), log.end(), "-Available trucks:");
    ASSERT_GE(log.end() - trucks, 4);
    EXPECT_EQ(std::vector<std::string>(trucks, trucks + 4),
              (std::vector<std::string>{"-Available trucks:", "TugA.obj",
                                        "-Available Ground services:", "GPU.obj"}));
    EXPECT_EQ(host->logText().find("is missing"), std::string::npos);
    Unload();
    EXPECT_EQ(PrefValue("TRUCK_SPEED"), "25.000000");
}

} // namespace
} // namespace kalvora_test
