// Plug-ins: what disappears when a plug-in unloads, and API misuse reported to
// the caller.
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
