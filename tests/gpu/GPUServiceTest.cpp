// The GPU as another plug-in, a cockpit panel and the user see it: its
// messages and broadcasts, the status dataref, the crew's words, where it
// stands, the charging of the batteries and the "GPU" menu item.
#include "GPUFixture.h"

#include "simhost/Widgets.h"

#include <algorithm>

namespace kalvora_test {
namespace {

using GPUService = GPUTest;

constexpr float kCapVolts = 24.0f;

/// Where the nose gear stands on the apron (metres, local frame), from the aircraft's profile.
void NoseGear(simhost::Host& host, double* x, double* z) {
    const simhost::Aircraft::Gear& nose = host.aircraft().gear.at(0);
    const double h = host.getf("sim/flightmodel/position/psi") * M_PI / 180.0;
    const double ahead = -nose.z, right = nose.x; // body z points aft
    *x = host.getf("sim/flightmodel/position/local_x") + ahead * std::sin(h) + right * std::cos(h);
    *z = host.getf("sim/flightmodel/position/local_z") - ahead * std::cos(h) + right * std::sin(h);
}

TEST_F(GPUService, AnotherPluginBringsItRunsItAndTakesItAway) {
    Load();
    const std::string callSign = host->aircraft().tailNumber.substr(0, 6);
    SetVolts(2, 20.0);

    Send(kAskService);
    EXPECT_EQ(Heard(kAvailable), 1);
    EXPECT_EQ(Status(), 0);

    Send(kConnect);
    EXPECT_EQ(Said("Roger " + callSign + " GPU is hooked up and warming up"), 1);
    EXPECT_EQ(Status(), 1);

    host->runFor(kWarmUpSeconds - 0.5);
    EXPECT_EQ(Heard(kIsOn), 0) << "still warming up";
    EXPECT_EQ(Said(kSaysRunning), 0);
    EXPECT_FLOAT_EQ(Volts(0), 20.0f) << "no charging during the warm-up";

    host->runFor(1.0);
    EXPECT_EQ(Heard(kIsOn), 1);
    EXPECT_EQ(Said(callSign + " GPU is running"), 1);
    EXPECT_EQ(Status(), 1) << "running still reads 1";

    host->runFor(2.0);
    const float afterTwo = Volts(0);
    EXPECT_GT(afterTwo, 20.0f);
    EXPECT_FLOAT_EQ(Volts(1), afterTwo) << "every engine's battery gets the same value";

    ASSERT_TRUE(host->runUntil([&] { return Volts(0) >= kCapVolts; }, 120)) << Volts(0);
    host->runFor(5.0);
    EXPECT_FLOAT_EQ(Volts(0), kCapVolts);
    EXPECT_FLOAT_EQ(Volts(1), kCapVolts);

    Send(kDisconnect);
    EXPECT_EQ(Said(callSign + " GPU is OFF and disconnected"), 1);
    EXPECT_EQ(Heard(kIsOff), 1);
    EXPECT_EQ(Status(), 0);
    SetVolts(2, 20.0);
    host->runFor(3.0);
    EXPECT_FLOAT_EQ(Volts(0), 20.0f) << "charging stops with the disconnection";
    EXPECT_EQ(Heard(kIsOn), 1);
}

TEST_F(GPUService, StandsFiveMetresFromTheNoseGearFortyFiveDegreesRight) {
    for (double heading : {40.0, 200.0}) {
        options.startHeadingDeg = heading;
        Load();
        Send(kConnect);
        double noseX = 0, noseZ = 0;
        NoseGear(*host, &noseX, &noseZ);
        const double h = (heading + 45.0) * M_PI / 180.0;
        EXPECT_NEAR(host->getf("halvern/kalvora/GPU/position_ogl_x"), noseX + 5.0 * std::sin(h), 0.05)
            << heading;
        EXPECT_NEAR(host->getf("halvern/kalvora/GPU/position_ogl_z"), noseZ - 5.0 * std::cos(h), 0.05)
            << heading;
        EXPECT_NEAR(host->getf("halvern/kalvora/GPU/position_ogl_y"), options.startElevationM, 0.05)
            << "on the apron";
        host.reset();
    }
}

TEST_F(GPUService, StandsBesideTheNoseGearAfterAPushByTheMainGear) {
    WritePreferences(true, false);
    Load();
    // A push-back started and stopped makes the main gear the towing gear.
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Push straight back"));
    host->runFor(1.0);
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Stop PushBack!"));
    Send(kConnect);
    double noseX = 0, noseZ = 0;
    NoseGear(*host, &noseX, &noseZ);
    const double gpuX = host->getf("halvern/kalvora/GPU/position_ogl_x");
    const double gpuZ = host->getf("halvern/kalvora/GPU/position_ogl_z");
    EXPECT_NEAR(std::hypot(gpuX - noseX, gpuZ - noseZ), 5.0, 0.05);
}

TEST_F(GPUService, ChargingAcceleratesAndNeverLowersABattery) {
    Load();
    SetVolts(2, 10.0);
    Send(kConnect);
    host->runFor(kWarmUpSeconds + 0.1);
    const float v0 = Volts(0);
    host->runFor(1.0);
    const float v1 = Volts(0);
    host->runFor(2.0);
    const float v3 = Volts(0);
    host->runFor(1.0);
    const float v4 = Volts(0);
    EXPECT_GT(v1, v0);
    EXPECT_GT(v4 - v3, 2.0f * (v1 - v0)) << "the fourth second adds much more than the first";

    Send(kDisconnect);
    SetVolts(2, 27.5);
    Send(kConnect);
    host->runFor(kWarmUpSeconds + 5.0);
    ASSERT_EQ(Heard(kIsOn), 2);
    EXPECT_FLOAT_EQ(Volts(0), 27.5f) << "above the cap: left alone";
    EXPECT_FLOAT_EQ(Volts(1), 27.5f);

    // Each battery charges from its own voltage: one above another's charge keeps its own.
    for (const double first : {20.0, 26.0}) {
        SCOPED_TRACE(first);
        Send(kDisconnect);
        host->set(kBatteryVolts, first, 0);
        host->set(kBatteryVolts, 46.0 - first, 1);
        Send(kConnect);
        host->runFor(kWarmUpSeconds + 5.0);
        EXPECT_GT(std::min(Volts(0), Volts(1)), 20.0f);
        EXPECT_FLOAT_EQ(std::max(Volts(0), Volts(1)), 26.0f);
    }
}

TEST_F(GPUService, DisconnectingDuringTheWarmUpStillAnnouncesItRunning) {
    Load();
    SetVolts(2, 20.0);
    Send(kConnect);
    host->runFor(5.0);
    Send(kDisconnect);
    EXPECT_EQ(Said(kSaysDisconnected), 1);
    EXPECT_EQ(Heard(kIsOff), 1);
    EXPECT_EQ(Status(), 0);

    host->runFor(kWarmUpSeconds);
    EXPECT_EQ(Heard(kIsOn), 1) << "the warm-up is not cancelled by the disconnection";
    EXPECT_EQ(Said(kSaysRunning), 1);
    EXPECT_EQ(Status(), 0) << "but the GPU stays disconnected";
    host->runFor(3.0);
    EXPECT_GT(Volts(0), 20.0f) << "and the warm-up's end starts charging all the same";

    Send(kConnect);
    Send(kDisconnect);
    const float stopped = Volts(0);
    host->runFor(3.0);
    EXPECT_FLOAT_EQ(Volts(0), stopped) << "a later disconnection stops it";
}

TEST_F(GPUService, AnotherRequestDuringTheWarmUpRestartsIt) {
    Load();
    Send(kConnect);
    host->runFor(10.0);
    Send(kConnect);
    EXPECT_EQ(Said(kSaysHookedUp), 2);
    host->runFor(10.0);
    EXPECT_EQ(Heard(kIsOn), 0) << "fifteen seconds from the last request";
    host->runFor(6.0);
    EXPECT_EQ(Heard(kIsOn), 1) << "announced once";
}

TEST_F(GPUService, StatusDatarefWritesFromAPanel) {
    Load();
    WriteStatus(2);
    EXPECT_EQ(Said(kSaysDisconnected), 1) << "writing 2 while absent still runs the disconnection";
    EXPECT_EQ(Heard(kIsOff), 1);
    EXPECT_EQ(Status(), 0);

    WriteStatus(1);
    EXPECT_EQ(Said(kSaysHookedUp), 1);
    EXPECT_EQ(Status(), 1);
    WriteStatus(1);
    EXPECT_EQ(Said(kSaysHookedUp), 2) << "1 always connects, even when connected";
    EXPECT_EQ(Status(), 1);

    for (int ignored : {0, 4, -1, 99})
        WriteStatus(ignored);
    EXPECT_EQ(Status(), 1);
    EXPECT_EQ(Said(kSaysDisconnected), 1);

    host->runFor(kWarmUpSeconds + 1.0);
    EXPECT_EQ(Heard(kIsOn), 1);
    EXPECT_EQ(Status(), 1) << "reads never give 2";

    WriteStatus(2);
    EXPECT_EQ(Status(), 0);
    EXPECT_EQ(Said(kSaysDisconnected), 2);
}

TEST_F(GPUService, StatusQueryAnswersOffOrAvailable) {
    Load();
    Send(kAskStatus);
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard.back(), kIsOff);

