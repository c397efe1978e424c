// The four test plug-ins, each loaded into a fresh simhost and driven as a
// user would (commands, clicks, the map), checked against what the SDK says
// happens, through what they publish and simhost's control API.
#include "XPLMDataAccess.h"
#include "XPLMMap.h"
#include "XPLMNavigation.h"
#include "XPLMPlanes.h"

#include "simhost/Simhost.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

class AnyPlugin : public ::testing::Test {
protected:
    void start(simhost::HostOptions options = {}) {
        host = std::make_unique<simhost::Host>(options);
        simhost::InProcessPlugin self;
        self.name = self.signature = "anyplugin.test.self";
        me = host->addPlugin(self);
        host->setDirectCaller(me);
    }
    int load(const char* path) {
        std::string why;
        const int id = host->loadPlugin(path, &why);
        EXPECT_GT(id, 0) << why;
        return id;
    }
    /// Log.txt lines that start with a prefix.
    std::vector<std::string> logLines(const std::string& prefix) {
        std::vector<std::string> out;
        for (const std::string& l : host->transcriptTexts("log"))
            if (l.rfind(prefix, 0) == 0) out.push_back(l);
        return out;
    }
    bool logged(const std::string& line) { return logLines(line) == std::vector<std::string>{line}; }
    void TearDown() override { host.reset(); }

    std::unique_ptr<simhost::Host> host;
    int me = -1;
};

int controller() {
    int total = 0, active = 0;
    XPLMPluginID who = 0;
    XPLMCountAircraft(&total, &active, &who);
    return who;
}

