// Plug-ins: loading the built Kalvora.xpl, IDs and info, messages (one, all,
// sim messages) and what disappears when a plug-in unloads.
#include "SimhostFixture.h"

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMMenus.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace {

using Plugins = SimhostTest;

struct Received {
    int from, msg;
    void* param;
};

TEST_F(Plugins, LoadsTheBuiltPluginAndReadsItsNameAndSignature) {
    const std::string xpl = KALVORA_BINARY_DIR "/plugin/Kalvora.xpl";
    if (!std::filesystem::exists(xpl)) GTEST_SKIP() << "Kalvora.xpl is not built at " << xpl;
    std::string error;
    const int id = host->loadPlugin(xpl, &error);
    ASSERT_GT(id, 0) << error;
    EXPECT_TRUE(host->pluginEnabled(id));
    char name[256], path[256], sig[256], desc[256];
    XPLMGetPluginInfo(id, name, path, sig, desc);
    EXPECT_STREQ(name, "Kalvora");
    EXPECT_GT(std::strlen(sig), 0u);
    EXPECT_EQ(XPLMFindPluginBySignature(sig), id);
    // The file path is the installed copy inside the sandbox.
    EXPECT_EQ(std::string(path), host->sandbox() + "Resources/plugins/Kalvora.xpl");
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(XPLMFindPluginByPath(path), id);
    host->unloadPlugin(id);
    EXPECT_FALSE(host->pluginEnabled(id));
    EXPECT_EQ(XPLMFindPluginBySignature(sig), XPLM_NO_PLUGIN_ID);
}

TEST_F(Plugins, TheDataFolderIsInstalledBesideThePlugin) {
    const std::string xpl = KALVORA_BINARY_DIR "/plugin/Kalvora.xpl";
    if (!std::filesystem::exists(xpl)) GTEST_SKIP() << "Kalvora.xpl is not built at " << xpl;
    const std::string data = ::testing::TempDir() + "simhost-data/Kalvora";
    std::filesystem::create_directories(data + "/Bitmaps");
    std::ofstream(data + "/Bitmaps/marker.txt") << "installed";
    std::string error;
    EXPECT_EQ(host->loadPlugin(xpl, data + "-missing", &error), -1);
    ASSERT_GT(host->loadPlugin(xpl, data, &error), 0) << error;
    EXPECT_TRUE(std::filesystem::exists(host->sandbox() + "Resources/plugins/Kalvora/Bitmaps/marker.txt"));
    char path[256];
    XPLMGetPluginInfo(XPLMGetNthPlugin(1), nullptr, path, nullptr, nullptr);
    EXPECT_EQ(std::string(path),
              host->sandbox() + "Resources/plugins/Kalvora.xpl"); // the failed load left nothing
    std::filesystem::remove_all(::testing::TempDir() + "simhost-data");
}

TEST_F(Plugins, AFileThatIsNotAPluginFailsLoudly) {
    std::string error;
    EXPECT_EQ(host->loadPlugin("/no/such/file.xpl", &error), -1);
    EXPECT_FALSE(error.empty());
    const std::string bogus = host->sandbox() + "bogus.xpl";
    std::ofstream(bogus) << "not an ELF file";
    EXPECT_EQ(host->loadPlugin(bogus, &error), -1);
    EXPECT_NE(host->logText().find("dlerror:"), std::string::npos);
}

TEST_F(Plugins, IdsCountFromOneAndInfoIsBounded) {
    EXPECT_EQ(me, 1);
    const int other = addOther("test.b");
    EXPECT_EQ(other, 2);
    EXPECT_EQ(XPLMCountPlugins(), 2);
    EXPECT_EQ(XPLMGetNthPlugin(1), other);
    EXPECT_EQ(XPLMGetNthPlugin(2), XPLM_NO_PLUGIN_ID);
    EXPECT_EQ(XPLMGetMyID(), me);
    char name[256];
    XPLMGetPluginInfo(other, name, nullptr, nullptr, nullptr); // NULL buffers are allowed
    EXPECT_STREQ(name, "test.b");
    XPLMGetPluginInfo(0, name, nullptr, nullptr, nullptr);
    EXPECT_STREQ(name, "X-Plane");

    simhost::InProcessPlugin refusing;
    refusing.name = "refuses";
    refusing.start = [] { return 0; };
    EXPECT_EQ(host->addPlugin(refusing), -1);
}

TEST_F(Plugins, MessagesGoToOneOrEveryEnabledPlugin) {
    std::vector<Received> a, b, c;
    const int ia = addOther("test.a", [&](int f, int m, void* p) { a.push_back({f, m, p}); });
    const int ib = addOther("test.b", [&](int f, int m, void* p) { b.push_back({f, m, p}); });
    const int ic = addOther("test.c", [&](int f, int m, void* p) { c.push_back({f, m, p}); });
    host->disablePlugin(ic);
    host->setDirectCaller(ia);
    int payload = 0;
    XPLMSendMessageToPlugin(ib, 0x88888880, &payload);
    ASSERT_EQ(b.size(), 1u);
    EXPECT_EQ(b[0].from, ia);
    EXPECT_EQ(b[0].msg, static_cast<int>(0x88888880));
    EXPECT_EQ(b[0].param, &payload);
    EXPECT_TRUE(a.empty());

    XPLMSendMessageToPlugin(XPLM_NO_PLUGIN_ID, 0x01000000, nullptr);
    EXPECT_EQ(a.size(), 1u); // the sender hears its own broadcast
    EXPECT_EQ(b.size(), 2u);
    EXPECT_TRUE(c.empty()); // disabled

    host->loadAircraft("B738");
    host->loadAirport();
    host->loadScenery();
    ASSERT_EQ(b.size(), 5u);
    EXPECT_EQ(b[2].from, 0);
    EXPECT_EQ(b[2].msg, 102);
    EXPECT_EQ(b[2].param, nullptr); // the user's aircraft, index 0
    EXPECT_EQ(b[3].msg, 103);
    EXPECT_EQ(b[4].msg, 104);
    EXPECT_EQ(host->aircraft().type, "B738");
}

// Registrations made by a plug-in, dropped on unload.
float idle(float, float, int, void*) {
    return -1;
}
int drawNothing(XPLMDrawingPhase, int, void*) {
    return 1;
}
int sniff(char, XPLMKeyFlags, char, void*) {
    return 1;
}
void hot(void*) {}
int readZero(void*) {
    return 3;
}
int handler(XPLMCommandRef, XPLMCommandPhase, void*) {
    return 1;
}

TEST_F(Plugins, UnloadDropsEverythingAndReportsLeftovers) {
    const int other = addOther("test.leaky");
    host->setDirectCaller(other);
    XPLMRegisterFlightLoopCallback(idle, -1, nullptr);
    XPLMRegisterDrawCallback(drawNothing, xplm_Phase_Window, 0, nullptr);
    XPLMRegisterKeySniffer(sniff, 1, nullptr);
    XPLMRegisterHotKey(XPLM_VK_F8, xplm_DownFlag, "leaky key", hot, nullptr);
    XPLMCreateWindow(0, 100, 100, 0, 1, nullptr, nullptr, nullptr, nullptr);
    XPLMDataRef r = XPLMRegisterDataAccessor("test/leaky", xplmType_Int, 0, readZero, nullptr, nullptr,
                                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                             nullptr, nullptr, nullptr, nullptr);
    int item = XPLMAppendMenuItem(XPLMFindPluginsMenu(), "Leaky", nullptr, 0);
    XPLMCreateMenu("Leaky", XPLMFindPluginsMenu(), item, nullptr, nullptr);
    XPLMRegisterCommandHandler(XPLMFindCommand("sim/view/chase"), handler, 1, nullptr);
    host->setDirectCaller(me);

    const auto regs = host->registrations(other);
    EXPECT_EQ(regs.size(), 9u);
    host->unloadPlugin(other);
    EXPECT_EQ(host->leftoversAtLastUnload(), regs);
    EXPECT_TRUE(host->registrations(other).empty());
    EXPECT_TRUE(host->windows().empty());
    EXPECT_TRUE(host->menuItems("Plugins").empty());
    EXPECT_EQ(XPLMCountHotKeys(), 0);
    EXPECT_EQ(XPLMGetDatai(r), 0);
    EXPECT_NE(host->logText().find("left registered at unload: hot key leaky key"), std::string::npos);
    host->runFrames(2); // nothing of it runs any more
}

TEST_F(Plugins, SandboxHasTheXPlaneLayoutAndPaths) {
    char sys[512], prefs[512];
    XPLMGetSystemPath(sys);
    XPLMGetPrefsPath(prefs);
    EXPECT_EQ(std::string(sys), host->sandbox());
    EXPECT_EQ(std::string(sys).back(), '/');
    EXPECT_EQ(std::string(prefs).rfind(host->sandbox() + "Output/preferences/", 0), 0u);
    EXPECT_STREQ(XPLMGetDirectorySeparator(), "/");
    namespace fs = std::filesystem;
    EXPECT_TRUE(fs::is_directory(host->sandbox() + "Resources/plugins"));
    char file[256], path[512];
    XPLMGetNthAircraftModel(0, file, path);
    EXPECT_STREQ(file, "A320.acf");
    EXPECT_TRUE(fs::exists(path));

    XPLMDebugString("hello from the test\n");
    EXPECT_NE(host->logText().find("hello from the test\n"), std::string::npos);
    XPLMSpeakString("Ground to cockpit");
    EXPECT_EQ(host->transcriptTexts("speech"), (std::vector<std::string>{"Ground to cockpit"}));

    int xp = 0, xplm = 0, hostId = 0;
    XPLMGetVersions(&xp, &xplm, &hostId);
    EXPECT_EQ(xp, 12100);
    EXPECT_EQ(xplm, 410);
    EXPECT_EQ(hostId, 1);
}

TEST_F(Plugins, TempSandboxIsRemovedWithTheHost) {
    const std::string dir = host->sandbox();
    ASSERT_TRUE(std::filesystem::exists(dir));
    host.reset();
    EXPECT_FALSE(std::filesystem::exists(dir));
}

std::vector<std::string> gErrors;
void onError(const char* message) {
    gErrors.push_back(message);
}

TEST_F(Plugins, NewDataRefsAreAnnouncedOncePerFrameToThoseWhoAsked) {
    std::vector<int> counts;
    const int listener = addOther("test.listener", [&](int, int msg, void* param) {
        if (msg == 114) counts.push_back(*static_cast<int*>(param));
    });
    host->setDirectCaller(listener);
    XPLMEnableFeature("XPLM_WANTS_DATAREF_NOTIFICATIONS", 1);
    EXPECT_TRUE(XPLMIsFeatureEnabled("XPLM_WANTS_DATAREF_NOTIFICATIONS"));
    host->setDirectCaller(me);
    const int before = XPLMCountDataRefs();
    ASSERT_NE(XPLMFindDataRef("sim/graphics/VR/enabled"), nullptr); // X-Plane's own: not new
    XPLMRegisterDataAccessor("test/a", xplmType_Int, 0, readZero, nullptr, nullptr, nullptr, nullptr, nullptr,
                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    XPLMRegisterDataAccessor("test/b", xplmType_Int, 0, readZero, nullptr, nullptr, nullptr, nullptr, nullptr,
                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    host->runFrames(3);
    EXPECT_EQ(counts, (std::vector<int>{before + 2}));
}

TEST_F(Plugins, ApiMisuseReachesTheCallersErrorCallback) {
    gErrors.clear();
    XPLMSetErrorCallback(onError);
    XPLMCreateFlightLoop(nullptr);
    ASSERT_EQ(gErrors.size(), 1u);
    EXPECT_NE(gErrors[0].find("XPLMCreateFlightLoop"), std::string::npos);
    host->setDirectCaller(addOther("test.quiet")); // has no error callback
    XPLMCreateFlightLoop(nullptr);
    EXPECT_EQ(gErrors.size(), 1u);
    EXPECT_NE(host->logText().find("API error: XPLMCreateFlightLoop"), std::string::npos);
}

TEST_F(Plugins, SpeechCanBeSpokenIntoWavFiles) {
    if (access("/usr/bin/espeak-ng", X_OK) != 0) GTEST_SKIP() << "espeak-ng is not installed";
    const std::string dir = ::testing::TempDir() + "simhost-speech";
    std::filesystem::create_directories(dir);
    simhost::HostOptions o;
    o.speechWavDir = dir;
    start(o);
    XPLMSpeakString("Brakes released, starting push back");
    const std::string wav = dir + "/speech-001.wav";
    ASSERT_TRUE(std::filesystem::exists(wav));
    std::ifstream f(wav, std::ios::binary);
    char riff[4] = {};
    f.read(riff, 4);
    EXPECT_EQ(std::string(riff, 4), "RIFF");
    EXPECT_GT(std::filesystem::file_size(wav), 1000u); // more than a header
    std::filesystem::remove_all(dir);
}

TEST_F(Plugins, FindSymbolFindsOnlyTheApi) {
    EXPECT_EQ(XPLMFindSymbol("XPLMFindDataRef"), reinterpret_cast<void*>(&XPLMFindDataRef));
    EXPECT_EQ(XPLMFindSymbol("XPLMNoSuchFunction"), nullptr);
    EXPECT_EQ(XPLMFindSymbol("malloc"), nullptr);
}

} // namespace
