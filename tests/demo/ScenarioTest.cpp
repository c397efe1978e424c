// The push-back scenarios of kalvora-sim, run end to end with the real
// Kalvora.xpl: what the summary, the trace and the report folder say.
#include "Scenarios.h"

#include "simhost/Simhost.h"
#include "support/Files.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#define STB_IMAGE_IMPLEMENTATION
#include <stb/stb_image.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <sstream>
#include <string>

namespace kalvora_test {
namespace {

namespace fs = std::filesystem;
using simhost::cli::ScenarioSummary;

constexpr double kStepM = 0.1; // push step per frame at the default truck speed, metres

/// Push length of the automated and straight manoeuvres: 3/4 of the whole-metre half length, cut.
int ExpectedPushLength(double sizeZ) {
    return static_cast<int>(0.75 * static_cast<int>(sizeZ));
}

class ScenarioTest : public ::testing::Test {
protected:
    void SetUp() override {
        options.plugin = KALVORA_BINARY_DIR "/plugin/Kalvora.xpl";
        options.dataDir = KALVORA_SOURCE_DIR "/assets/Kalvora";
    }

    ScenarioSummary Run(const std::string& name) {
        const simhost::cli::Scenario* s = simhost::cli::findScenario(name);
        EXPECT_NE(s, nullptr) << name;
        if (!s) return {};
        std::ostringstream progress;
        ScenarioSummary summary = simhost::cli::runScenario(*s, options, progress);
        EXPECT_TRUE(summary.loaded) << summary.error;
        EXPECT_TRUE(summary.error.empty()) << summary.error;
        return summary;
    }

    const TempFolder report;
    simhost::cli::ScenarioOptions options;
};

TEST_F(ScenarioTest, DemoPushesTheLengthOfTheAircraftThenTurnsTailLeftAndReportsIt) {
    options.reportDir = report.path();
    const ScenarioSummary s = Run("demo");
    ASSERT_TRUE(s.loaded);
    EXPECT_TRUE(s.cleared);
    EXPECT_NEAR(s.startHeadingDeg, 40, 1e-3);
    EXPECT_NEAR(s.straightLegM, ExpectedPushLength(s.aircraftSizeZ), kStepM + 1e-6);
    EXPECT_NEAR(s.headingChangeDeg, s.finalHeadingDeg - 40, 1e-3);
    // The turn stops once the whole-degree heading reaches the end heading.
    EXPECT_GE(s.finalHeadingDeg, 40 + 90);
    EXPECT_LT(s.finalHeadingDeg, 40 + 90 + 1);
    EXPECT_EQ(static_cast<int>(s.trace.size()), s.frames);
    // The phases come in the order a pilot sees them.
    std::vector<std::string> phases;
    for (const auto& row : s.trace)
        if (phases.empty() || phases.back() != row.phase) phases.emplace_back(row.phase);
    EXPECT_EQ(phases, (std::vector<std::string>{"parked", "truck arriving", "waiting for brake", "pushing",
                                                "turning", "truck leaving", "cleared"}));
    const auto& last = s.trace.back();
    EXPECT_GT(std::hypot(last.truckX - last.noseGearX, last.truckZ - last.noseGearZ), 10.0)
        << "the truck ends up away from the nose gear it pushed";

    const std::string transcript = ReadFile(report / "transcript.txt");
    EXPECT_NE(transcript.find("speech  Ok, D-AKLV we are ready to push back tail left."), std::string::npos)
        << transcript;
    EXPECT_NE(transcript.find("cleared to taxi"), std::string::npos);
    const std::string csv = ReadFile(report / "trace.csv");
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), s.frames + 1);
    const std::string svg = ReadFile(report / "top-view.svg");
    EXPECT_EQ(svg.rfind("<svg", 0), 0u);
    EXPECT_NE(svg.find(" m</text>"), std::string::npos) << "no scale bar";
}