TEST_F(AnyPlugin, TrafficSeesTheParkedAircraftTakesThemWhenFreedFliesThemAndOverridesTheTcas) {
    start();
    host->setAiAircraftCount(3);
    const std::string plane = "sim/multiplayer/position/plane", tcas = "sim/cockpit2/tcas/targets/position/";
    const std::string override = "sim/operation/override/override_TCAS";
    const double apronM = host->options().startElevationM;
    // X-Plane's AI aircraft stand parked north of the apron, and its TCAS sees them.
    EXPECT_FLOAT_EQ(host->getf(tcas + "lat", 3), host->getf(plane + "3_lat"));
    EXPECT_EQ(host->geti("sim/cockpit2/tcas/indicators/tcas_num_acf"), 4); // the user's and the three

    ASSERT_EQ(XPLMAcquirePlanes(nullptr, nullptr, nullptr), 1); // another plug-in holds them first
    const int traffic = load(ANYPLUGIN_Traffic);
    EXPECT_EQ(host->geti("traffic/acquired"), 0);
    EXPECT_TRUE(logged("Traffic: the aircraft are taken, waiting"));
    EXPECT_EQ(controller(), me);
    host->runFrames(2);
    EXPECT_FLOAT_EQ(host->getf("traffic/lowest_agl"), 3); // it reads where they stand

    XPLMReleasePlanes(); // the waiting plug-in hears of it and takes them
    EXPECT_EQ(host->geti("traffic/acquired"), 1);
    EXPECT_TRUE(logged("Traffic: got 4 aircraft (controller " + std::to_string(traffic) + " is me: 1)"));
    EXPECT_EQ(XPLMAcquirePlanes(nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(host->geti("traffic/tcas_override"), 1); // the holder may override the TCAS

    host->runFrames(3);
    const double userAboveApronM = host->getf("sim/flightmodel/position/local_y") - apronM;
    EXPECT_NEAR(host->getf("traffic/lowest_agl"), userAboveApronM + 300, 0.1); // the lowest flies 300 m up
    EXPECT_NEAR(host->getf(plane + "1_el"), host->getf(plane + "1_y"), 0.01);  // the place follows x, y, z
    // Nobody else touches the override or the targets under it.
    XPLMDataRef overrideRef = XPLMFindDataRef(override.c_str()),
                targetX = XPLMFindDataRef((tcas + "x").c_str());
    EXPECT_EQ(XPLMCanWriteDataRef(overrideRef), 0);
    XPLMSetDatai(overrideRef, 0);
    float here = 1;
    XPLMSetDatavf(targetX, &here, 1, 1);
    EXPECT_EQ(host->geti(override), 1);
    EXPECT_FLOAT_EQ(host->getf(tcas + "x", 1), host->getf(plane + "1_x"));

    host->disablePlugin(traffic); // it lets them go: the override ends and the AI parks them again
    EXPECT_EQ(controller(), XPLM_NO_PLUGIN_ID);
    EXPECT_EQ(host->geti(override), 0);
    EXPECT_DOUBLE_EQ(host->getf(plane + "1_y"), apronM + 3);
    EXPECT_FLOAT_EQ(host->getf(tcas + "y", 1), host->getf(plane + "1_y"));

    // When the local frame moves, every aircraft keeps its place in the world.
    const double lat = host->getf(plane + "2_lat"), z = host->getf(plane + "2_z");
    host->shiftLocalOrigin(host->options().startLatDeg + 0.01, host->options().startLonDeg);
    EXPECT_NEAR(host->getf(plane + "2_lat"), lat, 1e-6);
    EXPECT_NEAR(host->getf(plane + "2_z") - z, 1112, 5); // 0.01 degree further south of the new origin
}

TEST_F(AnyPlugin, CockpitHelpersDecoratedWindowDragsByItsTitleBarAndResizesWithinItsLimits) {
    start();
    const int helper = load(ANYPLUGIN_CockpitHelper);
    ASSERT_TRUE(host->runCommand("cockpit_helper/toggle_window"));
    ASSERT_EQ(host->windows().size(), 1u);
    simhost::WindowInfo w = host->windows()[0];
    EXPECT_EQ(w.title, "Ground checklist");
    EXPECT_EQ(w.right - w.left, 320);
    EXPECT_EQ(w.top - w.bottom, 200);
    EXPECT_EQ(w.decoration, 1);
    EXPECT_EQ(w.layer, 1);

    EXPECT_TRUE(host->click(w.left + 20, w.top - 20));
    EXPECT_EQ(host->geti("cockpit/clicks"), 1);

    // The title bar above the top edge drags the window; the plug-in does not see that click.
    host->mouseDown(w.left + 50, w.top + 10);
    host->mouseDrag(w.left + 80, w.top - 10);
    host->mouseUp(w.left + 100, w.top - 30);
    simhost::WindowInfo moved = host->windows().back();
    EXPECT_EQ(moved.left, w.left + 50);
    EXPECT_EQ(moved.top, w.top - 40);
    EXPECT_EQ(host->geti("cockpit/clicks"), 1);

    // Resizing keeps the top-left corner and the plug-in's limits (200x100 to 600x400).
    EXPECT_TRUE(host->resizeWindow(w.id, 1000, 50));
    simhost::WindowInfo resized = host->windows().back();
    EXPECT_EQ(resized.left, moved.left);
    EXPECT_EQ(resized.top, moved.top);
    EXPECT_EQ(resized.right - resized.left, 600);
    EXPECT_EQ(resized.top - resized.bottom, 100);

    host->runCommand("cockpit_helper/toggle_window");
    EXPECT_EQ(host->geti("cockpit/toggles"), 2);
    EXPECT_FALSE(host->windows().back().visible);
    host->unloadPlugin(helper);
    EXPECT_TRUE(host->leftoversAtLastUnload().empty())
        << ::testing::PrintToString(host->leftoversAtLastUnload());
}

TEST_F(AnyPlugin, NavigationProgramsAndWalksTheFmsAndMarksNavaidsOnTheMap) {
    start();
    load(ANYPLUGIN_Navigation);
    const XPLMNavRef vor = XPLMFindNavAid(nullptr, "SIM", nullptr, nullptr, nullptr, xplm_Nav_VOR);
    const XPLMNavRef alpha = XPLMFindNavAid(nullptr, "ALPHA", nullptr, nullptr, nullptr, xplm_Nav_Fix);
    EXPECT_TRUE(logged("Navigation: nearest airport XSIM, VOR Simhost VOR on 114.85 MHz, NDB on 385 kHz is " +
                       std::to_string(XPLMFindFirstNavAidOfType(xplm_Nav_NDB))));
    EXPECT_EQ(logLines("Navigation: FMS "),
              (std::vector<std::string>{
                  "Navigation: FMS 0: airport XSIM 0 ft", "Navigation: FMS 1: VOR SIM 5000 ft (destination)",
                  "Navigation: FMS 2: fix ALPHA 5000 ft", "Navigation: FMS 3: lat/lon  5000 ft",
                  "Navigation: FMS 4: airport XSIM 0 ft"}));
    // Searches as the header describes: the nearest of several matches, a frequency that leaves fixes in.
    float nearBravoLat = 47.63f, nearBravoLon = 8.78f;
    int vorFreq = 11485;
    const XPLMNavRef bravo =
        XPLMFindNavAid(nullptr, nullptr, &nearBravoLat, &nearBravoLon, nullptr, xplm_Nav_Fix);
    EXPECT_EQ(bravo, XPLMFindNavAid("BRAVO", nullptr, nullptr, nullptr, nullptr, xplm_Nav_Fix));
    EXPECT_NE(bravo, XPLMFindLastNavAidOfType(xplm_Nav_Fix));
    EXPECT_EQ(XPLMFindNavAid(nullptr, nullptr, nullptr, nullptr, &vorFreq, xplm_Nav_VOR | xplm_Nav_NDB), vor);
    EXPECT_EQ(XPLMFindNavAid(nullptr, "ALP", nullptr, nullptr, &vorFreq, xplm_Nav_Fix), alpha);
    EXPECT_EQ(host->geti("nav/gps_destination"), vor);
    const auto metar = logLines("Navigation: METAR XSIM ");
    ASSERT_EQ(metar.size(), 1u);
    EXPECT_NE(metar[0].find(" 00000KT 9999 SKC 15/05 Q1013"), std::string::npos) << metar[0];

    host->runCommand("navigation/next_waypoint");
    EXPECT_EQ(XPLMGetDestinationFMSEntry(), 2);
    EXPECT_EQ(XPLMGetGPSDestination(), alpha);
    EXPECT_EQ(XPLMGetGPSDestinationType(), xplm_Nav_Fix);

    // The map: the creation hook adds the layer, each frame it marks every navaid where the projection puts
    // it.
    host->showMap(XPLM_MAP_USER_INTERFACE);
    host->runFrames(1);
    const auto& marks = host->mapMarks();
    EXPECT_EQ(marks.size(), 10u); // the navaids with an ID
    auto sim = std::find_if(marks.begin(), marks.end(),
                            [](auto& m) { return m.kind == "label" && m.text == "SIM"; });
    ASSERT_NE(sim, marks.end());
    EXPECT_EQ(sim->layer, "Navaids");
    EXPECT_NEAR(sim->x, 0, 1); // the VOR is 5 km north of the apron; map units are metres
    EXPECT_NEAR(sim->y, 5000, 1);
    host->hideMap(XPLM_MAP_USER_INTERFACE);
    EXPECT_EQ(host->geti("nav/layers_deleted"), 1);
    EXPECT_TRUE(host->mapMarks().empty());
}

/// The largest sample magnitude of a mono 16-bit WAV in [fromS, toS).
int peak(const std::string& wav, double fromS, double toS) {
    const std::string bytes = kalvora_test::ReadFile(wav);
    constexpr size_t kHeaderBytes = 44;
    constexpr double kRateHz = 22050;
    int most = 0;
    for (size_t i = static_cast<size_t>(fromS * kRateHz); i < static_cast<size_t>(toS * kRateHz); ++i) {
        const size_t at = kHeaderBytes + 2 * i;
        if (at + 1 >= bytes.size()) break;
        const int v = static_cast<int16_t>(static_cast<unsigned char>(bytes[at]) | bytes[at + 1] << 8);
        most = std::max(most, std::abs(v));
    }
    return most;
}

TEST_F(AnyPlugin, SoundPlaysOutLoopsUntilStoppedReportsEveryCompletionAndIsMixedAsPlayed) {
    const kalvora_test::TempFolder audio("anyplugin-sound");
    simhost::HostOptions options;
    options.speechWavDir = audio.path();
    start(options);
    load(ANYPLUGIN_Sound);
    const double chimeS = host->simTime();
    host->runCommand("sound/chime");
    EXPECT_EQ(host->geti("sound/completions"), 0);
    host->runFor(0.6); // the chime is 0.5 s long
    EXPECT_EQ(host->geti("sound/completions"), 1);

    const double humS = host->simTime();
    host->runCommand("sound/hum_start");
    host->runFor(0.4);
    const double secondChimeS = host->simTime();
    host->runCommand("sound/chime"); // over the hum
    host->runFor(1.6);               // a looping channel never plays out
    EXPECT_EQ(host->geti("sound/hum_playing"), 1);
    EXPECT_EQ(host->geti("sound/completions"), 2);
    const double stopS = host->simTime();
    host->runCommand("sound/hum_stop");
    EXPECT_EQ(host->geti("sound/completions"), 3); // stopping tells the plug-in too
    EXPECT_EQ(host->geti("sound/hum_playing"), 0);
    EXPECT_EQ(
        host->transcriptTexts("sound"),
        (std::vector<std::string>{"channel 1 play on interior: 22050 Hz, 1 ch, 0.5 s", "channel 1 ended",
                                  "channel 2 play on exterior aircraft: 22050 Hz, 1 ch, 0.2 s, looping",
                                  "channel 2 position 0 2 0 m, velocity 0 0 0 m/s", "channel 2 volume 0.5",
                                  "channel 3 play on interior: 22050 Hz, 1 ch, 0.5 s", "channel 3 ended",
                                  "channel 2 stopped"}));
    // The mix: each sound at the time it was played, the hum at half volume, looping until it was stopped,
    // the second chime added on top of it.
    host->runFor(0.5); // the run goes on after the hum stopped
    const std::string mix = audio.file("mix.wav");
    ASSERT_TRUE(host->writeAudioMix(mix));
    constexpr int kChime = 8000, kHum = 4000, kSlack = 100; // the plug-in's amplitudes: 8000, and 8000 at 0.5
    constexpr double kEdgeS = 0.01;
    EXPECT_NEAR(peak(mix, chimeS, chimeS + 0.5), kChime, kSlack);
    EXPECT_EQ(peak(mix, chimeS + 0.5 + kEdgeS, humS), 0);
    EXPECT_NEAR(peak(mix, humS, secondChimeS), kHum, kSlack);
    EXPECT_GT(peak(mix, secondChimeS + kEdgeS, secondChimeS + 0.5 - kEdgeS), kChime + kHum * 9 / 10);
    EXPECT_NEAR(peak(mix, secondChimeS + 0.5 + kEdgeS, stopS), kHum, kSlack);
    EXPECT_EQ(peak(mix, stopS + kEdgeS, stopS + 0.5), 0);
}

} // namespace
