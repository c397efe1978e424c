// The utilities that call the simulator, run against simhost.
#include "utils/FileUtils.h"
#include "utils/GNLUtils.h"
#include "utils/HV_LOGUtils.h"
#include "utils/MathUtils.h"

#include "support/TempFolder.h"

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMMenus.h"

#include <simhost/Simhost.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

using kalvora_test::ReadFile;
using kalvora_test::TempFolder;

namespace {

/// A fresh host with one in-process plug-in ("Tester") that the test's direct calls belong to.
class HostUtils : public ::testing::Test {
protected:
    void SetUp() override {
        simhost::InProcessPlugin tester;
        tester.name = "Tester";
        tester.signature = "halvern.test.tester";
        tester.description = "the test itself";
        me = host.addPlugin(tester);
        ASSERT_GE(me, 0);
        host.setDirectCaller(me);
    }
    void TearDown() override {
        HV_GNLUtils::ReleaseHostBindings();
        HV_LOGUtils::SetLogFilePath(nullptr, HV_LOGUtils::kHV_LOG_INFO, false);
        HV_LOGUtils::SetPlugInName("");
    }

    /// Number of top-level menus with the given name.
    int TopMenusNamed(const std::string& name) const {
        std::istringstream tree(host.menuTree());
        int count = 0;
        for (std::string line; std::getline(tree, line);)
            if (line == name) ++count;
        return count;
    }

    /// Loads the probe plug-in; its paths come back through the log.
    int LoadProbe() {
        std::string error;
        const int id = host.loadPlugin(KALVORA_UTILS_PROBE_PLUGIN, &error);
        EXPECT_GE(id, 0) << error;
        host.setDirectCaller(me);
        return id;
    }

    /// The path the probe reported for a kind.
    std::string ProbePath(int kind) const {
        const std::string key = "probe path " + std::to_string(kind) + "=";
        std::istringstream log(host.logText());
        for (std::string line; std::getline(log, line);)
            if (line.compare(0, key.size(), key) == 0) return line.substr(key.size());
        return "<missing>";
    }

    simhost::Host host;
    int me = -1;
};

} // namespace

TEST_F(HostUtils, SharedMenuIsCreatedOncePublishedAndFoundByASecondPlugin) {
    XPLMMenuID menu = HV_GNLUtils::GetHVMenuID();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(HV_GNLUtils::GetHVMenuID(), menu);
    EXPECT_EQ(host.geti("HalvernTeam/Common/Menu"), static_cast<int>(reinterpret_cast<intptr_t>(menu)));
    XPLMAppendMenuItem(menu, "Mine", nullptr, 0);
    LoadProbe();
    EXPECT_EQ(TopMenusNamed("HV__Team"), 1) << host.menuTree();
    EXPECT_EQ(host.menuItems("HV__Team"), (std::vector<std::string>{"Mine", "Probe item"}));
}

TEST_F(HostUtils, MenuCreatedByAnotherPluginIsJoinedWithoutPublishingIt) {
    const int probe = LoadProbe();
    XPLMAppendMenuItem(HV_GNLUtils::GetHVMenuID(), "Mine", nullptr, 0);
    EXPECT_EQ(TopMenusNamed("HV__Team"), 1) << host.menuTree();
    EXPECT_EQ(host.menuItems("HV__Team"), (std::vector<std::string>{"Probe item", "Mine"}));
    for (const std::string& registration : host.registrations(me))
        EXPECT_EQ(registration.find("HalvernTeam"), std::string::npos) << registration;
    EXPECT_FALSE(host.registrations(probe).empty());
    host.unloadPlugin(probe);
}

