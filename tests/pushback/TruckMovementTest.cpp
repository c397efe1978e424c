// The truck's geometry: park position, approach and arrival at the gear for
// every heading with the final heading, and the turn away and its end window.
#include "PushbackFixture.h"

namespace kalvora_test {
namespace {

class TruckMovement : public PushbackTest {
protected:
    void SetHeading(float psi) {
        host->set("sim/flightmodel/position/psi", psi);
        float hpr[3] = {psi, 0.0f, 0.0f};
        float q[4];
        HPRToQuaternion(hpr, q);
        for (int i = 0; i < 4; ++i)
            host->set("sim/flightmodel/position/q", q[i], i);
    }

    /// Steps the truck until it reaches the gear; the number of steps or -1.
    int ApproachSteps(int limit) {
        double gx = 0.0, gz = 0.0;
        Gear(&gx, &gz);
        const double step = PrefFrontWheel ? PrefStepValue : -PrefStepValue;
        for (int n = 0; n < limit; ++n) {
            if (TruckEndReached(gKLVTruckX, gKLVTruckZ, gx, gz)) return n;
            TruckApproach(gKLVTruckX, gKLVTruckZ, step, &gKLVTruckX, &gKLVTruckZ);
        }
        return -1;
    }
};

TEST_F(TruckMovement, ParkPositionApproachAndFinalHeadingForEveryHeading) {
    for (bool front : {true, false}) {
        PrefFrontWheel = front;
        for (float psi = 0.5f; psi < 360.0f; psi += 7.25f) {
            SCOPED_TRACE(testing::Message() << "front " << front << " heading " << psi);
            SetHeading(psi);
            SetGearIndex();
            // It parks 15 m from the gear along the axis: ahead of the nose gear facing the aircraft's
            // way, behind the main gear facing back (a heading left as it is, not normalised).
            CalcTruckParkPos(&gKLVTruckX, &gKLVTruckZ, &TruckInitialHdg);
            EXPECT_NEAR(TruckAheadOfGear(), front ? 15.0 : -15.0, 1e-3);
            EXPECT_NEAR(TruckToGear(), 15.0, 1e-3);
            EXPECT_FLOAT_EQ(TruckInitialHdg, front ? psi : psi - 180.0f);
            // It drives away facing back along the aircraft from the nose gear, its way from the main gear.
            EXPECT_NEAR(CalcTruckFinalHdg(), front ? std::fmod(psi + 180.0f, 360.0f) : psi, 1e-3);
            const int steps = ApproachSteps(400);
            ASSERT_GE(steps, 140); // 15 m at 0.1 m a step, give or take the grid
            EXPECT_LE(steps, 152);
            EXPECT_LT(TruckToGear(), 0.25);
        }
    }
}

TEST_F(TruckMovement, TurnAwayEndsOnlyWithinFiveDegreesPastTheFinalHeading) {
    TruckFinalHdg = 100.0f;
    double x = 7.0, z = 8.0;
    myTruckHeading = 102.0f; // already close: turns once, then stops without moving
    EXPECT_EQ(TruckAway(1.0, 2.0, 0.5, 1, &x, &z), 0);
    EXPECT_FLOAT_EQ(myTruckHeading, 102.4f);
    EXPECT_DOUBLE_EQ(x, 7.0);
    EXPECT_DOUBLE_EQ(z, 8.0);

    myTruckHeading = 99.8f; // 0.2 short on the other side: 359.8 does not end the turn
    EXPECT_EQ(TruckAway(1.0, 2.0, 0.5, 2, &x, &z), 1);
    myTruckHeading = 105.4f; // one step lands on exactly 5 past the final heading
    EXPECT_EQ(TruckAway(1.0, 2.0, 0.5, 2, &x, &z), 0);
}

} // namespace
} // namespace kalvora_test
