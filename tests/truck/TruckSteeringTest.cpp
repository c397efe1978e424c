// Truck geometry and steering: gear indices by host version, gear positions
// in the local frame for any attitude, and the truck's heading following the
// aircraft step by step.
#include "../core/AppFixture.h"

#include "XPLMDataAccess.h"
#include "motion/AircraftPlacement.h"

#include <cmath>

namespace kalvora_test {
namespace {

constexpr double kDeg = 3.14159265358979323846 / 180.0;

using TruckSteering = AppTest;

/// A body vector (x right, y up, z aft) turned by roll, then pitch (nose up), then heading
/// (clockwise seen from above), as three separate rotations.
void BodyToLocal(double x, double y, double z, double phi, double theta, double psi, double out[3]) {
    // Roll about the longitudinal axis: positive rolls the right side down.
    const double r = phi * kDeg, p = theta * kDeg, h = psi * kDeg;
    const double x1 = x * std::cos(r) + y * std::sin(r);
    const double y1 = y * std::cos(r) - x * std::sin(r);
    // Pitch about the lateral axis: positive lifts the nose (negative z) upwards.
    const double forward = -z;
    const double forward2 = forward * std::cos(p) - y1 * std::sin(p);
    const double y2 = y1 * std::cos(p) + forward * std::sin(p);
    // Heading about the vertical axis: 0 faces -z (north), 90 faces +x (east).
    out[0] = x1 * std::cos(h) + forward2 * std::sin(h);
    out[1] = y2;
    out[2] = x1 * std::sin(h) - forward2 * std::cos(h);
}

TEST_F(TruckSteering, GearIndicesDependOnTheHostVersion) {
    const struct {
        int version;
        int front, rear;
    } cases[] = {{800, 0, 1}, {799, 67, 68}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.version);
        XPVersion = c.version;
        PrefFrontWheel = true;
        EXPECT_EQ(SetGearIndex(), c.front);
        EXPECT_EQ(k_KLV_Rear_Gear, c.rear);
        PrefFrontWheel = false;
        EXPECT_EQ(SetGearIndex(), c.rear);
        EXPECT_EQ(ForceFrontGearUsage(), c.front);
        EXPECT_EQ(gKLVGearIndex, c.front);
    }
}

TEST_F(TruckSteering, GearPositionInTheLocalFrameForAnyAttitude) {
    const float attitudes[][3] = {{200, 0, 0}, {30, 5, -3}, {315, -8, 6}};
    for (const auto& a : attitudes) {
        SCOPED_TRACE(testing::Message() << "psi " << a[0] << " theta " << a[1] << " phi " << a[2]);
        float q[4];
        HPRToQuaternion(a, q);
        XPLMSetDatavf(gqDataRef, q, 0, 4);
        host->runFrames(1);
        double px = 0, py = 0, pz = 0;
        float psi = 0, theta = 0, phi = 0;
        GetPlaneAllPos(&px, &py, &pz, &psi, &theta, &phi);
        for (int gear = 0; gear < 2; ++gear) {
            const simhost::Aircraft::Gear& g = host->aircraft().gear[gear];
            double expected[3];
            BodyToLocal(g.x, g.y, g.z, phi, theta, psi, expected);
            double x = 0, y = 0, z = 0;
            GearPostionOGL(gear, &x, &y, &z);
            EXPECT_NEAR(x, px + expected[0], 1e-3) << "gear " << gear;
            EXPECT_NEAR(y, py + expected[1], 1e-3) << "gear " << gear;
            EXPECT_NEAR(z, pz + expected[2], 1e-3) << "gear " << gear;
        }
    }
    // Indices the host does not have read as zero, never outside the arrays.
    for (int bad : {-1, 67, 1000000}) {
        double x = 1, y = 1, z = 1;
        GetGearPos(bad, &x, &y, &z);
        EXPECT_EQ(x + y + z, 0.0) << bad;
    }
}

TEST_F(TruckSteering, TurningReachesAndHoldsElevenDegrees) {
    host->set("sim/flightmodel/position/psi", 100.0);
    PrefFrontWheel = true;
    ApplyTruckCurrentHeading();
    for (int step = 0; step < 100; ++step)
        CalcTruckSteering(1);
    EXPECT_FLOAT_EQ(theOffset, 11.0f);
    EXPECT_FLOAT_EQ(myTruckHeading, 111.0f);
    CalcTruckSteering(-2); // the same sense
    EXPECT_FLOAT_EQ(myTruckHeading, 111.0f);
}

TEST_F(TruckSteering, StraighteningEasesBackAndKeepsASmallPositiveOffset) {
    host->set("sim/flightmodel/position/psi", 200.0);
    PrefFrontWheel = true;
    theOffset = 11.0f;
    myTruckHeading = 211.0f;
    CalcTruckSteering(0);
    EXPECT_NEAR(theOffset, 10.85f, 1e-5);
    for (int step = 0; step < 200; ++step)
        CalcTruckSteering(0);
    // It stops once the truck is within a degree to that side: the small offset is kept.
    EXPECT_GT(theOffset, 0.0f);
    EXPECT_LE(theOffset, 1.0f);
    EXPECT_NEAR(myTruckHeading, 200.0f + theOffset, 1e-4);

    // From the other side it eases while 2 to 10 whole degrees away; outside that band it snaps to 0 at once.
    const struct {
        float offset;
        float after;
    } edges[] = {{-10.5f, -10.35f}, {-11.0f, 0.0f}, {-1.9f, 0.0f}};
    for (const auto& e : edges) {
        SCOPED_TRACE(e.offset);
        theOffset = e.offset;
        myTruckHeading = 200.0f + e.offset;
        CalcTruckSteering(0);
        EXPECT_NEAR(theOffset, e.after, 1e-5);
    }
}

TEST_F(TruckSteering, MainGearTowingTakesTheLastBranches) {
    host->set("sim/flightmodel/position/psi", 30.0);
    PrefFrontWheel = false;
    theOffset = 5.0f;
    ApplyTruckCurrentHeading();
    myTruckHeading += theOffset; // the truck faces the tail, 5 degrees off
    CalcTruckSteering(0);
    EXPECT_NEAR(theOffset, 4.85f, 1e-5);
    EXPECT_NEAR(myTruckHeading, -150.0f + 4.85f, 1e-4);
    CalcTruckSteering(1);
    EXPECT_NEAR(theOffset, 5.0f, 1e-5);
    CalcTruckSteering(2);
    EXPECT_NEAR(theOffset, 4.85f, 1e-5);
}

TEST_F(TruckSteering, SteeringStaysBoundedForAbsurdHeadings) {
    // Another plug-in may write anything into psi: the offset never leaves its range.
    for (double psi : {1e30, -1e30}) {
        SCOPED_TRACE(psi);
        host->set("sim/flightmodel/position/psi", psi);
        theOffset = 0.0f;
        for (int step = 0; step < 200; ++step)
            for (int turn = -2; turn <= 2; ++turn)
                CalcTruckSteering(turn);
        EXPECT_LE(std::fabs(theOffset), 11.15f);
    }
    // Not a number: refused where it is read, before the truck's heading takes it.
    host->set("sim/flightmodel/position/psi", NAN);
    myTruckHeading = 12.0f;
    EXPECT_THROW(CalcTruckSteering(1), NonFiniteHostValue);
    EXPECT_EQ(myTruckHeading, 12.0f);
}

} // namespace
} // namespace kalvora_test
