// Loading real plug-in files: attribution inside a dlopen()ed plug-in, messages
// to it, what it leaves behind at unload, a load that must fail, X-Plane's
// plug-in layouts and its start-up order.
#include "SimhostFixture.h"

#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using Loader = SimhostTest;

// A fat plug-in's folder on Linux, and the file of the layout before X-Plane 11.10.
constexpr const char* kPlatform = "lin_x64";
constexpr const char* kFat64File = "lin.xpl";

std::string pluginPath(int id) {
    char path[512] = {};
    XPLMGetPluginInfo(id, nullptr, path, nullptr, nullptr);
    return path;
}

/// A folder of plug-ins as another X-Plane's Resources/plugins holds them: the probe flat with its data
/// folder, in a fat folder, in the fat layout before X-Plane 11.10, and a folder that is no plug-in.
fs::path pluginsFolder() {
    const fs::path dist = fs::temp_directory_path() / ("simhost-plugins-" + std::to_string(::getpid()));
    fs::remove_all(dist);
    auto put = [](const fs::path& at) {
        fs::create_directories(at.parent_path());
        fs::copy_file(SIMHOST_PROBE_PLUGIN, at);
    };
    put(dist / "C-flat.xpl");
    fs::create_directories(dist / "C-flat");
    std::ofstream(dist / "C-flat" / "probe.ini") << "size=1\n";
    put(dist / "A-fat" / kPlatform / "A-fat.xpl");
    put(dist / "B-fat64" / "64" / kFat64File);
    fs::create_directories(dist / "D-no-plugin" / kPlatform);
    return dist;
}

int readInt(const char* name) {
    return XPLMGetDatai(XPLMFindDataRef(name));
}

TEST_F(Loader, APluginSeesItsOwnIdFramesAndMessages) {
    std::string error;
    const int probe = host->loadPlugin(SIMHOST_PROBE_PLUGIN, &error);
    ASSERT_GT(probe, 0) << error;
    EXPECT_EQ(XPLMFindPluginBySignature("simhost.test.probe"), probe);
    EXPECT_EQ(readInt("simhost_test/my_id"), probe); // its accessor runs as the probe
    host->runFrames(5);
    EXPECT_EQ(readInt("simhost_test/frames"), 5);

    host->sendMessage(probe, 0x01000000);
    EXPECT_EQ(readInt("simhost_test/last_message"), 0x01000000);
    EXPECT_EQ(readInt("simhost_test/last_from"), 0);
    XPLMSendMessageToPlugin(XPLM_NO_PLUGIN_ID, 105, nullptr);
    EXPECT_EQ(readInt("simhost_test/last_message"), 105);
    EXPECT_EQ(readInt("simhost_test/last_from"), me);

    host->disablePlugin(probe);
    host->runFrames(3);
    EXPECT_EQ(readInt("simhost_test/frames"), 0); // a disabled owner's datarefs read 0
    host->enablePlugin(probe);
    EXPECT_EQ(readInt("simhost_test/frames"), 5); // and its loops did not run meanwhile
}

TEST_F(Loader, UnloadReportsWhatThePluginLeftAndDropsIt) {
    const int probe = host->loadPlugin(SIMHOST_PROBE_PLUGIN);
    ASSERT_GT(probe, 0);
    host->unloadPlugin(probe);
    const auto& left = host->leftoversAtLastUnload();
    ASSERT_EQ(left.size(), 2u);
    EXPECT_EQ(left[0], "dataref simhost_test/last_from");
    EXPECT_EQ(left[1].rfind("flight loop ", 0), 0u);
    EXPECT_EQ(readInt("simhost_test/last_from"), 0);
    EXPECT_NE(XPLMFindDataRef("simhost_test/last_from"), nullptr); // an orphan, still found
    host->runFrames(2);                                            // its loop is gone with its code

    // Loaded again, it adopts its orphaned datarefs.
    const int again = host->loadPlugin(SIMHOST_PROBE_PLUGIN);
    ASSERT_GT(again, probe);
    host->runFrames(1);
    EXPECT_EQ(readInt("simhost_test/my_id"), again);
}