    Send(kConnect);
    Send(kAskStatus);
    EXPECT_EQ(heard.back(), kAvailable);
    host->runFor(kWarmUpSeconds + 1.0);
    Send(kAskStatus);
    EXPECT_EQ(heard.back(), kAvailable) << "a running GPU answers 'available'";
    EXPECT_EQ(Heard(kIsOn), 1) << "only the warm-up's own broadcast";
}

TEST_F(GPUService, ElectricalSimulationOffStopsFurtherCharging) {
    Load();
    SetVolts(2, 20.0);
    Send(kElecOff);
    Send(kConnect);
    host->runFor(kWarmUpSeconds + 10.0);
    EXPECT_EQ(Heard(kIsOn), 1);
    EXPECT_FLOAT_EQ(Volts(0), 20.0f);

    Send(kDisconnect);
    WriteStatus(3);
    WriteStatus(1);
    host->runFor(kWarmUpSeconds + 10.0);
    EXPECT_EQ(Heard(kIsOn), 2);
    EXPECT_FLOAT_EQ(Volts(0), 20.0f);
}

TEST_F(GPUService, TwelveEnginesChargeTheFirstEightOnly) {
    Load();
    host->set(kEngineCount, 12);
    SetVolts(16, 20.0);
    Send(kConnect);
    host->runFor(kWarmUpSeconds + 10.0);
    const float charged = Volts(0);
    EXPECT_GT(charged, 20.0f);
    for (int engine = 1; engine < 8; ++engine)
        EXPECT_FLOAT_EQ(Volts(engine), charged) << engine;
    for (int engine = 8; engine < 16; ++engine)
        EXPECT_FLOAT_EQ(Volts(engine), 20.0f) << engine;
    EXPECT_TRUE(host->pluginEnabled(kalvora));
}

TEST_F(GPUService, MenuItemTogglesItAndItsCheckMarkFollows) {
    Load();
    EXPECT_EQ(host->menuCheck(kGPUMenu), 1);
    ASSERT_TRUE(host->pickMenu(kGPUMenu));
    EXPECT_EQ(host->menuCheck(kGPUMenu), 2);
    EXPECT_EQ(Status(), 1);
    EXPECT_EQ(Said(kSaysHookedUp), 1);
    ASSERT_TRUE(host->pickMenu(kGPUMenu));
    EXPECT_EQ(host->menuCheck(kGPUMenu), 1);
    EXPECT_EQ(Status(), 0);
    EXPECT_EQ(Said(kSaysDisconnected), 1);
    EXPECT_EQ(Heard(kIsOff), 1);
}

TEST_F(GPUService, PushBackFromTheMenuIsRefusedWhileConnected) {
    Load();
    ASSERT_TRUE(host->pickMenu(kGPUMenu));
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Push straight back"));
    host->runFor(1.0);
    EXPECT_EQ(host->geti("halvern/kalvora/PBstatus"), 0);
    EXPECT_EQ(Said("ready to push back"), 0);
    simhost::WidgetHandle warning = simhost::findWidget("Warning...");
    ASSERT_NE(warning, nullptr) << simhost::widgetTree();
    bool explained = false;
    for (simhost::WidgetHandle w :
         simhost::findWidgets([](const simhost::WidgetInfo&) { return true; }, warning))
        explained |= simhost::widgetDescriptor(w).find("GPU running") != std::string::npos;
    EXPECT_TRUE(explained) << simhost::widgetTree();
}

TEST_F(GPUService, WithoutGPUHandlingTheCrewIsSilentButTheInterfacesStillToggle) {
    WritePreferences(false);
    Load();
    ASSERT_TRUE(host->pickMenu(kGPUMenu));
    EXPECT_EQ(Status(), 0) << "the menu item does nothing";
    EXPECT_EQ(host->menuCheck(kGPUMenu), 1);

    Send(kConnect);
    EXPECT_EQ(Status(), 1);
    host->runFor(kWarmUpSeconds + 1.0);
    EXPECT_EQ(Heard(kIsOn), 1);
    WriteStatus(2);
    EXPECT_EQ(Status(), 0);
    EXPECT_EQ(Heard(kIsOff), 1);
    EXPECT_TRUE(host->transcriptTexts("speech").empty());
}

TEST_F(GPUService, ANewAircraftAirportOrSceneryTakesItAway) {
    Load();
    for (int message : {102, 103, 104}) {
        Send(kConnect);
        ASSERT_EQ(Status(), 1);
        host->sendMessage(kalvora, message);
        EXPECT_EQ(Status(), 0) << message;
        EXPECT_EQ(Said(kSaysDisconnected), 0) << "taken away without a word";
    }
    Send(kConnect);
    host->loadAircraft("B744");
    EXPECT_EQ(Status(), 0);
}

} // namespace
} // namespace kalvora_test
