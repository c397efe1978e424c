// Messages from the host (aircraft, airport, scenery loaded) and from other plug-ins.
#include "support/InstalledPlugin.h"

namespace kalvora_test {
namespace {

using MessageTest = InstalledPluginTest;

constexpr int kPlaneLoaded = 102;
constexpr int kAirportLoaded = 103;
constexpr int kSceneryLoaded = 104;

TEST_F(MessageTest, AirportAndSceneryLoadsStopAPush) {
    Load();
    for (int message : {kAirportLoaded, kSceneryLoaded}) {
        StartPush("Push straight back");
        host->sendMessage(kalvora, message);
        host->runFrames(2);
        const double at = Moved();
        host->runFor(2);
        EXPECT_EQ(host->geti(kStatus), 0) << message;
        EXPECT_NEAR(Moved(), at, 1e-6) << message;
        host->set(kParkBrake, 1);
    }
}

TEST_F(MessageTest, ANewAircraftStopsThePushAndGetsItsOwnPushLength) {
    Load();
    StartPush("Push straight back");
    host->loadAircraft("B744");
    host->runFrames(2);
    const double at = Moved();
    host->runFor(2);
    EXPECT_EQ(host->geti(kStatus), 0);
    EXPECT_NEAR(Moved(), at, 1e-6);

    host->set(kParkBrake, 1);
    host->runFor(1);
    const double sizeZ = host->aircraft().sizeZ;
    const int clearedBefore = Said("cleared to taxi");
    StartPush("Push straight back");
    ASSERT_TRUE(host->runUntil([&] { return Said("cleared to taxi") > clearedBefore; }, 240));
    const double pushed = Moved();
    // Three quarters of the aircraft's whole-metre half length, cut to whole metres.
    const int expected = static_cast<int>(0.75 * static_cast<int>(sizeZ));
    EXPECT_NEAR(pushed, expected, 0.2) << "half length " << sizeZ;
}

TEST_F(MessageTest, HostLoadsTakeTheGroundPowerUnitAway) {
    Load();
    for (int message : {kPlaneLoaded, kAirportLoaded, kSceneryLoaded}) {
        ASSERT_TRUE(Pick("GPU"));
        ASSERT_NE(host->geti(kGPUStatus), 0) << message;
        host->sendMessage(kalvora, message);
        EXPECT_EQ(host->geti(kGPUStatus), 0) << message;
    }
}

TEST_F(MessageTest, OtherMessagesAreIgnored) {
    Load();
    const std::string before = PluginLog();
    for (int message : {0, 101, 105, 0x12345, static_cast<int>(0x8888887Fu), static_cast<int>(0x8888888Du)})
        host->sendMessage(kalvora, message, nullptr, 0);
    EXPECT_EQ(PluginLog(), before);
    EXPECT_TRUE(host->pluginEnabled(kalvora));
}

} // namespace
} // namespace kalvora_test