TEST_F(HostUtils, IntegerOnlyPublisherIsReadAsAnInteger) {
    // An older plug-in of the family publishes the ID as a plain int.
    simhost::InProcessPlugin older;
    older.name = "Older";
    older.signature = "halvern.test.older";
    const int olderId = host.addPlugin(older);
    ASSERT_GE(olderId, 0);
    host.setDirectCaller(olderId);
    XPLMDataRef published = XPLMRegisterDataAccessor(
        "HalvernTeam/Common/Menu", xplmType_Int, 0, [](void*) { return 0x1234; }, nullptr, nullptr, nullptr,
        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(published, nullptr);
    host.setDirectCaller(me);
    EXPECT_EQ(HV_GNLUtils::GetHVMenuID(), reinterpret_cast<XPLMMenuID>(0x1234));
    EXPECT_EQ(TopMenusNamed("HV__Team"), 0); // joined, not created
    host.setDirectCaller(olderId);
    XPLMUnregisterDataAccessor(published);
    host.setDirectCaller(me);
}

TEST_F(HostUtils, ReleaseWithdrawsTheMenuAndItsDataRef) {
    ASSERT_NE(HV_GNLUtils::GetHVMenuID(), nullptr);
    HV_GNLUtils::StartModifierSniffer();
    EXPECT_FALSE(host.registrations(me).empty());
    HV_GNLUtils::ReleaseHostBindings();
    EXPECT_FALSE(XPLMIsDataRefGood(XPLMFindDataRef("HalvernTeam/Common/Menu")));
    EXPECT_EQ(TopMenusNamed("HV__Team"), 0) << host.menuTree();
    EXPECT_TRUE(host.registrations(me).empty()) << ::testing::PrintToString(host.registrations(me));
    // A later call builds everything again.
    EXPECT_NE(HV_GNLUtils::GetHVMenuID(), nullptr);
    EXPECT_TRUE(XPLMIsDataRefGood(XPLMFindDataRef("HalvernTeam/Common/Menu")));
    EXPECT_EQ(TopMenusNamed("HV__Team"), 1) << host.menuTree();
}

TEST_F(HostUtils, PathKindsInTheSandboxShareOneBuffer) {
    LoadProbe();
    const std::string root = host.sandbox();
    const std::string expected[] = {root,
                                    root + "Resources/plugins/",
                                    root,
                                    root + "Output/preferences/",
                                    root + "Resources/Earth nav data/",
                                    root + "Custom Scenery/",
                                    root + "Aircraft/" + host.aircraft().type + "/",
                                    root + "Resources/plugins/UtilsProbe/",
                                    root + "HVFlight Plans/",
                                    root + "HV FMS Flight Plans/",
                                    root + "HV FMS Flight Plans/"}; // unknown kind: the buffer as it was
    for (int kind = 0; kind <= 10; ++kind)
        EXPECT_EQ(ProbePath(kind), expected[kind]) << kind;
    char* system = HV_FileUtils::GetPath(0);
    EXPECT_EQ(std::string(system), root);
    EXPECT_EQ(HV_FileUtils::GetPath(3), system);
    EXPECT_EQ(std::string(system), root + "Output/preferences/");
}

TEST_F(HostUtils, LogGoesToTheDebugOutputWithLevelTags) {
    HV_LOGUtils::SetPlugInName("Pushy");
    ::testing::internal::CaptureStdout();
    HV_LOGUtils::Add2Log("Gear up", HV_LOGUtils::kHV_LOG_WARNING);
    HV_LOGUtils::Add2Log("hidden", HV_LOGUtils::kHV_LOG_TRACE);
    HV_LOGUtils::Add2Log("odd level", 7);
    HV_LOGUtils::Add2Log("end", HV_LOGUtils::kHV_LOG_FATAL);
    HV_LOGUtils::Add2Log("negative", -3);
    const std::string printed = ::testing::internal::GetCapturedStdout();
    const std::string expected = "[Pushy]-[WARNG] Gear up\n[Pushy]-[INFO ] odd level\n[Pushy]-[FATAL] end\n";
    EXPECT_NE(host.logText().find(expected), std::string::npos) << host.logText();
    EXPECT_EQ(host.logText().find("hidden"), std::string::npos);
    EXPECT_EQ(host.logText().find("negative"), std::string::npos);
    EXPECT_EQ(printed, expected);
}

TEST_F(HostUtils, LogFileIsErasedThenAppendedCutToALineAndPercentSignsAreSafe) {
    TempFolder dir;
    const std::string path = dir.write("Kalvora.log", "old content\n");
    HV_LOGUtils::SetPlugInName("Pushy");
    EXPECT_EQ(HV_LOGUtils::SetLogFilePath(path.c_str(), HV_LOGUtils::kHV_LOG_TRACE, true), 0);
    EXPECT_EQ(ReadFile(path), "");
    const std::string before = host.logText();
    ::testing::internal::CaptureStdout();
    HV_LOGUtils::Add2Log("trace now shown", HV_LOGUtils::kHV_LOG_TRACE);
    HV_LOGUtils::Add2Log("value %d of %s at 50%% %n", HV_LOGUtils::kHV_LOG_INFO);
    const std::string printed = ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(ReadFile(path), "[Pushy]-[TRACE] trace now shown\n[Pushy]-[INFO ] value %d of %s at 50%% %n\n");
    EXPECT_EQ(printed, "[Pushy]-[TRACE] trace now shown\n[Pushy]-[INFO ] value %d of %s at 50% %n\n");
    EXPECT_EQ(host.logText(), before); // nothing falls back to the debug output
    EXPECT_NE(HV_LOGUtils::SetLogFilePath(dir.file("absent.log").c_str(), 1, true), 0); // nothing to erase

    // An overlong name and message are cut to one log line.
    const std::string cut = dir.file("cut.log");
    HV_LOGUtils::SetLogFilePath(cut.c_str(), HV_LOGUtils::kHV_LOG_INFO, false);
    HV_LOGUtils::SetPlugInName(std::string(100, 'N').c_str());
    ::testing::internal::CaptureStdout();
    HV_LOGUtils::Add2Log(std::string(1000, 'm').c_str(), HV_LOGUtils::kHV_LOG_ALERT);
    ::testing::internal::GetCapturedStdout();
    const std::string line = ReadFile(cut);
    ASSERT_EQ(line.size(), static_cast<size_t>(HV_LOGUtils::kLogLineBytes - 1));
    EXPECT_EQ(line.substr(0, 33), "[" + std::string(30, 'N') + "]-");
    EXPECT_EQ(line.back(), '\n');
    // An unwritable path loses the line silently.
    HV_LOGUtils::SetLogFilePath(dir.file("no/such/folder.log").c_str(), HV_LOGUtils::kHV_LOG_INFO, false);
    ::testing::internal::CaptureStdout();
    HV_LOGUtils::Add2Log("lost", HV_LOGUtils::kHV_LOG_INFO);
    ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(host.logText().find("lost"), std::string::npos);
}

TEST_F(HostUtils, MagneticDerivationComesFromTheHeadingDataRefs) {
    host.set("sim/flightmodel/position/psi", 100.0);
    host.set("sim/flightmodel/position/magpsi", 97.3);
    EXPECT_NEAR(HV_MathUtils::UTIL_HeadingGetMagneticDerivation(), -2.7f, 1e-4);
    EXPECT_NEAR(HV_MathUtils::UTIL_HeadingGetTrueFromMagnetic(100), 98.0f, 1e-4);
    EXPECT_NEAR(HV_MathUtils::UTIL_HeadingGetMagneticFromTrue(100), 102.7f, 1e-4);
    host.set("sim/flightmodel/position/magpsi", 103.0);
    EXPECT_NEAR(HV_MathUtils::UTIL_HeadingGetTrueFromMagnetic(1), 358.0f, 1e-4);
}

TEST_F(HostUtils, ClockStartsAtZeroAndFollowsTheHostsElapsedTime) {
    host.runFor(1.5);
    const double start = host.wallTime();
    EXPECT_EQ(GetTimePrecise(), 0.0);
    host.runFor(2.0);
    EXPECT_NEAR(GetTimePrecise(), host.wallTime() - start, 1e-3);
    EXPECT_GT(GetTimePrecise(), 1.9);
}

TEST_F(HostUtils, ModifiersOfTheLastKeyEvent) {
    HV_GNLUtils::StartModifierSniffer();
    host.pressKey('A', xplm_ShiftFlag | xplm_ControlFlag, 'a');
    EXPECT_EQ(HV_GNLUtils::XPLMGetCurrentKeyModifiers(), xplm_ShiftFlag | xplm_ControlFlag);
    host.pressKey('B', xplm_OptionAltFlag, 'b');
    EXPECT_EQ(HV_GNLUtils::XPLMGetCurrentKeyModifiers(), xplm_OptionAltFlag);
    host.pressKey('C', 0, 'c');
    EXPECT_EQ(HV_GNLUtils::XPLMGetCurrentKeyModifiers(), 0);
    HV_GNLUtils::StopModifierSniffer();
    host.pressKey('D', xplm_ShiftFlag, 'd');
    EXPECT_EQ(HV_GNLUtils::XPLMGetCurrentKeyModifiers(), 0);
}

TEST_F(HostUtils, WindowIsCentredOnA1024By768Screen) {
    XPLMWindowID window = XPLMCreateWindow(
        10, 700, 311, 500, 1, [](XPLMWindowID, void*) {},
        [](XPLMWindowID, char, XPLMKeyFlags, char, void*, int) {},
        [](XPLMWindowID, int, int, XPLMMouseStatus, void*) { return 0; }, nullptr); // 301 wide, 200 high
    ASSERT_NE(window, nullptr);
    HV_GNLUtils::Window_Center(window);
    int geometry[4] = {};
    XPLMGetWindowGeometry(window, &geometry[0], &geometry[1], &geometry[2], &geometry[3]);
    EXPECT_EQ(std::vector<int>(geometry, geometry + 4),
              (std::vector<int>{512 - 150, 384 + 100, 512 + 150, 384 - 100}));
    HV_GNLUtils::Window_Center(nullptr);
    XPLMDestroyWindow(window);
}
