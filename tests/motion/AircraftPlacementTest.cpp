// Placing the aircraft: the quaternion and its inverse, the host following
// what is written, nose-wheel steering and the joystick override.
#include "../core/AppFixture.h"

#include "XPLMDataAccess.h"
#include "motion/AircraftPlacement.h"

#include <cmath>

namespace kalvora_test {
namespace {

using AircraftPlacement = AppTest;

TEST(Quaternion, IsAUnitQuaternionAndConvertsBack) {
    const float angles[][3] = {{30, 5, -3}, {359.9f, 2.5f, 0.5f}, {200, 45, -60}, {10, 0, 90}};
    for (const auto& hpr : angles) {
        SCOPED_TRACE(testing::Message() << hpr[0] << " " << hpr[1] << " " << hpr[2]);
        float q[4];
        HPRToQuaternion(hpr, q);
        EXPECT_NEAR(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3], 1.0, 1e-5);
        float back[3];
        QuaternionToHPR(q, back);
        if (std::fabs(hpr[2]) < 89.0f) { // away from the roll singularity of the inverse
            EXPECT_NEAR(HeadingDiff(back[0], hpr[0]), 0.0, 1e-3);
            EXPECT_NEAR(back[1], hpr[1], 1e-3);
            EXPECT_NEAR(back[2], hpr[2], 1e-3);
        }
    }
}

TEST_F(AircraftPlacement, ApplyPositionMovesTheAircraftAndTheHostFollowsTheQuaternion) {
    const double x0 = X(), z0 = Z();
    ApplyPosition(x0 + 5.0, z0 - 3.0, 123.4f);
    host->runFrames(1);
    EXPECT_NEAR(X(), x0 + 5.0, 1e-6);
    EXPECT_NEAR(Z(), z0 - 3.0, 1e-6);
    EXPECT_NEAR(HeadingDiff(Psi(), 123.4), 0.0, 1e-3);
    // Pitch and roll are kept.
    const float hpr[3] = {40.0f, 4.0f, -2.0f};
    float q[4];
    HPRToQuaternion(hpr, q);
    XPLMSetDatavf(gqDataRef, q, 0, 4);
    host->runFrames(1);
    ApplyPosition(X(), Z(), 80.0f);
    host->runFrames(1);
    EXPECT_NEAR(HeadingDiff(Psi(), 80.0), 0.0, 1e-3);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/theta"), 4.0, 1e-3);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/phi"), -2.0, 1e-3);
}

TEST_F(AircraftPlacement, NoseWheelSteeringAndItsOverrideOnlyWithAJoystick) {
    host->set("sim/joystick/has_joystick", 0);
    host->set("sim/joystick/yolk_heading_ratio", 0.1);
    for (int mode : {0, 1, 2, -1, -2})
        ApplyNWsteering(mode);
    OverrideJoystick(1);
    EXPECT_NEAR(host->getf("sim/joystick/yolk_heading_ratio"), 0.1, 1e-6) << "no joystick: untouched";
    EXPECT_EQ(host->geti("sim/operation/override/override_joystick_heading"), 0);

    // With a joystick: each mode ramps the ratio, stops at the limit of 0.3 and never passes the centre.
    host->set("sim/joystick/has_joystick", 1);
    const struct {
        int mode, frames;
        double ratio, tolerance;
    } steps[] = {{0, 1, 0.0, 0.0}, {1, 14, -0.28, 1e-5}, {1, 10, -0.3, 0.0201}, {-1, 40, 0.0, 0.0201},
                 {0, 1, 0.0, 0.0}, {2, 40, 0.3, 0.0201}, {-2, 40, 0.0, 0.0201}};
    for (const auto& step : steps) {
        for (int frame = 0; frame < step.frames; ++frame)
            ApplyNWsteering(step.mode);
        EXPECT_NEAR(host->getf("sim/joystick/yolk_heading_ratio"), step.ratio, step.tolerance)
            << "mode " << step.mode << " for " << step.frames << " frames";
    }
}

} // namespace
} // namespace kalvora_test
