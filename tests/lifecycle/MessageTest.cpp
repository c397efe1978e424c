// Messages from the host (aircraft, airport, scenery loaded) and from other
// plug-ins in the middle of a push.
#include "support/InstalledPlugin.h"

namespace kalvora_test {
namespace {

using MessageTest = InstalledPluginTest;

constexpr int kAirportLoaded = 103;
constexpr int kSceneryLoaded = 104;

TEST_F(MessageTest, HostLoadsStopAPushAndANewAircraftGetsItsOwnPushLength) {
    Load();
    const std::string before = PluginLog();
    for (int message : {0, 101, 105, 0x12345, static_cast<int>(0x8888887Fu), static_cast<int>(0x8888888Du)})
        host->sendMessage(kalvora, message, nullptr, 0);
    EXPECT_EQ(PluginLog(), before) << "other messages are ignored";

    for (int message : {kAirportLoaded, kSceneryLoaded, 0}) {
        SCOPED_TRACE(message);
        StartPush("Push straight back");
        if (message)
            host->sendMessage(kalvora, message);
        else
            host->loadAircraft("B744");
        host->runFrames(2);
        const double at = Moved();
        host->runFor(2);
        EXPECT_EQ(host->geti(kStatus), 0);
        EXPECT_NEAR(Moved(), at, 1e-6);
        host->set(kParkBrake, 1);
        host->runFor(1);
    }

    const double sizeZ = host->aircraft().sizeZ;
    const int cleared = Said("cleared to taxi");
    StartPush("Push straight back");
    ASSERT_TRUE(host->runUntil([&] { return Said("cleared to taxi") > cleared; }, 240));
    // Three quarters of the aircraft's whole-metre half length, cut to whole metres.
    EXPECT_NEAR(Moved(), static_cast<int>(0.75 * static_cast<int>(sizeZ)), 0.2) << "half length " << sizeZ;
}

} // namespace
} // namespace kalvora_test
