// Placing the aircraft: the quaternion and its inverse, the host following
// what is written, nose-wheel steering and the joystick override.
#include "../core/AppFixture.h"

#include "XPLMDataAccess.h"
#include "motion/AircraftPlacement.h"

#include <cmath>

namespace kalvora_test {
namespace {

using AircraftPlacement = AppTest;

TEST_F(AircraftPlacement, ApplyPositionMovesTheAircraftAndTheHostFollowsTheQuaternion) {
    const double x0 = X(), z0 = Z();
    ApplyPosition(x0 + 5.0, z0 - 3.0, 123.4f);
    host->runFrames(1);
    EXPECT_NEAR(X(), x0 + 5.0, 1e-6);
    EXPECT_NEAR(Z(), z0 - 3.0, 1e-6);
    EXPECT_NEAR(HeadingDiff(Psi(), 123.4), 0.0, 1e-3);
    // Pitch and roll are kept; the quaternion converts back.
    const float hpr[3] = {200.0f, 45.0f, -60.0f};
    float q[4], back[3];
    HPRToQuaternion(hpr, q);
    QuaternionToHPR(q, back);
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(HeadingDiff(back[i], hpr[i]), 0.0, 1e-3) << "angle " << i;
    XPLMSetDatavf(gqDataRef, q, 0, 4);
    host->runFrames(1);
    ApplyPosition(X(), Z(), 80.0f);
    host->runFrames(1);
    EXPECT_NEAR(HeadingDiff(Psi(), 80.0), 0.0, 1e-3);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/theta"), 45.0, 1e-3);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/phi"), -60.0, 1e-3);
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
