// The ground power unit as another plug-in, a cockpit panel and the user see
// it: its messages and broadcasts, the status dataref, the crew's words, the
// charging of the batteries, the "GPU" menu item, where the cart stands and
// its object instance. A second in-process plug-in ("ground ops") plays the
// other side of the messages. The cart's model is a plain orange box, so a
// rendered frame shows exactly where it stands.
#include "XPLMDataAccess.h"
#include "support/Frames.h"
#include "support/InstalledPlugin.h"
#include "support/Pictures.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace kalvora_test {
namespace {

constexpr const char* kSaysHookedUp = "GPU is hooked up and warming up";
constexpr const char* kSaysRunning = "GPU is running";
constexpr const char* kSaysDisconnected = "GPU is OFF and disconnected";
constexpr const char* kGPUX = "halvern/kalvora/GPU/position_ogl_x";
constexpr const char* kGPUY = "halvern/kalvora/GPU/position_ogl_y";
constexpr const char* kGPUZ = "halvern/kalvora/GPU/position_ogl_z";
constexpr double kWarmUpSeconds = 15.0;
constexpr float kCapVolts = 24.0f; ///< charging never goes above this
constexpr int kPlaneLoaded = 102, kAirportLoaded = 103, kSceneryLoaded = 104;

class GPUTest : public InstalledPluginTest {
protected:
    void SetUp() override {
        InstalledPluginTest::SetUp();
        // 1.2 m wide, 1.6 m long and 1.2 m high, its origin 1 m above its bottom, as the GPU model's.
        const std::string gpu = (DataFolder() / "GroundServices" / "GPU").string();
        WriteFile(gpu + ".obj", Obj8Text("GPU.bmp", Box(-0.6f, -1.0f, -0.8f, 0.6f, 0.2f, 0.8f)));
        WritePicture(gpu + ".bmp", PictureFormat::Bmp, 4, {255, 140, 0});
    }

    /// Every crew message on, the view left alone, GPU handling and the towing gear as given.
    void Preferences(bool handleGPU, bool frontWheel = true) {
        WritePreferences(PreferencesText({{"SWITCH_VIEW", "0"},
                                          {"HANDLE_GPU", handleGPU ? "1" : "0"},
                                          {"FRONT_WHEEL", frontWheel ? "1" : "0"}}));
    }

    void Loaded() override {
        simhost::InProcessPlugin ops;
        ops.name = "Ground ops";
        ops.signature = "test.groundops";
        ops.receive = [this](int, int message, void*) { heard.push_back(static_cast<unsigned>(message)); };
        groundOps = host->addPlugin(ops);
        ASSERT_GE(groundOps, 0);
    }

    void Send(unsigned message) { host->sendMessage(kalvora, static_cast<int>(message), nullptr, groundOps); }
    /// The ground-ops plug-in writes the status dataref, as a cockpit panel would.
    void WriteStatus(int value) {
        host->setDirectCaller(groundOps);
        XPLMSetDatai(XPLMFindDataRef(kGPUStatus), value);
    }
    int Status() { return host->geti(kGPUStatus); }
    int Heard(unsigned message) const {
        return static_cast<int>(std::count(heard.begin(), heard.end(), message));
    }
    float Volts(int engine) { return static_cast<float>(host->getf(kBatteryVolts, engine)); }
    void SetVolts(int engines, double volts) {
        for (int i = 0; i < engines; ++i)
            host->set(kBatteryVolts, volts, i);
    }
    /// Where the nose gear stands on the apron (metres, local frame).
    std::pair<double, double> NoseGear() {
        const simhost::Aircraft::Gear& nose = host->aircraft().gear.at(0);
        const double h = host->getf(kPsi) * kRadPerDeg, ahead = -nose.z; // body z points aft
        return {host->getf(kLocalX) + ahead * std::sin(h) + nose.x * std::cos(h),
                host->getf(kLocalZ) - ahead * std::cos(h) + nose.x * std::sin(h)};
    }

