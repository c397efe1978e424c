// The world in rendered frames: the apron below the horizon and the sky above
// it, the user aircraft's stand-in where its datarefs put it, and its nose
// wheel where the plug-in reckons its nose gear.
#include "WorldMath.h"
#include "support/Frames.h"
#include "graphics/GraphicsHooks.h"
#include "simhost/Simhost.h"

#include "XPLMCamera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
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

/// Grey: the three channels close together (concrete, white paint, the fuselage).
bool isGrey(uint32_t p) {
    const kalvora_test::Rgb c = ColorOf(p);
    return std::abs(c.r - c.g) < 16 && std::abs(c.g - c.b) < 16;
}

/// The top of the stand-in's fuselage: white in the sun, brighter than concrete, paint or wings.
bool isFuselage(uint32_t p) {
    const kalvora_test::Rgb c = ColorOf(p);
    return c.r > 215 && c.g > 215 && c.b > 215;
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

    void HoldCamera() { kalvora_test::HoldCamera(*host, &camera); }

    /// Renders one frame (kept under the build folder to look at) and returns it.
    gfx::Image Frame(const std::string& name) {
        return kalvora_test::GrabFrame(*host, "world-" + name + ".png");
    }

    static Pixel project(const XPLMCameraPosition_t& cam, double x, double y, double z) {
        return kalvora_test::Project(cam, x, y, z, kW, kH);
    }
    static bool inFrame(const Pixel& p) { return p.x >= 0 && p.x < kW && p.y >= 0 && p.y < kH; }

    /// Turns the aircraft to a heading through q, the attitude X-Plane keeps.
    void SetHeading(double psiDeg) {
        float q[4];
        detail::eulerToQuaternion(psiDeg, host->getf("sim/flightmodel/position/theta"), 0, q);
        for (int i = 0; i < 4; ++i)
            host->set("sim/flightmodel/position/q", q[i], i);
    }

    /// A point on the aircraft's centre line, `aft` metres behind its reference point and `up`
    /// above it, in the local frame (level aircraft).
    void BodyPoint(double aft, double up, double& x, double& y, double& z) {
        const double psi = host->getf("sim/flightmodel/position/psi") * kDegToRad;
        x = host->getf("sim/flightmodel/position/local_x") - aft * std::sin(psi);
        y = host->getf("sim/flightmodel/position/local_y") + up;
        z = host->getf("sim/flightmodel/position/local_z") + aft * std::cos(psi);
    }

    /// Frame pixels of the fuselage's top from nose gear to main gear, seen by `camera`.
    std::vector<Pixel> FuselageTop() {
        const Aircraft& a = host->aircraft();
        std::vector<Pixel> out;
        const double nose = a.gear[0].z, mains = a.gear[1].z;
        for (int i = 0; i <= 4; ++i) {
            double x = 0, y = 0, z = 0;
            BodyPoint(nose + (mains - nose) * i / 4.0, 0, x, y, z);
            out.push_back(project(camera, x, y, z));
        }
        return out;
    }

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
    int skyAbove = 0, groundBelow = 0, greyBelow = 0, rowsAbove = 0, rowsBelow = 0;
    for (int y = horizon + 3; y < kH; ++y, ++rowsAbove)
        for (int x = 0; x < kW; ++x)
            skyAbove += isSky(frame.at(x, y)) ? 1 : 0;
    for (int y = 0; y < horizon - 5; ++y, ++rowsBelow)
        for (int x = 0; x < kW; ++x) {
            groundBelow += isSky(frame.at(x, y)) ? 0 : 1;
            greyBelow += isGrey(frame.at(x, y)) ? 1 : 0;
        }
    EXPECT_EQ(skyAbove, rowsAbove * kW) << "nothing but sky above the horizon";
    EXPECT_EQ(groundBelow, rowsBelow * kW) << "no sky below the horizon";
    EXPECT_GT(greyBelow, rowsBelow * kW * 3 / 4) << "mostly concrete below it";
    // Straight below the camera's line of sight, at the bottom corners: concrete, neither black nor white.
    for (int x : {2, kW - 3}) {
        const uint32_t p = frame.at(x, 2);
        EXPECT_TRUE(isGrey(p) && !isDark(p) && ColorOf(p).r < 220) << std::hex << p;
    }
}

TEST_F(WorldDrawing, TheAircraftIsDrawnWhereItsDatarefsPutIt) {
    Start();
    if (::testing::Test::IsSkipped()) return;
    // Straight down from high above the aircraft, zoomed in, north up in the frame: from that far
    // the fuselage's top lands within a pixel of its centre line wherever the aircraft stands.
    camera.x = static_cast<float>(host->getf("sim/flightmodel/position/local_x"));
    camera.z = static_cast<float>(host->getf("sim/flightmodel/position/local_z"));
    camera.y = static_cast<float>(host->getf("sim/flightmodel/position/local_y") + 300);
    camera.pitch = -90;
    camera.heading = 0;
    camera.zoom = 3;
    HoldCamera();
    const gfx::Image parked = Frame("parked");
    const std::vector<Pixel> before = FuselageTop();
    for (const Pixel& p : before) {
        ASSERT_TRUE(inFrame(p));
        EXPECT_TRUE(isFuselage(parked.at(p.x, p.y))) << "the fuselage at " << p.x << "," << p.y;
    }

    // 25 m east: the fuselage moves along, the apron shows where it stood.
    host->set("sim/flightmodel/position/local_x", host->getf("sim/flightmodel/position/local_x") + 25);
    const gfx::Image moved = Frame("moved-east");
    const std::vector<Pixel> after = FuselageTop();
    for (size_t i = 0; i < after.size(); ++i) {
        ASSERT_TRUE(inFrame(after[i]));
        EXPECT_GT(after[i].x, before[i].x) << "east is to the right";
        EXPECT_TRUE(isFuselage(moved.at(after[i].x, after[i].y))) << "the fuselage moved along, point " << i;
        EXPECT_FALSE(isFuselage(moved.at(before[i].x, before[i].y))) << "none left behind, point " << i;
        EXPECT_FALSE(isFuselage(parked.at(after[i].x, after[i].y))) << "none there before, point " << i;
    }

    // Turned to 90 degrees: the fuselage lies east-west, its nose gear east of the reference point.
    SetHeading(90);
    const gfx::Image turned = Frame("turned-east");
    ASSERT_NEAR(host->getf("sim/flightmodel/position/psi"), 90, 0.01);
    const std::vector<Pixel> across = FuselageTop();
    EXPECT_GT(across.front().x, across.back().x + 20) << "nose gear to the right of the mains";
    for (size_t i = 0; i < across.size(); ++i)
        EXPECT_TRUE(isFuselage(turned.at(across[i].x, across[i].y))) << "across, point " << i;
    // Where the nose half stood, 5 m and more north of the reference point, is now wing or concrete.
    for (size_t i = 0; i < 3; ++i)
        EXPECT_FALSE(isFuselage(turned.at(after[i].x, after[i].y)))
            << "no longer north-south, point " << i << ": " << std::hex << turned.at(after[i].x, after[i].y);
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
    camera.x = static_cast<float>(ax + 20);
    camera.y = static_cast<float>(ay);
    camera.z = static_cast<float>(az);
    camera.heading = 270;
    camera.pitch = 0;
    camera.zoom = 2;
    HoldCamera();
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
