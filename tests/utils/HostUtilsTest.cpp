// The utilities that call the simulator, run against simhost.
#include "utils/FileUtils.h"
#include "utils/GNLUtils.h"
#include "utils/HV_LOGUtils.h"
#include "utils/MathUtils.h"

#include "support/TempFolder.h"

#include <simhost/Simhost.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

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

    /// Loads the probe plug-in; its paths come back through the log.
    void LoadProbe() {
        std::string error;
        const int id = host.loadPlugin(KALVORA_UTILS_PROBE_PLUGIN, &error);
        EXPECT_GE(id, 0) << error;
        host.setDirectCaller(me);
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

TEST_F(HostUtils, ClockStartsAtZeroAndFollowsTheHostsElapsedTime) {
    host.runFor(1.5);
    const double start = host.wallTime();
    EXPECT_EQ(GetTimePrecise(), 0.0);
    host.runFor(2.0);
    EXPECT_NEAR(GetTimePrecise(), host.wallTime() - start, 1e-3);
    EXPECT_GT(GetTimePrecise(), 1.9);
}