    int groundOps = -1;
    std::vector<unsigned> heard; ///< Kalvora's broadcasts, in order
};

TEST_F(GPUTest, AnotherPluginBringsItRunsItChargesTheFirstEightBatteriesAndTakesItAway) {
    Load();
    const std::string callSign = host->aircraft().tailNumber.substr(0, 6);
    host->set(kEngineCount, 12);
    SetVolts(16, 10.0);

    Send(kAskStatus);
    EXPECT_EQ(heard, std::vector<unsigned>{kIsOff});
    Send(kAskService);
    EXPECT_EQ(Heard(kAvailable), 1);
    EXPECT_EQ(Status(), 0);

    Send(kConnect);
    EXPECT_EQ(Said("Roger " + callSign + " " + kSaysHookedUp), 1);
    EXPECT_EQ(Status(), 1);
    host->runFor(kWarmUpSeconds - 0.5);
    EXPECT_EQ(Heard(kIsOn), 0) << "still warming up";
    EXPECT_EQ(Said(kSaysRunning), 0);
    EXPECT_FLOAT_EQ(Volts(0), 10.0f) << "no charging during the warm-up";

    host->runFor(0.6);
    EXPECT_EQ(Heard(kIsOn), 1);
    EXPECT_EQ(Said(callSign + " " + kSaysRunning), 1);
    EXPECT_EQ(Status(), 1) << "running still reads 1";
    Send(kAskStatus);
    EXPECT_EQ(heard.back(), kAvailable) << "a running GPU answers 'available'";

    // Charging accelerates: the fourth second adds much more than the first.
    const float v0 = Volts(0);
    host->runFor(1.0);
    const float v1 = Volts(0);
    host->runFor(2.0);
    const float v3 = Volts(0);
    host->runFor(1.0);
    EXPECT_GT(v1, v0);
    EXPECT_GT(Volts(0) - v3, 2.0f * (v1 - v0));
    for (int engine = 1; engine < 16; ++engine)
        EXPECT_FLOAT_EQ(Volts(engine), engine < 8 ? Volts(0) : 10.0f) << "engine " << engine;
    SetVolts(8, 20.0);
    ASSERT_TRUE(host->runUntil([&] { return Volts(0) >= kCapVolts; }, 120)) << Volts(0);
    host->runFor(5.0);
    EXPECT_FLOAT_EQ(Volts(0), kCapVolts);

    Send(kDisconnect);
    EXPECT_EQ(Said(callSign + " " + kSaysDisconnected), 1);
    EXPECT_EQ(Heard(kIsOff), 2);
    EXPECT_EQ(Status(), 0);
    SetVolts(2, 20.0);
    host->runFor(3.0);
    EXPECT_FLOAT_EQ(Volts(0), 20.0f) << "charging stops with the disconnection";
}

TEST_F(GPUTest, TheWarmUpRestartsWithEachRequestAndOutlivesADisconnection) {
    Load();
    SetVolts(2, 20.0);
    Send(kConnect);
    host->runFor(10.0);
    Send(kConnect);
    EXPECT_EQ(Said(kSaysHookedUp), 2);
    host->runFor(10.0);
    EXPECT_EQ(Heard(kIsOn), 0) << "fifteen seconds from the last request";
    Send(kDisconnect);
    EXPECT_EQ(Said(kSaysDisconnected), 1);
    EXPECT_EQ(Heard(kIsOff), 1);
    host->runFor(6.0);
    EXPECT_EQ(Heard(kIsOn), 1) << "the warm-up is not cancelled by the disconnection, and announced once";
    EXPECT_EQ(Said(kSaysRunning), 1);
    EXPECT_EQ(Status(), 0) << "but the GPU stays disconnected";
    host->runFor(3.0);
    EXPECT_GT(Volts(0), 20.0f) << "and the warm-up's end starts charging all the same";
    Send(kConnect);
    Send(kDisconnect);
    const float stopped = Volts(0);
    host->runFor(3.0);
    EXPECT_FLOAT_EQ(Volts(0), stopped) << "a later disconnection stops it";

    // With the electrical simulation off there is nothing to charge.
    Send(kElecOff);
    SetVolts(2, 20.0);
    WriteStatus(1);
    host->runFor(kWarmUpSeconds + 10.0);
    EXPECT_EQ(Heard(kIsOn), 2);
    EXPECT_FLOAT_EQ(Volts(0), 20.0f);
}

TEST_F(GPUTest, StatusDatarefMenuItemAndHostLoads) {
    Load();
    WriteStatus(2);
    EXPECT_EQ(Said(kSaysDisconnected), 1) << "writing 2 while absent still runs the disconnection";
    EXPECT_EQ(Heard(kIsOff), 1);
    EXPECT_EQ(Status(), 0);
    WriteStatus(1);
    WriteStatus(1);
    EXPECT_EQ(Said(kSaysHookedUp), 2) << "1 always connects, even when connected";
    EXPECT_EQ(Status(), 1);
    for (int ignored : {0, 4, -1, 99})
        WriteStatus(ignored);
    EXPECT_EQ(Status(), 1);
    WriteStatus(2);
    EXPECT_EQ(Status(), 0);
    EXPECT_EQ(Said(kSaysDisconnected), 2);

    EXPECT_EQ(host->menuCheck(kGPUMenu), 1);
    ASSERT_TRUE(Pick("GPU"));
    EXPECT_EQ(host->menuCheck(kGPUMenu), 2);
    EXPECT_EQ(Status(), 1);
    // With the unit at the aircraft, a push-back from the menu is refused.
    ASSERT_TRUE(Pick("Push straight back"));
    host->runFor(1.0);
    EXPECT_EQ(host->geti(kStatus), 0);
    EXPECT_EQ(Said("ready to push back"), 0);
    ASSERT_TRUE(Pick("GPU"));
    EXPECT_EQ(host->menuCheck(kGPUMenu), 1);
    EXPECT_EQ(Status(), 0);
    EXPECT_EQ(Said(kSaysDisconnected), 3);

    for (int message : {kPlaneLoaded, kAirportLoaded, kSceneryLoaded}) {
        Send(kConnect);
        ASSERT_EQ(Status(), 1);
        host->sendMessage(kalvora, message);
        EXPECT_EQ(Status(), 0) << message;
    }
    Send(kConnect);
    host->loadAircraft("B744");
    EXPECT_EQ(Status(), 0);
    EXPECT_EQ(Said(kSaysDisconnected), 3) << "taken away without a word";
}

TEST_F(GPUTest, WithoutGPUHandlingTheCrewIsSilentNothingIsShownButTheInterfacesStillToggle) {
    Preferences(false);
    Load();
    ASSERT_TRUE(Pick("GPU"));
    EXPECT_EQ(Status(), 0) << "the menu item does nothing";
    EXPECT_EQ(host->menuCheck(kGPUMenu), 1);
    Send(kConnect);
    EXPECT_EQ(Status(), 1);
    host->runFor(kWarmUpSeconds + 1.0);
    EXPECT_EQ(Heard(kIsOn), 1);
    EXPECT_TRUE(host->instances().empty());
    WriteStatus(2);
    EXPECT_EQ(Status(), 0);
    EXPECT_EQ(Heard(kIsOff), 1);
    EXPECT_TRUE(host->transcriptTexts("speech").empty());
}

TEST_F(GPUTest, TheCartStandsFiveMetresFromTheNoseGearFortyFiveDegreesRightAsAnObjectInstance) {
    constexpr double kHeadingDeg = 200.0;
    options.startHeadingDeg = kHeadingDeg;
    Load();
    EXPECT_TRUE(host->instances().empty());
    Send(kConnect);
    host->runFrames(2);
    auto [noseX, noseZ] = NoseGear();
    const double h = (kHeadingDeg + 45.0) * kRadPerDeg;
    EXPECT_NEAR(host->getf(kGPUX), noseX + 5.0 * std::sin(h), 0.05);
    EXPECT_NEAR(host->getf(kGPUZ), noseZ - 5.0 * std::cos(h), 0.05);
    EXPECT_NEAR(host->getf(kGPUY), options.startElevationM, 0.05) << "on the apron";
    const std::vector<simhost::InstanceInfo> cart = Instances("GPU.obj");
    ASSERT_EQ(cart.size(), 1u);
    EXPECT_TRUE(cart[0].positioned);
    EXPECT_NEAR(cart[0].x, host->getf(kGPUX), 1e-3);
    EXPECT_NEAR(cart[0].y, host->getf(kGPUY) + 1.0, 1e-3) << "origin 1 m up";
    EXPECT_NEAR(cart[0].z, host->getf(kGPUZ), 1e-3);
    EXPECT_NEAR(cart[0].heading, -kHeadingDeg, 1e-3) << "turned as the drawn cart: negated";
    Unload();
    host.reset();

    // After a push by the main gear the cart still stands beside the nose gear.
    Preferences(true, false);
    Load();
    ASSERT_TRUE(Pick("Push straight back"));
    host->runFor(1.0);
    ASSERT_TRUE(Pick("Stop PushBack!"));
    Send(kConnect);
    host->runFrames(2);
    std::tie(noseX, noseZ) = NoseGear();
    EXPECT_NEAR(std::hypot(host->getf(kGPUX) - noseX, host->getf(kGPUZ) - noseZ), 5.0, 0.05);

    // The instance stays after the disconnection; a new airport takes it and its model away, and so
    // does disabling the plug-in after the next request.
    Send(kDisconnect);
    host->runFrames(2);
    EXPECT_EQ(Instances("GPU.obj").size(), 1u) << "it stays after the disconnection";
    host->loadAirport();
    host->runFrames(2);
    EXPECT_TRUE(host->instances().empty());
    EXPECT_TRUE(host->loadedObjects().empty()) << "its model is released with it";
    Send(kConnect);
    host->runFrames(2);
    EXPECT_EQ(Instances("GPU.obj").size(), 1u) << "and comes back with the next request";
    host->disablePlugin(kalvora);
    EXPECT_TRUE(host->instances().empty());
    EXPECT_TRUE(host->loadedObjects().empty());
}

/// Before 11.50 the cart is drawn in the 3-D drawing phases, not made an instance: a frame seen from 25 m
/// straight above the nose gear, the aircraft's heading up, shows it ahead and right of the frame's centre.
TEST_F(GPUTest, OnOlderHostsTheDrawnCartShowsAheadRightOfTheNoseUntilANewAirport) {
    constexpr int kWidth = 320, kHeight = 240; // pixels
    constexpr double kCameraHeightM = 25;
    options.render = true;
    options.drawWorld = false; // the cart is found as what is not sky
    options.xplaneVersion = 11000;
    options.screenWidth = kWidth;
    options.screenHeight = kHeight;
    Load();
    if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL rendering here";
    const auto [noseX, noseZ] = NoseGear();
    XPLMCameraPosition_t camera =
        CameraAt(noseX, options.startElevationM + kCameraHeightM, noseZ, -90, options.startHeadingDeg);
    HoldCamera(*host, &camera);
    const auto frame = [&](const std::string& name) {
        Blob blob = NotSky(GrabFrame(*host, "gpu-renders/" + name + ".png"));
        blob.cx -= kWidth / 2.0;
        blob.cy -= kHeight / 2.0;
        return blob;
    };
    EXPECT_EQ(frame("gpu-absent").count, 0);

    ASSERT_TRUE(Pick("GPU"));
    EXPECT_TRUE(host->instances().empty()) << "drawn by the drawing callback instead";
    const Blob shown = frame("gpu-connected");
    ASSERT_GT(shown.count, 100);
    // 5 m at 25 m below a 45-degree field of view is about 58 pixels of a 240-pixel frame.
    EXPECT_NEAR(std::atan2(shown.cx, shown.cy) / kRadPerDeg, 45.0, 8.0) << "right of the heading";
    EXPECT_NEAR(std::hypot(shown.cx, shown.cy), 58.0, 12.0);
    ASSERT_TRUE(Pick("GPU"));
    EXPECT_EQ(frame("gpu-disconnected").count, shown.count) << "it stays where it was";
    host->loadAirport();
    EXPECT_EQ(frame("gpu-after-airport").count, 0);
}

} // namespace
} // namespace kalvora_test
