// Loading real plug-in files: attribution inside a dlopen()ed plug-in, messages
// to it, a load that must fail, X-Plane's plug-in layouts and its start-up order.
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
    EXPECT_EQ(XPLMFindPluginByPath(pluginPath(probe).c_str()), probe);
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
}

TEST_F(Loader, AFileThatIsNoPluginOrNeedsAFunctionNoHostHasFailsLoudly) {
    std::string error;
    EXPECT_EQ(host->loadPlugin("/no/such/file.xpl", &error), -1);
    EXPECT_FALSE(error.empty());
    const std::string bogus = host->sandbox() + "bogus.xpl";
    std::ofstream(bogus) << "not an ELF file";
    EXPECT_EQ(host->loadPlugin(bogus, &error), -1);
    EXPECT_EQ(host->loadPlugin(SIMHOST_MISSING_SYMBOL_PLUGIN, &error), -1);
    EXPECT_NE(error.find("XPLMFunctionNoHostHas"), std::string::npos) << error;
    EXPECT_NE(host->logText().find("dlerror:"), std::string::npos);
    EXPECT_NE(host->logText().find("XPLMFunctionNoHostHas"), std::string::npos);
    EXPECT_EQ(XPLMCountPlugins(), 1);
}

} // namespace
