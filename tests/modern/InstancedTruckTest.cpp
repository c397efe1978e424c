// On X-Plane 11.50 and later the 3-D drawing phases are never called: the tug
// must be an object instance that follows the truck frame by frame; on older
// versions the drawing callback draws it and no instance is made.
#include "ModernFixture.h"

#include <cmath>

namespace kalvora_test {
namespace {

using InstancedTruck = ModernTest;

constexpr double kPushTimeoutSeconds = 600; // a whole push-back, approach to departure, in sim seconds

/// Heading difference folded into [0, 180] degrees.
double HeadingGap(double a, double b) {
    const double d = std::fmod(std::fabs(a - b), 360.0);
    return d > 180.0 ? 360.0 - d : d;
}

TEST_F(InstancedTruck, FollowsTheTruckFrameByFrameThroughAWholePushBack) {
    Load();
    EXPECT_TRUE(Instances("KLVdefault.obj").empty()) << "no truck before a push-back";
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Push straight back"));
    host->set(kParkBrake, 0);

    int framesShown = 0;
    double travelled = 0, lastX = 0, lastZ = 0;
    const bool over = host->runUntil(
        [&] {
            const std::vector<simhost::InstanceInfo> tug = Instances("KLVdefault.obj");
            if (framesShown > 0 && host->geti(kStatus) == 0) return true;
            if (tug.empty()) return false;
            EXPECT_EQ(tug.size(), 1u);
            const simhost::InstanceInfo& t = tug[0];
            EXPECT_TRUE(t.positioned);
            // Placed after the truck moved in the frame just run, from the state the datarefs publish.
            EXPECT_NEAR(t.x, host->getf(kTruckX), 1e-2);
            EXPECT_NEAR(t.z, host->getf(kTruckZ), 1e-2);
            EXPECT_NEAR(t.y, host->getf(kTruckY) + 1.0, 1e-2) << "model origin 1 m above the apron";
            EXPECT_LT(HeadingGap(t.heading, host->getf(kTruckHdg)), 1e-2);
            EXPECT_NEAR(t.y - 1.0, options.startElevationM, 0.5) << "standing on the apron";
            if (framesShown > 0) travelled += std::hypot(t.x - lastX, t.z - lastZ);
            lastX = t.x;
            lastZ = t.z;
            ++framesShown;
            return false;
        },
        kPushTimeoutSeconds);
    ASSERT_TRUE(over) << "the push-back never ended";
    EXPECT_GT(travelled, 20.0) << "the instance drove up, pushed and drove off with the truck";
    EXPECT_GT(framesShown, 100);

    // The drawn truck stays where it stopped until the next reset; so does the instance.
    host->runFrames(2);
    ASSERT_EQ(Instances("KLVdefault.obj").size(), 1u);
    host->loadAirport();
    host->runFrames(2);
    EXPECT_TRUE(Instances("KLVdefault.obj").empty()) << "gone with the truck";
    for (const std::string& path : host->loadedObjects())
        EXPECT_NE(fs::path(path).filename(), "KLVdefault.obj") << "the tug's model is released with it";
}

TEST_F(InstancedTruck, CarriesItsAnimationValuesAndListsThePublishedAnimationDataRefs) {
    Load();
    EXPECT_TRUE(host->exists("halvern/kalvora/truck/wheel_rotation_deg"));
    EXPECT_TRUE(host->exists("halvern/kalvora/truck/steering_deg"));
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Push straight back"));
    host->set(kParkBrake, 0);
    double rolledDeg = 0; // summed frame by frame, so the wrap at 360 does not count
    float last = -1;
    host->runUntil(
        [&] {
            const std::vector<simhost::InstanceInfo> tug = Instances("KLVdefault.obj");
            if (tug.empty()) return false;
            const std::vector<std::string> want = {"halvern/kalvora/truck/wheel_rotation_deg",
                                                   "halvern/kalvora/truck/steering_deg"};
            EXPECT_EQ(tug[0].datarefs, want);
            if (tug[0].data.size() != 2) return true;
            const float wheel = tug[0].data[0];
            EXPECT_GE(wheel, 0.0f);
            EXPECT_LT(wheel, 360.0f);
            EXPECT_NEAR(tug[0].data[1], host->getf("halvern/kalvora/truck/steering_deg"), 1e-4);
            if (last >= 0) rolledDeg += std::remainder(wheel - last, 360.0);
            last = wheel;
            return std::fabs(rolledDeg) > 720.0;
        },
        120);
    // The truck drives up to the nose gear against its heading (it stands ahead of the aircraft,
    // facing the same way): the wheels roll backwards.
    EXPECT_LT(rolledDeg, -720.0) << "the wheels turn backwards as the truck drives up";
}

TEST_F(InstancedTruck, NotMadeWhenTheTruckIsNotDrawn) {
    WritePreferences(PreferencesText({{"DRAW_TRUCK", "0"}}));
    Load();
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Push straight back"));
    host->runFor(5);
    EXPECT_NE(host->geti(kStatus), 0) << "the push-back runs";
    EXPECT_TRUE(Instances("KLVdefault.obj").empty());
}

TEST_F(InstancedTruck, LegacyHostDrawsInsteadAndMakesNoInstance) {
    options.xplaneVersion = kXPlane1141;
    Load();
    ASSERT_TRUE(host->pickMenu(kGPUMenu));
    host->runFor(2);
    ASSERT_TRUE(host->pickMenu(kGPUMenu)); // taken away again: a push-back is refused with it
    host->runFor(2);
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Push straight back"));
    host->set(kParkBrake, 0);
    host->runFor(10);
    EXPECT_NE(host->geti(kStatus), 0) << "the push-back runs";
    EXPECT_TRUE(host->instances().empty());
    EXPECT_TRUE(host->loadedObjects().empty());
    bool drawCallback = false;
    for (const std::string& r : host->registrations(kalvora))
        drawCallback = drawCallback || r.find("draw") != std::string::npos;
    EXPECT_TRUE(drawCallback) << "the drawing callbacks stay registered";
}

TEST_F(InstancedTruck, NoDrawingCallbackInAPhaseModernHostsCall) {
    Load();
    int drawCallbacks = 0;
    for (const std::string& r : host->registrations(kalvora)) {
        if (r.rfind("draw callback", 0) != 0) continue;
        ++drawCallbacks;
        EXPECT_NE(r.find("phase 25"), std::string::npos)
            << r << ": only the aircraft phase, never called from 11.50";
    }
    EXPECT_EQ(drawCallbacks, 2) << "the tug's and the cart's drawing callbacks stay registered";
}

TEST_F(InstancedTruck, GoesWhenThePluginIsDisabled) {
    Load();
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Push straight back"));
    host->runFor(5);
    ASSERT_EQ(Instances("KLVdefault.obj").size(), 1u);
    host->disablePlugin(kalvora);
    EXPECT_TRUE(Instances("KLVdefault.obj").empty());
    ASSERT_TRUE(host->enablePlugin(kalvora));
    host->runFrames(2);
    EXPECT_EQ(Instances("KLVdefault.obj").size(), 1u) << "back while the push-back goes on";
}

} // namespace
} // namespace kalvora_test
