// The push-back scenarios of kalvora-sim, run end to end with the real
// Kalvora.xpl: what the summary, the trace and the report folder say.
#include "Scenarios.h"

#include "simhost/Simhost.h"

#include <gtest/gtest.h>

#define STB_IMAGE_IMPLEMENTATION
#include <stb/stb_image.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using simhost::cli::Scenario;
using simhost::cli::ScenarioOptions;
using simhost::cli::ScenarioSummary;

constexpr double kStepM = 0.1; // push step per frame at the default truck speed, metres

/// Push length of the automated and straight manoeuvres: 3/4 of the whole-metre half length, cut.
int ExpectedPushLength(double sizeZ) {
    return static_cast<int>(0.75 * static_cast<int>(sizeZ));
}

/// End heading of a turn from a start heading (tail left +90, tail right -90, whole degrees).
double ExpectedFinalHeading(double start, bool tailLeft) {
    return static_cast<int>(start) + (tailLeft ? 90 : -90);
}

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

class ScenarioTest : public ::testing::Test {
protected:
    void SetUp() override {
        report = fs::temp_directory_path() / ("kalvora-demo-test-" + std::to_string(::getpid()));
        fs::remove_all(report);
        options.plugin = KALVORA_BINARY_DIR "/plugin/Kalvora.xpl";
        options.dataDir = KALVORA_SOURCE_DIR "/assets/Kalvora";
    }
    void TearDown() override { fs::remove_all(report); }

    ScenarioSummary Run(const std::string& name) {
        const Scenario* s = simhost::cli::findScenario(name);
        EXPECT_NE(s, nullptr) << name;
        if (!s) return {};
        std::ostringstream progress;
        ScenarioSummary summary = simhost::cli::runScenario(*s, options, progress);
        EXPECT_TRUE(summary.loaded) << summary.error;
        EXPECT_TRUE(summary.error.empty()) << summary.error;
        return summary;
    }

    fs::path report;
    ScenarioOptions options;
};

TEST_F(ScenarioTest, DemoPushesTheLengthOfTheAircraftThenTurnsTailLeft) {
    options.reportDir = report.string();
    const ScenarioSummary s = Run("demo");
    ASSERT_TRUE(s.loaded);
    EXPECT_TRUE(s.cleared);
    EXPECT_NEAR(s.startHeadingDeg, 40, 1e-3);
    EXPECT_NEAR(s.straightLegM, ExpectedPushLength(s.aircraftSizeZ), kStepM + 1e-6);
    // The turn stops once the whole-degree heading reaches the end heading.
    EXPECT_GE(s.finalHeadingDeg, ExpectedFinalHeading(40, true));
    EXPECT_LT(s.finalHeadingDeg, ExpectedFinalHeading(40, true) + 1);
    EXPECT_NEAR(s.headingChangeDeg, s.finalHeadingDeg - 40, 1e-3);
    EXPECT_GT(s.pathLengthM, s.straightLegM);
    EXPECT_EQ(static_cast<int>(s.trace.size()), s.frames);

    // The phases come in the order a pilot sees them.
    std::vector<std::string> phases;
    for (const auto& row : s.trace)
        if (phases.empty() || phases.back() != row.phase) phases.emplace_back(row.phase);
    EXPECT_EQ(phases, (std::vector<std::string>{"parked", "truck arriving", "waiting for brake", "pushing",
                                                "turning", "truck leaving", "cleared"}));

    // The truck ends up away from the nose gear it pushed.
    const auto& last = s.trace.back();
    EXPECT_GT(std::hypot(last.truckX - last.noseGearX, last.truckZ - last.noseGearZ), 10.0);

    const std::string transcript = ReadFile(report / "transcript.txt");
    EXPECT_NE(transcript.find("speech  Ok, D-AKLV we are ready to push back tail left."), std::string::npos)
        << transcript;
    EXPECT_NE(transcript.find("cleared to taxi"), std::string::npos);
    const std::string csv = ReadFile(report / "trace.csv");
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), s.frames + 1);
    const std::string svg = ReadFile(report / "top-view.svg");
    EXPECT_EQ(svg.rfind("<svg", 0), 0u);
    EXPECT_NE(svg.find("<polygon"), std::string::npos);
    EXPECT_NE(svg.find(" m</text>"), std::string::npos) << "no scale bar";
    EXPECT_TRUE(fs::exists(report / "summary.txt"));
    EXPECT_TRUE(fs::exists(report / "Kalvora.log"));
}

TEST_F(ScenarioTest, TailRightEndsNinetyDegreesLower) {
    const ScenarioSummary s = Run("tail-right");
    EXPECT_TRUE(s.cleared);
    EXPECT_GE(s.finalHeadingDeg, ExpectedFinalHeading(130, false));
    EXPECT_LT(s.finalHeadingDeg, ExpectedFinalHeading(130, false) + 1);
    EXPECT_NEAR(s.straightLegM, ExpectedPushLength(s.aircraftSizeZ), kStepM + 1e-6);
}

