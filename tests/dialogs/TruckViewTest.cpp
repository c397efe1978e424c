// The truck view during a push: where the camera sits, where it looks, and
// when it is given back.
#include "pushback/PushbackFixture.h"

#include "XPLMCamera.h"
#include "XPLMDefs.h"
#include "XPLMDisplay.h"
#include "truck/TruckView.h"

#include <cmath>

namespace kalvora_test {
namespace {

constexpr double kRadToDeg = 180.0 / M_PI;

class TruckViewTest : public PushbackTest {
protected:
    void SetUp() override {
        PushbackTest::SetUp();
        // As the plug-in registers it at enable.
        XPLMRegisterHotKey(XPLM_VK_F12, xplm_DownFlag, "Toggle truckview", TruckViewHKCallBack, nullptr);
    }

    /// Heading (degrees, 0 towards -z, clockwise) and pitch from the camera to the aircraft.
    void LookToAircraft(const simhost::CameraState& cam, double* heading, double* pitch) {
        const double dx = X() - cam.x;
        const double dz = Z() - cam.z;
        const double dy = host->getf("sim/flightmodel/position/local_y") - cam.y;
        *heading = std::atan2(dx, -dz) * kRadToDeg;
        *pitch = std::atan2(dy, std::hypot(dx, dz)) * kRadToDeg;
    }
};

TEST_F(TruckViewTest, DriverSeatIsAheadAlongTheHeading) {
    double x = 0.0, z = 0.0;
    DriverSeat(100.0, 200.0, 90.0f, &x, &z); // heading 90 points to +x
    EXPECT_NEAR(x, 103.5, 1e-4);
    EXPECT_NEAR(z, 200.0, 1e-4);
    DriverSeat(100.0, 200.0, 0.0f, &x, &z); // heading 0 points to -z
    EXPECT_NEAR(x, 100.0, 1e-4);
    EXPECT_NEAR(z, 196.5, 1e-4);
}

TEST_F(TruckViewTest, DuringAPushTheCameraSitsInTheTruckLookingAtTheAircraft) {
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);
    host->set(kParkBrake, 0);
    ASSERT_TRUE(RunUntilMoving(60.0));
    host->runFor(1.0);

    host->pressKey(XPLM_VK_F12);
    host->runFrames(1);
    const simhost::CameraState cam = host->camera();
    ASSERT_TRUE(cam.controlled);
    EXPECT_EQ(cam.howLong, 1) << "until the view changes";
    EXPECT_TRUE(cam.external) << "the spot view was chosen first";

    double seatX = 0.0, seatZ = 0.0;
    DriverSeat(gKLVTruckX, gKLVTruckZ, myTruckHeading, &seatX, &seatZ);
    EXPECT_NEAR(cam.x, seatX, 0.01);
    EXPECT_NEAR(cam.z, seatZ, 0.01);
    EXPECT_NEAR(std::hypot(cam.x - gKLVTruckX, cam.z - gKLVTruckZ), 3.5, 0.01);
    EXPECT_NEAR(cam.y, gKLVTruckY + 1.75, 0.01);
    double heading = 0.0, pitch = 0.0;
    LookToAircraft(cam, &heading, &pitch);
    EXPECT_NEAR(HeadingDiff(cam.heading, heading), 0.0, 0.5);
    EXPECT_NEAR(cam.pitch, pitch, 0.5);
    EXPECT_FLOAT_EQ(cam.roll, 0.0f);

    // The camera follows the truck while the push goes on.
    host->runFor(1.0);
    const simhost::CameraState later = host->camera();
    EXPECT_TRUE(later.controlled);
    DriverSeat(gKLVTruckX, gKLVTruckZ, myTruckHeading, &seatX, &seatZ);
    EXPECT_NEAR(later.x, seatX, 0.01);
    EXPECT_NEAR(later.z, seatZ, 0.01);

    ASSERT_TRUE(host->runCommand("sim/view/default_view"));
    host->runFrames(2);
    EXPECT_FALSE(host->camera().controlled) << "a view change gives the camera back";
}

TEST_F(TruckViewTest, TowingAtTheMainGearTheDriverLooksAway) {
    PrefFrontWheel = false;
    gKLVTruckX = X() + 20.0;
    gKLVTruckZ = Z() + 5.0;
    myTruckHeading = 30.0f;
    host->pressKey(XPLM_VK_F12);
    host->runFrames(1);
    const simhost::CameraState cam = host->camera();
    ASSERT_TRUE(cam.controlled);
    double heading = 0.0, pitch = 0.0;
    LookToAircraft(cam, &heading, &pitch);
    EXPECT_NEAR(HeadingDiff(cam.heading, heading + 180.0), 0.0, 0.5);
}

TEST_F(TruckViewTest, TheControllerKeepsTheCameraWhenToldItLosesIt) {
    XPLMCameraPosition_t position{1, 2, 3, 4, 5, 6, 7};
    EXPECT_EQ(TruckViewControler(&position, 1, nullptr), 1);
    EXPECT_FLOAT_EQ(position.x, 1.0f) << "nothing is written while losing control";
    EXPECT_EQ(TruckViewControler(nullptr, 0, nullptr), 1);
    EXPECT_EQ(TruckViewControler(&position, 0, nullptr), 1);
    EXPECT_FLOAT_EQ(position.zoom, 7.0f) << "the zoom is left as it is";
}

} // namespace
} // namespace kalvora_test