TEST_F(ScenarioTest, EachScenarioEndsAsItsManoeuvreShould) {
    const struct {
        const char* scenario;
        const char* aircraft;
        double startDeg;
        int turnDeg;      ///< tail left +90, tail right -90; the end is the whole-degree start plus this
        bool straightLeg; ///< the whole push length straight back first, else none
    } cases[] = {
        {"tail-right", "A320", 130, -90, true}, {"turn-left", "A320", 40, 90, false},
        {"straight", "A320", 40, 0, true},      {"straight", "B744", 40, 0, true},
        {"straight", "C172", 40, 0, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.scenario) + " " + c.aircraft);
        options.aircraft = c.aircraft;
        const ScenarioSummary s = Run(c.scenario);
        EXPECT_TRUE(s.cleared);
        const int length = ExpectedPushLength(s.aircraftSizeZ);
        EXPECT_NEAR(s.straightLegM, c.straightLeg ? length : 0, kStepM + 1e-6);
        if (c.turnDeg) {
            EXPECT_GE(s.finalHeadingDeg, static_cast<int>(c.startDeg) + c.turnDeg);
            EXPECT_LT(s.finalHeadingDeg, static_cast<int>(c.startDeg) + c.turnDeg + 1);
        } else {
            EXPECT_NEAR(s.headingChangeDeg, 0, 1e-3);
            EXPECT_NEAR(s.pathLengthM, length, kStepM + 1e-6);
        }
    }

    const ScenarioSummary s = Run("engines-running");
    EXPECT_FALSE(s.cleared);
    EXPECT_EQ(s.pathLengthM, 0.0);
    ASSERT_FALSE(s.dialogs.empty());
    EXPECT_EQ(s.dialogs.front().rfind("Warning...", 0), 0u) << s.dialogs.front();
    EXPECT_EQ(s.trace.back().phase, "refused");
}

// Before 11.50 the plug-in draws the truck itself; from 11.50 simhost draws its object instance.
TEST_F(ScenarioTest, RenderedFramesShowTheTruckOnOlderAndModernVersions) {
    simhost::HostOptions probe;
    probe.render = true;
    if (!simhost::Host(probe).renderingAvailable()) GTEST_SKIP() << "no OpenGL rendering on this machine";
    options.drawWorld = false; // the truck is then whatever is not sky
    for (const int version : {11410, 12100}) {
        SCOPED_TRACE(version);
        const fs::path dir = report / std::to_string(version);
        options.reportDir = dir.string();
        options.xplaneVersion = version;
        ASSERT_TRUE(Run("straight").cleared);
        for (const char* frame : {"truck-arriving.png", "pushing.png", "truck-leaving.png"}) {
            int w = 0, h = 0, channels = 0;
            unsigned char* px = stbi_load((dir / "frames" / frame).c_str(), &w, &h, &channels, 3);
            ASSERT_NE(px, nullptr) << frame;
            // Something besides the sky in the middle half of the picture, where the camera looks at the
            // aircraft (the crew's message window sits at the top).
            const unsigned char* sky = px + (h / 4) * w * 3;
            const unsigned char* end = px + (3 * h / 4) * w * 3;
            bool varied = false;
            for (const unsigned char* p = sky; p < end && !varied; p += 3)
                varied = p[0] != sky[0] || p[1] != sky[1] || p[2] != sky[2];
            stbi_image_free(px);
            EXPECT_TRUE(varied) << frame << " is empty";
        }
    }

    options.renderDir = (report / "every-frame").string();
    options.fps = 4;                                  // few frames to write
    const ScenarioSummary s = Run("engines-running"); // refused at once: a short run
    ASSERT_GT(s.frames, 0);
    EXPECT_EQ(std::distance(fs::directory_iterator(options.renderDir), fs::directory_iterator()), s.frames);
}

TEST_F(ScenarioTest, AnUnknownPluginOrScenarioIsReportedNotThrown) {
    options.plugin = "/nonexistent/Kalvora.xpl";
    std::ostringstream progress;
    const ScenarioSummary summary =
        simhost::cli::runScenario(*simhost::cli::findScenario("demo"), options, progress);
    EXPECT_FALSE(summary.loaded);
    EXPECT_FALSE(summary.error.empty());
    EXPECT_EQ(simhost::cli::findScenario("no-such-scenario"), nullptr);
}

} // namespace
} // namespace kalvora_test
