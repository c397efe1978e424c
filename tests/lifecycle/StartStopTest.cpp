// Start, enable, disable and stop of the real plug-in: its log, its files, the
// host's log, what it registers and what it leaves behind.
#include "LoadedPlugin.h"

#include "XPLMPlugin.h"

#include <algorithm>

namespace kalvora_test {
namespace {

using StartStopTest = LoadedPluginTest;

/// Index of the first line at or after from that equals text, or -1.
int Find(const std::vector<std::string>& lines, const std::string& text, int from = 0) {
    for (int i = from; i < static_cast<int>(lines.size()); ++i)
        if (lines[i] == text) return i;
    return -1;
}

bool Contains(const std::vector<std::string>& list, const std::string& text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

TEST_F(StartStopTest, StartAndEnableWriteTheLogInOrder) {
    AddTruck("TugB");
    AddTruck("TugA");
    std::ofstream(root / "dist" / "Kalvora" / "GroundServices" / "GPU.obj") << kEmptyObj8;
    std::ofstream(root / "dist" / "Kalvora" / "notes.txt") << "not a model";
    Load();

    const std::vector<std::string> log = Lines(PluginLog());
    ASSERT_FALSE(log.empty());
    EXPECT_EQ(log[0], "--- Starting Kalvora ---");
    EXPECT_EQ(log[1], "-Running on XPlane v12100");
    const int config = Find(log, "-Plugin configuration:");
    const int trucks = Find(log, "-Available trucks:", config);
    const int services = Find(log, "-Available Ground services:", trucks);
    const int enabling = Find(log, "--- Enabling Kalvora plugin ---", services);
    ASSERT_GE(config, 2);
    ASSERT_GT(trucks, config);
    ASSERT_GT(services, trucks);
    ASSERT_GT(enabling, services);
    // Trucks sorted by name, the text file left out; ground services from their own folder.
    EXPECT_EQ(std::vector<std::string>(log.begin() + trucks + 1, log.begin() + services),
              (std::vector<std::string>{"TugA.obj", "TugB.obj"}));
    EXPECT_EQ(log[services + 1], "GPU.obj");
    // The preferred truck is not among them: the default one is tried, and the truck loader says so here.
    ASSERT_GT(log.size(), static_cast<size_t>(enabling + 1));
    EXPECT_EQ(log[enabling + 1], "[WRNG] Failed to load object " + (PluginFolder() / "KLVdefault").string() +
                                     " (path: " + PluginFolder().string() + "/)");
    // No preferences file yet: the container is empty and the file is written only at stop.
    EXPECT_FALSE(fs::exists(PrefsPath()));

    const std::string hostLog = host->logText();
    EXPECT_NE(hostLog.find("Kalvora: started"), std::string::npos);
    EXPECT_NE(hostLog.find("Kalvora: enabled"), std::string::npos);
    EXPECT_TRUE(host->pluginEnabled(id));
}

TEST_F(StartStopTest, TheLogIsTruncatedAtEveryStart) {
    Load();
    Unload();
    const std::string first = PluginLog();
    ASSERT_NE(first.find("--- Stopping Kalvora plugin ---"), std::string::npos);
    Load();
    const std::string second = PluginLog();
    EXPECT_EQ(second.find("--- Stopping Kalvora plugin ---"), std::string::npos);
    EXPECT_EQ(second.rfind("--- Starting Kalvora ---", 0), 0u);
}

TEST_F(StartStopTest, RegistersEverythingWhileEnabledAndTheHotKeyOnlyWhileEnabled) {
    Load();
    const std::vector<std::string> regs = host->registrations(id);
    for (const char* name :
         {"halvern/kalvora/PBstatus", "halvern/kalvora/GPUstatus", "halvern/kalvora/truck/position_ogl_x",
          "halvern/kalvora/truck/position_ogl_y", "halvern/kalvora/truck/position_ogl_z",
          "halvern/kalvora/truck/position_hdg", "halvern/kalvora/GPU/position_ogl_x",
          "halvern/kalvora/GPU/position_ogl_y", "halvern/kalvora/GPU/position_ogl_z"})
        EXPECT_TRUE(Contains(regs, std::string("dataref ") + name)) << name;
    EXPECT_EQ(std::count(regs.begin(), regs.end(), "draw callback phase 25 after"), 2);
    EXPECT_GE(std::count_if(regs.begin(), regs.end(),
                            [](const std::string& r) { return r.rfind("flight loop ", 0) == 0; }),
              3); // the three of start, and those the GPU and the object instances add
    EXPECT_TRUE(Contains(regs, "hot key Toggle truckview"));

    host->disablePlugin(id);
    EXPECT_FALSE(Contains(host->registrations(id), "hot key Toggle truckview"));
    EXPECT_NE(PluginLog().find("--- Disabling Kalvora plugin ---"), std::string::npos);
    ASSERT_TRUE(host->enablePlugin(id));
    EXPECT_TRUE(Contains(host->registrations(id), "hot key Toggle truckview"));
}

TEST_F(StartStopTest, AfterStopOnlyFlightLoopsAndMenusAreLeftToTheHost) {
    Load();
    // Open at stop: preferences awaiting a key, the free-move panel, About, the crew's message on the
    // GPU and the warning that refuses a push beside it.
    for (const char* item :
         {"Preferences...", "Tools/Free move panel", "About...", "GPU", "Push straight back"})
        ASSERT_TRUE(host->pickMenu(std::string(kMenu) + "/" + item)) << item;
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
              3); // the three of start, and those the GPU and the object instances add

    const std::vector<std::string> log = Lines(PluginLog());
    ASSERT_GE(log.size(), 2u);
    EXPECT_EQ(log[log.size() - 2], "--- Disabling Kalvora plugin ---");
    EXPECT_EQ(log.back(), "--- Stopping Kalvora plugin ---");
    EXPECT_NE(host->logText().find("Kalvora: stopped"), std::string::npos);
    // The defaults reach the file at stop.
    EXPECT_EQ(PrefValue("Truck"), "KLVdefault");
    EXPECT_EQ(PrefValue("TruckView_KEY"), "123");
}

TEST_F(StartStopTest, EveryEnableAppendsGPUToTheGroundServicePath) {
    Load();
    host->disablePlugin(id);
    ASSERT_TRUE(host->enablePlugin(id));
    const std::string log = PluginLog();
    const std::string once = "[WRNG] Failed to load GPU object or textures " +
                             (PluginFolder() / "GroundServices" / "GPU").string();
    const size_t first = log.find(once + "\n");
    ASSERT_NE(first, std::string::npos) << log;
    EXPECT_NE(log.find(once + "GPU\n", first), std::string::npos) << log;
}

TEST_F(StartStopTest, PreferencesReachTheFileOnlyAtStopAsTheyStoodAtDisable) {
    WritePreferences("VERSION=1.2.2b3\nTRUCK_SPEED=25\nTruck=KLVdefault\n");
    Load();
    EXPECT_EQ(PrefValue("TRUCK_SPEED"), "25");
    host->disablePlugin(id);
    WritePreferences("TRUCK_SPEED=99\n"); // edited on disk behind the plug-in's back
    Unload();
    // The container read at start wins; what was stored at disable is saved at stop.
    EXPECT_EQ(PrefValue("TRUCK_SPEED"), "25.000000");
    EXPECT_EQ(PrefValue("VERSION"), "1.2.2b3");
}

TEST_F(StartStopTest, AMissingDataRefGivesTheKalvoraDialogAndTheLogLineAndTheRestWorks) {
    host = std::make_unique<simhost::Host>(options);
    host->removeDataRef("sim/flightmodel/position/local_x");
    Load();
    EXPECT_TRUE(host->pluginEnabled(id));
    EXPECT_NE(PluginLog().find("Data refs initialisation problems\n"), std::string::npos);
    const std::vector<std::string> dialog = DialogTexts("Kalvora");
    ASSERT_FALSE(dialog.empty()) << simhost::widgetTree();
    EXPECT_TRUE(Contains(dialog, "OK"));
    // Menus and published datarefs are there all the same.
    EXPECT_EQ(host->menuCheck(std::string(kMenu) + "/GPU"), 1);
    EXPECT_TRUE(host->exists(kStatus));
}

TEST_F(StartStopTest, WithoutItsDataFolderThePluginLoadsAndTheHostLogSaysSo) {
    fs::remove_all(DataFolder());
    WritePreferences("TRUCK_SPEED=25\n");
    Load();
    EXPECT_TRUE(host->pluginEnabled(id));
    const std::string hostLog = host->logText();
    EXPECT_NE(hostLog.find("Kalvora: its data folder " + PluginFolder().string() + "/ is missing"),
              std::string::npos)
        << hostLog;
    EXPECT_NE(hostLog.find("Kalvora: cannot write its log"), std::string::npos) << hostLog;
    Unload();
    EXPECT_EQ(PrefValue("TRUCK_SPEED"), "25.000000"); // the user's preferences are kept all the same
}

TEST_F(StartStopTest, InTheFatLayoutItFindsItsDataAndKeepsItsLogAndPreferencesWhereTheFlatOneDoes) {
    AddTruck("TugA");
    std::ofstream(DataFolder() / "GroundServices" / "GPU.obj") << kEmptyObj8;
    WritePreferences("TRUCK_SPEED=25\n");
    layout = simhost::PluginLayout::Fat; // Resources/plugins/Kalvora/lin_x64/Kalvora.xpl
    Load();
    char path[512] = {};
    XPLMGetPluginInfo(id, nullptr, path, nullptr, nullptr);
    EXPECT_EQ(fs::path(path), PluginFolder() / "lin_x64" / "Kalvora.xpl");

    const std::vector<std::string> log = Lines(PluginLog()); // Kalvora/Kalvora.log, beside lin_x64/
    const int trucks = Find(log, "-Available trucks:");
    const int services = Find(log, "-Available Ground services:", trucks);
    ASSERT_GE(trucks, 0);
    ASSERT_EQ(services, trucks + 2);
    EXPECT_EQ(log[trucks + 1], "TugA.obj");
    EXPECT_EQ(log[services + 1], "GPU.obj");
    EXPECT_EQ(host->logText().find("is missing"), std::string::npos);
    Unload();
    EXPECT_EQ(PrefValue("TRUCK_SPEED"), "25.000000");
    // Nothing of the plug-in's own lands in the platform folder.
    std::vector<std::string> platformFolder;
    for (const auto& entry : fs::directory_iterator(PluginFolder() / "lin_x64"))
        platformFolder.push_back(entry.path().filename().string());
    EXPECT_EQ(platformFolder, std::vector<std::string>{"Kalvora.xpl"});
}

TEST_F(StartStopTest, BeforeVersion7ThePreferencesLiveInThePluginFolder) {
    options.xplaneVersion = 650;
    Load();
    EXPECT_NE(PluginLog().find("-Running on XPlane v650\n"), std::string::npos);
    Unload();
    EXPECT_TRUE(fs::exists(PluginFolder() / "Halvern.Kalvora.prf"));
    EXPECT_FALSE(fs::exists(PrefsPath()));
}

TEST_F(StartStopTest, GarbledPreferencesStillGiveAWorkingPluginAndAreRepairedOnDisk) {
    const std::string note = "# " + std::string(300, '-'); // longer than a property line may be
    WritePreferences(note + "\nTruckView_KEY=99999999999\nTruckView_KF=8\nTRUCK_SPEED=fast\nTruck=\n"
                            "HANDLE_GPU=yes\n=\nno equals sign\n");
    Load();
    EXPECT_TRUE(host->pluginEnabled(id));
    const std::vector<std::string> regs = host->registrations(id);
    EXPECT_TRUE(Contains(regs, "hot key Toggle truckview"));
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

TEST_F(StartStopTest, DisableLeavesAPushInProgressToGoOnAfterEnable) {
    Load();
    StartPush("Push straight back");
    host->disablePlugin(id);
    const double frozen = Moved();
    host->runFor(2);
    EXPECT_NEAR(Moved(), frozen, 1e-6) << "a disabled plug-in gets no flight loops";
    ASSERT_TRUE(host->enablePlugin(id));
    EXPECT_TRUE(host->runUntil([&] { return Said("cleared to taxi"); }, 120));
    EXPECT_GT(Moved(), frozen);
}

} // namespace
} // namespace kalvora_test
