// Plug-ins: IDs and info, messages to one or all, what disappears
// when a plug-in unloads, the sandbox's paths and the services every plug-in uses.
#include "SimhostFixture.h"

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMMenus.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"

#include <filesystem>

namespace {

using Plugins = SimhostTest;

struct Received {
    int from, msg;
    void* param;
};

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
    // XPLMFindSymbol finds the API and nothing else.
    EXPECT_EQ(XPLMFindSymbol("XPLMFindDataRef"), reinterpret_cast<void*>(&XPLMFindDataRef));
    EXPECT_EQ(XPLMFindSymbol("XPLMNoSuchFunction"), nullptr);
    EXPECT_EQ(XPLMFindSymbol("malloc"), nullptr);
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
    EXPECT_EQ(std::string(sys), host->sandbox()); // ends with "/"
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
    EXPECT_EQ(std::vector<int>({xp, xplm, hostId}), std::vector<int>({12100, 410, xplm_Host_XPlane}));
}

std::vector<std::string> gErrors;
void onError(const char* message) {
    gErrors.push_back(message);
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

} // namespace