TEST_F(ScenarioTest, TurnLeftTurnsFromTheStandWithoutAStraightLeg) {
    const ScenarioSummary s = Run("turn-left");
    EXPECT_TRUE(s.cleared);
    EXPECT_LT(s.straightLegM, 2 * kStepM);
    EXPECT_GE(s.finalHeadingDeg, ExpectedFinalHeading(40, true));
    EXPECT_LT(s.finalHeadingDeg, ExpectedFinalHeading(40, true) + 1);
}

TEST_F(ScenarioTest, StraightKeepsTheHeadingAndAnyProfileGetsItsOwnLength) {
    for (const char* aircraft : {"A320", "B744", "C172"}) {
        options.aircraft = aircraft;
        const ScenarioSummary s = Run("straight");
        EXPECT_TRUE(s.cleared) << aircraft;
        EXPECT_NEAR(s.headingChangeDeg, 0, 1e-3) << aircraft;
        EXPECT_NEAR(s.pathLengthM, ExpectedPushLength(s.aircraftSizeZ), kStepM + 1e-6) << aircraft;
    }
}

TEST_F(ScenarioTest, StopMidwayLeavesThePushShortAndUncleared) {
    const ScenarioSummary s = Run("stop-midway");
    EXPECT_FALSE(s.cleared);
    EXPECT_GT(s.pathLengthM, 1.0);
    EXPECT_LT(s.pathLengthM, ExpectedPushLength(s.aircraftSizeZ) - 1.0);
    EXPECT_EQ(s.trace.back().phase, "stopped");
}

TEST_F(ScenarioTest, EnginesRunningAreRefusedWithTheWarningDialog) {
    const ScenarioSummary s = Run("engines-running");
    EXPECT_FALSE(s.cleared);
    EXPECT_EQ(s.pathLengthM, 0.0);
    ASSERT_FALSE(s.dialogs.empty());
    EXPECT_EQ(s.dialogs.front().rfind("Warning...", 0), 0u) << s.dialogs.front();
    EXPECT_EQ(s.trace.back().phase, "refused");
}

// Before 11.50 the plug-in draws the truck itself; from 11.50 simhost draws its object instance.
TEST_F(ScenarioTest, RenderedFramesShowTheTruckOnOlderAndModernVersions) {
    {
        simhost::HostOptions probe;
        probe.render = true;
        simhost::Host host(probe);
        if (!host.renderingAvailable()) GTEST_SKIP() << "no OpenGL rendering on this machine";
    }
    options.drawWorld = false; // the truck is then whatever is not sky
    for (const int version : {11410, 12100}) {
        SCOPED_TRACE(version);
        const fs::path dir = report / std::to_string(version);
        options.reportDir = dir.string();
        options.xplaneVersion = version;
        const ScenarioSummary s = Run("straight");
        ASSERT_TRUE(s.cleared);
        for (const char* frame : {"truck-arriving.png", "pushing.png", "truck-leaving.png"}) {
            int w = 0, h = 0, channels = 0;
            unsigned char* px = stbi_load((dir / "frames" / frame).c_str(), &w, &h, &channels, 3);
            ASSERT_NE(px, nullptr) << frame;
            // Something besides the sky in the middle half of the picture, where the camera looks at the
            // aircraft (the crew's message window sits at the top).
            bool varied = false;
            const unsigned char* sky = px + (h / 4) * w * 3;
            for (int y = h / 4; y < 3 * h / 4 && !varied; ++y)
                for (int x = 0; x < w && !varied; ++x) {
                    const unsigned char* p = px + (y * w + x) * 3;
                    varied = p[0] != sky[0] || p[1] != sky[1] || p[2] != sky[2];
                }
            stbi_image_free(px);
            EXPECT_TRUE(varied) << frame << " is empty";
        }
    }
}

TEST_F(ScenarioTest, ARenderFolderGetsEveryFrame) {
    {
        simhost::HostOptions probe;
        probe.render = true;
        simhost::Host host(probe);
        if (!host.renderingAvailable()) GTEST_SKIP() << "no OpenGL rendering on this machine";
    }
    options.renderDir = (report / "every-frame").string();
    options.fps = 4;                                  // few frames to write
    const ScenarioSummary s = Run("engines-running"); // refused at once: a short run
    ASSERT_GT(s.frames, 0);
    const auto written = std::distance(fs::directory_iterator(options.renderDir), fs::directory_iterator());
    EXPECT_EQ(written, s.frames);
    EXPECT_TRUE(fs::exists(fs::path(options.renderDir) / "frame-00001.png"));
}

TEST_F(ScenarioTest, AnUnknownPluginIsReportedNotThrown) {
    options.plugin = "/nonexistent/Kalvora.xpl";
    const Scenario* s = simhost::cli::findScenario("demo");
    ASSERT_NE(s, nullptr);
    std::ostringstream progress;
    const ScenarioSummary summary = simhost::cli::runScenario(*s, options, progress);
    EXPECT_FALSE(summary.loaded);
    EXPECT_FALSE(summary.error.empty());
    EXPECT_EQ(simhost::cli::findScenario("no-such-scenario"), nullptr);
}

} // namespace
