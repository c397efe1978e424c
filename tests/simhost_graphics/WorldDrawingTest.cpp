// The world in rendered frames: the apron below the horizon and the sky above
// it, and the user aircraft's nose wheel where its datarefs put it and where
// the plug-in reckons its nose gear.
#include "support/Frames.h"
#include "graphics/GraphicsHooks.h"
#include "simhost/Simhost.h"

#include "XPLMCamera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>

namespace simhost::testing {
namespace {

using kalvora_test::Pixel;

constexpr int kW = 320; ///< frame width, pixels
constexpr int kH = 240; ///< frame height, pixels
constexpr double kDegToRad = M_PI / 180.0;
constexpr int kSkyR = 115, kSkyG = 158, kSkyB = 209; ///< the renderer's clear colour (0.45, 0.62, 0.82)

using kalvora_test::ColorOf;

bool isSky(uint32_t p) {
    return !kalvora_test::Differ(ColorOf(p), {kSkyR, kSkyG, kSkyB}, 1);
}

bool isDark(uint32_t p) {
    const kalvora_test::Rgb c = ColorOf(p);
    return c.r < 70 && c.g < 70 && c.b < 70;
}

class WorldDrawing : public ::testing::Test {
protected:
    void Start(HostOptions o = {}) {
        o.render = true;
        o.screenWidth = kW;
        o.screenHeight = kH;
        host = std::make_unique<Host>(o);
        if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL: " << gfx::unavailableReason();
    }

    /// Renders one frame (kept under the build folder to look at) and returns it.
    gfx::Image Frame(const std::string& name) {
        return kalvora_test::GrabFrame(*host, "world-" + name + ".png");
    }

    static Pixel project(const XPLMCameraPosition_t& cam, double x, double y, double z) {
        return kalvora_test::Project(cam, x, y, z, kW, kH);
    }
    static bool inFrame(const Pixel& p) { return p.x >= 0 && p.x < kW && p.y >= 0 && p.y < kH; }

    std::unique_ptr<Host> host;
    XPLMCameraPosition_t camera{};
};

TEST_F(WorldDrawing, ChaseViewShowsTheApronBelowTheHorizonAndSkyAbove) {
    Start();
    if (::testing::Test::IsSkipped()) return;
    const gfx::Image frame = Frame("chase");
    const CameraState cam = host->camera();
    ASSERT_LT(cam.pitch, 0) << "the chase camera looks down at the aircraft";
    // The horizon: where a level ray from the eye lands.
    const int horizon = static_cast<int>(
        kH / 2.0 * (1 + std::tan(-cam.pitch * kDegToRad) / std::tan(kalvora_test::kHalfFovDeg * kDegToRad)));
    ASSERT_GT(horizon, kH / 2);
    ASSERT_LT(horizon, kH - 10);
    int skyAbove = 0, groundBelow = 0, rowsAbove = 0, rowsBelow = 0;
    for (int y = horizon + 3; y < kH; ++y, ++rowsAbove)
        for (int x = 0; x < kW; ++x)
            skyAbove += isSky(frame.at(x, y)) ? 1 : 0;
    for (int y = 0; y < horizon - 5; ++y, ++rowsBelow)
        for (int x = 0; x < kW; ++x)
            groundBelow += isSky(frame.at(x, y)) ? 0 : 1;
    EXPECT_EQ(skyAbove, rowsAbove * kW) << "nothing but sky above the horizon";
    EXPECT_EQ(groundBelow, rowsBelow * kW) << "no sky below the horizon";
}

/// A point on gear 0's leg, `down` metres below its attach point, in the local frame: the gear
/// datarefs turned by roll, pitch and heading as the plug-in turns them for its towing gear.
void GearPointLocal(Host& host, double down, double& x, double& y, double& z) {
    const double gx = host.getf("sim/aircraft/parts/acf_gear_xnodef", 0);
    const double gy = host.getf("sim/aircraft/parts/acf_gear_ynodef", 0) - down;
    const double gz = host.getf("sim/aircraft/parts/acf_gear_znodef", 0);
    const double phi = host.getf("sim/flightmodel/position/phi") * kDegToRad;
    const double theta = host.getf("sim/flightmodel/position/theta") * kDegToRad;
    const double psi = host.getf("sim/flightmodel/position/psi") * kDegToRad;
    const double x1 = std::cos(phi) * gx + std::sin(phi) * gy, y1 = std::cos(phi) * gy - std::sin(phi) * gx;
    const double z1 = std::cos(theta) * gz + std::sin(theta) * y1;
    x = host.getf("sim/flightmodel/position/local_x") + std::cos(psi) * x1 - std::sin(psi) * z1;
    y = host.getf("sim/flightmodel/position/local_y") + y1 * std::cos(theta) - std::sin(theta) * gz;
    z = host.getf("sim/flightmodel/position/local_z") + std::sin(psi) * x1 + std::cos(psi) * z1;
}

class FirstGear : public WorldDrawing, public ::testing::WithParamInterface<const char*> {};

/// The nose wheel (the tail wheel of the DC3, parked nose-up) is drawn where the plug-in puts the
/// tug's tow bar: below the gear's attach point, turned with the aircraft.
TEST_P(FirstGear, WheelStandsWhereThePlugInReckonsTheGear) {
    HostOptions o;
    o.aircraft = GetParam();
    o.startHeadingDeg = 30; // not along an axis: a wrong turn shows
    Start(o);
    if (::testing::Test::IsSkipped()) return;
    host->set("sim/flightmodel/position/local_x", 17.0);
    host->set("sim/flightmodel/position/local_z", -9.0);
    host->runFrames(1);
    double ax = 0, ay = 0, az = 0;
    GearPointLocal(*host, host->getf("sim/aircraft/parts/acf_gear_leglen", 0), ax, ay, az);
    const double tyre = host->getf("sim/aircraft/parts/acf_gear_tirrad", 0);
    // From the side, at axle height, 20 m east of the wheel, looking west.
    camera = kalvora_test::CameraAt(ax + 20, ay, az, 0, 270);
    camera.zoom = 2;
    kalvora_test::HoldCamera(*host, &camera);
    const gfx::Image side = Frame(std::string("first-wheel-") + GetParam());
    const Pixel axle = project(camera, ax, ay, az);
    ASSERT_TRUE(inFrame(axle));
    EXPECT_TRUE(isDark(side.at(axle.x, axle.y)))
        << "a tyre on the gear's axle, " << std::hex << side.at(axle.x, axle.y);
    // Three tyre radii fore and aft of it there is no tyre.
    for (double off : {-3.0, 3.0}) {
        const double psi = host->getf("sim/flightmodel/position/psi") * kDegToRad;
        const Pixel p = project(camera, ax - off * tyre * std::sin(psi), ay, az + off * tyre * std::cos(psi));
        ASSERT_TRUE(inFrame(p));
        EXPECT_FALSE(isDark(side.at(p.x, p.y))) << "beside the wheel, " << off << " radii";
    }
}

INSTANTIATE_TEST_SUITE_P(Profiles, FirstGear, ::testing::Values("A320", "C172", "B744", "DC3"));

} // namespace
} // namespace simhost::testing
