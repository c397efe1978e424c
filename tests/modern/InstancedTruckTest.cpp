// On X-Plane 11.50 and later the 3-D drawing phases are never called: the tug
// is an object instance that follows the truck frame by frame, carries its
// animation values, goes with the plug-in and a new airport, and stays on its
// spot of the world when the host moves its local frame's origin. On older
// versions the drawing callback draws it and no instance is made.
#include "ModernFixture.h"

#include <cmath>

namespace kalvora_test {
namespace {

using InstancedTruck = ModernTest;

constexpr double kPushTimeoutSeconds = 600; // a whole push-back, approach to departure, in sim seconds
constexpr const char* kWheelDeg = "halvern/kalvora/truck/wheel_rotation_deg";
constexpr const char* kSteeringDeg = "halvern/kalvora/truck/steering_deg";
constexpr const char* kGroundSpeed = "sim/flightmodel/position/groundspeed";

TEST_F(InstancedTruck, FollowsTheTruckFrameByFrameThroughAWholePushBackWithItsAnimationValues) {
    Load();
    EXPECT_TRUE(Instances("KLVdefault.obj").empty()) << "no truck before a push-back";
    ASSERT_TRUE(Pick("Push straight back"));
    ReleaseBrake();

    int framesShown = 0;
    double travelled = 0, lastX = 0, lastZ = 0;
    double rolledDeg = 0; // the first two turns, summed frame by frame so that the wrap at 360 does not count
    float lastWheel = -1;
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
            EXPECT_NEAR(std::remainder(t.heading - host->getf(kTruckHdg), 360.0), 0, 1e-2);
            EXPECT_NEAR(t.y - 1.0, options.startElevationM, 0.5) << "standing on the apron";
            EXPECT_EQ(t.datarefs, (std::vector<std::string>{kWheelDeg, kSteeringDeg}));
            if (t.data.size() != 2) return true;
            EXPECT_GE(t.data[0], 0.0f);
            EXPECT_LT(t.data[0], 360.0f);
            EXPECT_NEAR(t.data[1], host->getf(kSteeringDeg), 1e-4);
            if (lastWheel >= 0 && std::fabs(rolledDeg) <= 720.0)
                rolledDeg += std::remainder(t.data[0] - lastWheel, 360.0);
            lastWheel = t.data[0];
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
    // The truck drives up to the nose gear against its heading (it stands ahead of the aircraft, facing the
    // same way): the wheels roll backwards.
    EXPECT_LT(rolledDeg, -720.0);

    // The drawn truck stays where it stopped until the next reset; so does the instance.
    host->runFrames(2);
    ASSERT_EQ(Instances("KLVdefault.obj").size(), 1u);
    host->loadAirport();
    host->runFrames(2);
    EXPECT_TRUE(Instances("KLVdefault.obj").empty()) << "gone with the truck";
    for (const std::string& path : host->loadedObjects())
        EXPECT_NE(fs::path(path).filename(), "KLVdefault.obj") << "the tug's model is released with it";
}

TEST_F(InstancedTruck, GoesWithThePluginAndAnotherTruckChoiceReloadsIt) {
    Load();
    ASSERT_TRUE(Pick("Push straight back"));
    host->runFor(5);
    ASSERT_EQ(Instances("KLVdefault.obj").size(), 1u);
    host->disablePlugin(kalvora);
    EXPECT_TRUE(Instances("KLVdefault.obj").empty());
    ASSERT_TRUE(host->enablePlugin(kalvora));
    host->runFrames(2);
    EXPECT_EQ(Instances("KLVdefault.obj").size(), 1u) << "back while the push-back goes on";

    ASSERT_TRUE(Pick("Trucks/KLVtowbarless"));
    host->runFrames(2);
    EXPECT_TRUE(Instances("KLVdefault.obj").empty());
    EXPECT_EQ(Instances("KLVtowbarless.obj").size(), 1u);
    for (const std::string& path : host->loadedObjects())
        EXPECT_NE(fs::path(path).filename(), "KLVdefault.obj") << "the old model is released";
}

TEST_F(InstancedTruck, NoneWhenTheTruckIsNotDrawnOrTheHostDrawsIt) {
    for (const bool legacyHost : {false, true}) {
        SCOPED_TRACE(legacyHost ? "X-Plane 11.41" : "truck not drawn");
        if (legacyHost) options.xplaneVersion = kXPlane1141;
        WritePreferences(PreferencesText({{"DRAW_TRUCK", legacyHost ? "1" : "0"}}));
        Load();
        ASSERT_TRUE(Pick("Push straight back"));
        ReleaseBrake();
        host->runFor(10);
        EXPECT_NE(host->geti(kStatus), 0) << "the push-back runs";
        EXPECT_TRUE(host->instances().empty());
        EXPECT_TRUE(host->loadedObjects().empty());
        Unload();
        host.reset();
    }
}

/// The host moves its local frame's origin (it does as the aircraft gets far from it): the aircraft gets
/// new local coordinates, and the tug, the cart and the push's end stay on their spots of the world.
TEST_F(InstancedTruck, TugCartAndPushStayOnTheirSpotsWhenTheLocalOriginMoves) {
    constexpr double kShiftLatDeg = 0.05, kShiftLonDeg = -0.08; // about 5.6 km north, 6 km west
    constexpr double kMetresPerDegLat = 111194.9;
    const auto moveOrigin = [&] {
        host->shiftLocalOrigin(host->getf("sim/flightmodel/position/lat_ref") + kShiftLatDeg,
                               host->getf("sim/flightmodel/position/lon_ref") + kShiftLonDeg);
        host->runFrames(1);
    };
    struct Offset {
        double x, z; ///< metres from the aircraft, local frame
    };
    const auto fromAircraft = [&](double x, double z) {
        return Offset{x - host->getf(kLocalX), z - host->getf(kLocalZ)};
    };
    const auto expectNear = [](Offset a, Offset b, double metres, const char* what) {
        EXPECT_NEAR(a.x, b.x, metres) << what;
        EXPECT_NEAR(a.z, b.z, metres) << what;
    };
    // Older hosts keep their positions as they were.
    options.xplaneVersion = kXPlane1141;
    Load();
    ASSERT_TRUE(Pick("Push straight back"));
    host->runFor(1); // the truck waits 3 s where it was put before driving up
    const double x = host->getf(kTruckX), z = host->getf(kTruckZ);
    moveOrigin();
    EXPECT_DOUBLE_EQ(host->getf(kTruckX), x);
    EXPECT_DOUBLE_EQ(host->getf(kTruckZ), z);
    Unload();
    host.reset();

    options.xplaneVersion = simhost::HostOptions().xplaneVersion;
    Load();
    ASSERT_TRUE(Pick("GPU"));
    host->runFor(1);
    ASSERT_TRUE(Pick("GPU")); // disconnected, still standing: a push is allowed
    const double lat0 = host->getf("sim/flightmodel/position/latitude");
    const double lon0 = host->getf("sim/flightmodel/position/longitude");
    ASSERT_TRUE(Pick("Push straight back"));
    host->runFor(3.5); // after its 3 s wait the truck drives up to the nose gear (the brake stays set)
    ASSERT_EQ(Instances("KLVdefault.obj").size(), 1u);
    ASSERT_EQ(Instances("GPU.obj").size(), 1u);
    const simhost::InstanceInfo tug = Instances("KLVdefault.obj")[0], cart = Instances("GPU.obj")[0];
    const Offset tugAt = fromAircraft(tug.x, tug.z), cartAt = fromAircraft(cart.x, cart.z);
    const Offset published = fromAircraft(host->getf(kTruckX), host->getf(kTruckZ));
    moveOrigin();
    const simhost::InstanceInfo tugNow = Instances("KLVdefault.obj")[0], cartNow = Instances("GPU.obj")[0];
    // The tug within the one step it drove in that frame.
    expectNear(fromAircraft(tugNow.x, tugNow.z), tugAt, 0.2, "the tug");
    expectNear(fromAircraft(host->getf(kTruckX), host->getf(kTruckZ)), published, 0.2, "published tug");
    expectNear(fromAircraft(cartNow.x, cartNow.z), cartAt, 0.05, "the cart");
    expectNear(fromAircraft(host->getf("halvern/kalvora/GPU/position_ogl_x"),
                            host->getf("halvern/kalvora/GPU/position_ogl_z")),
               cartAt, 0.05, "published cart");
    EXPECT_NEAR(cartNow.y, cart.y, 0.01) << "same apron, same height";
    EXPECT_GT(std::hypot(tugNow.x - tug.x, tugNow.z - tug.z), 5000.0) << "re-placed in the new frame";

    // It still finds the gear, and the push ends as far from the stand as ever.
    ReleaseBrake();
    ASSERT_TRUE(host->runUntil([&] { return host->getf(kGroundSpeed) > 0.05; }, 120)) << "never hooked up";
    host->runFrames(10); // a few decimetres into the push
    moveOrigin();
    ASSERT_TRUE(host->runUntil([&] { return host->getf(kGroundSpeed) < 1e-3; }, kPushTimeoutSeconds));
    const double north = (host->getf("sim/flightmodel/position/latitude") - lat0) * kMetresPerDegLat;
    const double east = (host->getf("sim/flightmodel/position/longitude") - lon0) * kMetresPerDegLat *
                        std::cos(lat0 * M_PI / 180.0);
    EXPECT_NEAR(std::hypot(north, east), 13.0, 0.5) << "the A320's push length";
}

} // namespace
} // namespace kalvora_test