TEST_F(Loader, StartUpStartsEveryLayoutInNameOrderThenEnablesAllThenLoadsTheWorld) {
    const fs::path dist = pluginsFolder();
    EXPECT_EQ(host->installPluginsFolder(dist.string()), 3);
    fs::remove_all(dist);
    std::string errors;
    const std::vector<int> ids = host->startInstalledPlugins(&errors);
    EXPECT_EQ(errors, "");
    const fs::path plugins = fs::path(host->sandbox()) / "Resources" / "plugins";
    const std::string names[] = {"A-fat", "B-fat64", "C-flat"};
    const fs::path files[] = {plugins / "A-fat" / kPlatform / "A-fat.xpl",
                              plugins / "B-fat64" / "64" / kFat64File, plugins / "C-flat.xpl"};
    ASSERT_EQ(ids.size(), 3u);
    for (size_t i = 0; i < ids.size(); ++i) {
        EXPECT_EQ(pluginPath(ids[i]), files[i].string());
        // Each found the X-Plane folder as its working directory and the copies started before it; each
        // was enabled once all three had started; then came the user's aircraft, the airport, the scenery.
        EXPECT_EQ(host->getString("simhost_test/" + names[i] + "/events"),
                  "start cwd=1 started=" + std::to_string(i + 1) +
                      "|enable started=3|msg102:0|msg103:0|msg104:0");
    }
    EXPECT_TRUE(fs::exists(plugins / "C-flat" / "probe.ini"));
    EXPECT_TRUE(host->startInstalledPlugins().empty()); // nothing left to load

    const std::string sandbox = host->sandbox();
    host.reset();
    std::error_code ec;
    EXPECT_NE(fs::current_path(ec), fs::path(sandbox)); // back where it was, not in the removed sandbox
    EXPECT_FALSE(ec);
}

TEST_F(Loader, LoadPluginInstallsInTheLayoutAskedAndTakesRelativePathsFromWhereTheHostWasMade) {
    const fs::path dist = pluginsFolder();
    host.reset();
    const fs::path launch = fs::current_path();
    fs::current_path(dist);
    start(simhost::HostOptions{});
    const fs::path plugins = fs::path(host->sandbox()) / "Resources" / "plugins";
    struct {
        simhost::PluginLayout layout;
        fs::path installed;
    } const cases[] = {
        {simhost::PluginLayout::Flat, plugins / "C-flat.xpl"},
        {simhost::PluginLayout::Fat, plugins / "C-flat-2" / kPlatform / "C-flat.xpl"},
        {simhost::PluginLayout::Fat64, plugins / "C-flat-3" / "64" / kFat64File},
    };
    for (const auto& c : cases) {
        std::string error;
        const int id = host->loadPlugin("C-flat.xpl", "", c.layout, &error);
        ASSERT_GT(id, 0) << error;
        EXPECT_EQ(pluginPath(id), c.installed.string());
        const fs::path data = c.layout == simhost::PluginLayout::Flat
                                  ? plugins / "C-flat"
                                  : c.installed.parent_path().parent_path();
        EXPECT_TRUE(fs::exists(data / "probe.ini")) << data;
    }
    // A plug-in folder goes in whole; one without a plug-in for this system is refused.
    EXPECT_EQ(pluginPath(host->loadPlugin("A-fat")), (plugins / "A-fat" / kPlatform / "A-fat.xpl").string());
    std::string error;
    EXPECT_EQ(host->loadPlugin("D-no-plugin", &error), -1);
    EXPECT_NE(error.find(kPlatform), std::string::npos) << error;

    host.reset();
    fs::current_path(launch);
    fs::remove_all(dist);
}

TEST_F(Loader, AMissingApiFunctionFailsTheLoadLoudly) {
    std::string error;
    EXPECT_EQ(host->loadPlugin(SIMHOST_MISSING_SYMBOL_PLUGIN, &error), -1);
    EXPECT_NE(error.find("XPLMFunctionNoHostHas"), std::string::npos) << error;
    const std::string log = host->logText();
    EXPECT_NE(log.find("dlerror:"), std::string::npos);
    EXPECT_NE(log.find("XPLMFunctionNoHostHas"), std::string::npos);
    EXPECT_EQ(XPLMCountPlugins(), 1);
}

} // namespace
