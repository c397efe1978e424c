// When the host moves its local frame's origin (it does as the aircraft gets
// far from it), the aircraft gets new local coordinates; the tug, the cart and
// the push-back's end point must follow it onto the same spots of the world.
#include "ModernFixture.h"

#include <cmath>

namespace kalvora_test {
namespace {

constexpr const char* kLocalX = "sim/flightmodel/position/local_x";
constexpr const char* kLocalZ = "sim/flightmodel/position/local_z";
constexpr const char* kLatitude = "sim/flightmodel/position/latitude";
constexpr const char* kLongitude = "sim/flightmodel/position/longitude";
constexpr double kShiftLatDeg = 0.05;  // about 5.6 km north
constexpr double kShiftLonDeg = -0.08; // about 6 km west
constexpr double kMetresPerDegLat = 111194.9;
constexpr double kPushTimeoutSeconds = 600;

/// Offset of a point from the aircraft, local metres (x east, z south).
struct Offset {
    double x, z;
};

Offset FromAircraft(simhost::Host& h, double x, double z) {
    return {x - h.getf(kLocalX), z - h.getf(kLocalZ)};
}

void MoveOrigin(simhost::Host& h) {
    h.shiftLocalOrigin(h.getf("sim/flightmodel/position/lat_ref") + kShiftLatDeg,
                       h.getf("sim/flightmodel/position/lon_ref") + kShiftLonDeg);
}

/// Ground distance between two world positions, metres (flat earth: a few hundred metres at most).
double GroundMetres(double lat1, double lon1, double lat2, double lon2) {
    const double north = (lat2 - lat1) * kMetresPerDegLat;
    const double east = (lon2 - lon1) * kMetresPerDegLat * std::cos(lat1 * M_PI / 180.0);
    return std::hypot(north, east);
}

class LocalOrigin : public ModernTest {
protected:
    /// Pushes straight back, moving the origin on the way when asked; returns the distance pushed, metres.
    double StraightPushMetres(bool moveOrigin);
};

TEST_F(LocalOrigin, TugAndItsPublishedPositionStayOnTheirSpotWhileTheOriginMoves) {
    Load();
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Push straight back"));
    host->runFor(3.5); // after its 3 s wait the truck drives up to the nose gear (the brake stays set)
    ASSERT_EQ(Instances("KLVdefault.obj").size(), 1u);
    const simhost::InstanceInfo before = Instances("KLVdefault.obj")[0];
    const Offset tug = FromAircraft(*host, before.x, before.z);
    const Offset published = FromAircraft(*host, host->getf(kTruckX), host->getf(kTruckZ));

    MoveOrigin(*host);
    host->runFrames(1);
    const simhost::InstanceInfo after = Instances("KLVdefault.obj")[0];
    const Offset tugNow = FromAircraft(*host, after.x, after.z);
    const Offset publishedNow = FromAircraft(*host, host->getf(kTruckX), host->getf(kTruckZ));
    // Within the one step the truck drove in that frame.
    EXPECT_NEAR(tugNow.x, tug.x, 0.2);
    EXPECT_NEAR(tugNow.z, tug.z, 0.2);
    EXPECT_NEAR(publishedNow.x, published.x, 0.2);
    EXPECT_NEAR(publishedNow.z, published.z, 0.2);
    EXPECT_GT(std::hypot(after.x - before.x, after.z - before.z), 5000.0) << "re-placed in the new frame";

    // It still finds the gear, and pushes once the brake is released.
    host->set(kParkBrake, 0);
    EXPECT_TRUE(
        host->runUntil([&] { return host->getf("sim/flightmodel/position/groundspeed") > 0.05; }, 120))
        << "the truck never hooked up";
}

double LocalOrigin::StraightPushMetres(bool moveOrigin) {
    Load();
    simhost::Host& h = *host;
    const double lat0 = h.getf(kLatitude), lon0 = h.getf(kLongitude);
    EXPECT_TRUE(h.pickMenu("Plugins/Kalvora/Push straight back"));
    h.set(kParkBrake, 0);
    EXPECT_TRUE(h.runUntil([&] { return h.getf("sim/flightmodel/position/groundspeed") > 0.05; }, 120));
    h.runFrames(10); // a few decimetres into the push
    if (moveOrigin) MoveOrigin(h);
    EXPECT_TRUE(h.runUntil([&] { return h.getf("sim/flightmodel/position/groundspeed") < 1e-3; },
                           kPushTimeoutSeconds))
        << "the push never stopped";
    const double pushed = GroundMetres(lat0, lon0, h.getf(kLatitude), h.getf(kLongitude));
    host.reset();
    return pushed;
}

TEST_F(LocalOrigin, AStraightPushEndsAtTheSameSpotWhenTheOriginMovesOnTheWay) {
    const double plain = StraightPushMetres(false);
    const double moved = StraightPushMetres(true);
    EXPECT_GT(plain, 10.0);
    EXPECT_NEAR(moved, plain, 0.5);
}

TEST_F(LocalOrigin, CartStaysBesideTheNoseWhenTheOriginMoves) {
    Load();
    ASSERT_TRUE(host->pickMenu(kGPUMenu));
    host->runFor(2);
    ASSERT_EQ(Instances("GPU.obj").size(), 1u);
    const simhost::InstanceInfo before = Instances("GPU.obj")[0];
    const Offset cart = FromAircraft(*host, before.x, before.z);
    MoveOrigin(*host);
    host->runFrames(1);
    const simhost::InstanceInfo after = Instances("GPU.obj")[0];
    const Offset cartNow = FromAircraft(*host, after.x, after.z);
    EXPECT_NEAR(cartNow.x, cart.x, 0.05);
    EXPECT_NEAR(cartNow.z, cart.z, 0.05);
    EXPECT_NEAR(after.y, before.y, 0.01) << "same apron, same height";
    const Offset published = FromAircraft(*host, host->getf("halvern/kalvora/GPU/position_ogl_x"),
                                          host->getf("halvern/kalvora/GPU/position_ogl_z"));
    EXPECT_NEAR(published.x, cart.x, 0.05);
    EXPECT_NEAR(published.z, cart.z, 0.05);
}

TEST_F(LocalOrigin, OlderHostsKeepTheirPositionsAsTheyWere) {
    options.xplaneVersion = kXPlane1141;
    Load();
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Push straight back"));
    host->runFor(1); // the truck waits 3 s where it was put before driving up
    const double x = host->getf(kTruckX), z = host->getf(kTruckZ);
    MoveOrigin(*host);
    host->runFrames(1);
    EXPECT_DOUBLE_EQ(host->getf(kTruckX), x);
    EXPECT_DOUBLE_EQ(host->getf(kTruckZ), z);
}

} // namespace
} // namespace kalvora_test
