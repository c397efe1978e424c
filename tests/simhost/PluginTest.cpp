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

namespace {

using Plugins = SimhostTest;

// Registrations of every kind, made by a plug-in and dropped when it unloads.
TEST_F(Plugins, UnloadDropsEverythingAndReportsLeftovers) {
    const int other = addOther("test.leaky");
    host->setDirectCaller(other);
    XPLMRegisterFlightLoopCallback([](float, float, int, void*) { return -1.0f; }, -1, nullptr);
    XPLMRegisterDrawCallback([](XPLMDrawingPhase, int, void*) { return 1; }, xplm_Phase_Window, 0, nullptr);
    XPLMRegisterKeySniffer([](char, XPLMKeyFlags, char, void*) { return 1; }, 1, nullptr);
    XPLMRegisterHotKey(
        XPLM_VK_F8, xplm_DownFlag, "leaky key", [](void*) {}, nullptr);
    XPLMCreateWindow(0, 100, 100, 0, 1, nullptr, nullptr, nullptr, nullptr);
    XPLMDataRef r = XPLMRegisterDataAccessor(
        "test/leaky", xplmType_Int, 0, [](void*) { return 3; }, nullptr, nullptr, nullptr, nullptr, nullptr,
        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    int item = XPLMAppendMenuItem(XPLMFindPluginsMenu(), "Leaky", nullptr, 0);
    XPLMCreateMenu("Leaky", XPLMFindPluginsMenu(), item, nullptr, nullptr);
    XPLMRegisterCommandHandler(
        XPLMFindCommand("sim/view/chase"), [](XPLMCommandRef, XPLMCommandPhase, void*) { return 1; }, 1,
        nullptr);
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
