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

TEST_F(HostUtils, MenuCreatedByAnotherPluginIsJoinedWithoutPublishingIt) {
    const int probe = LoadProbe();
    XPLMAppendMenuItem(HV_GNLUtils::GetHVMenuID(), "Mine", nullptr, 0);
    EXPECT_EQ(TopMenusNamed("HV__Team"), 1) << host.menuTree();
    EXPECT_EQ(host.menuItems("HV__Team"), (std::vector<std::string>{"Probe item", "Mine"}));
    for (const std::string& registration : host.registrations(me))
        EXPECT_EQ(registration.find("HalvernTeam"), std::string::npos) << registration;
    host.unloadPlugin(probe);
}

TEST_F(HostUtils, SharedMenuIsPublishedOnceAndReleaseWithdrawsItAndItsDataRef) {
    XPLMMenuID menu = HV_GNLUtils::GetHVMenuID();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(HV_GNLUtils::GetHVMenuID(), menu);
    EXPECT_EQ(host.geti("HalvernTeam/Common/Menu"), static_cast<int>(reinterpret_cast<intptr_t>(menu)));
    HV_GNLUtils::StartModifierSniffer();
    EXPECT_FALSE(host.registrations(me).empty());
    HV_GNLUtils::ReleaseHostBindings();
    EXPECT_FALSE(XPLMIsDataRefGood(XPLMFindDataRef("HalvernTeam/Common/Menu")));
    EXPECT_EQ(TopMenusNamed("HV__Team"), 0) << host.menuTree();
    EXPECT_TRUE(host.registrations(me).empty()) << ::testing::PrintToString(host.registrations(me));
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
}

TEST_F(HostUtils, LogGoesToTheDebugOutputWithLevelTags) {
    HV_LOGUtils::SetPlugInName("Pushy");
    ::testing::internal::CaptureStdout();
    HV_LOGUtils::Add2Log("Gear up", HV_LOGUtils::kHV_LOG_WARNING);
    HV_LOGUtils::Add2Log("hidden", HV_LOGUtils::kHV_LOG_TRACE);
    HV_LOGUtils::Add2Log("end", HV_LOGUtils::kHV_LOG_FATAL);
    const std::string printed = ::testing::internal::GetCapturedStdout();
    const std::string expected = "[Pushy]-[WARNG] Gear up\n[Pushy]-[FATAL] end\n";
    EXPECT_NE(host.logText().find(expected), std::string::npos) << host.logText();
    EXPECT_EQ(host.logText().find("hidden"), std::string::npos);
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
}

TEST_F(HostUtils, MagneticDerivationComesFromTheHeadingDataRefs) {
    host.set("sim/flightmodel/position/psi", 100.0);
    host.set("sim/flightmodel/position/magpsi", 97.3);
    EXPECT_NEAR(HV_MathUtils::UTIL_HeadingGetMagneticDerivation(), -2.7f, 1e-4);
    EXPECT_NEAR(HV_MathUtils::UTIL_HeadingGetMagneticFromTrue(100), 102.7f, 1e-4);
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
    host.pressKey('C', 0, 'c');
    EXPECT_EQ(HV_GNLUtils::XPLMGetCurrentKeyModifiers(), 0);
    HV_GNLUtils::StopModifierSniffer();
    host.pressKey('D', xplm_ShiftFlag, 'd');
    EXPECT_EQ(HV_GNLUtils::XPLMGetCurrentKeyModifiers(), 0);
}
