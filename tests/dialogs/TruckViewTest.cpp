// The truck view: where the camera sits, where it looks (back at the aircraft,
// or away from it when towing at the main gear), and when it is given back.
#include "pushback/PushbackFixture.h"

#include "XPLMCamera.h"
#include "XPLMDefs.h"
#include "XPLMDisplay.h"
#include "truck/TruckView.h"

#include <cmath>

namespace kalvora_test {
namespace {

constexpr double kRadToDeg = 180.0 / M_PI;
constexpr double kSeatAheadM = 3.5, kSeatUpM = 1.75; // the driver's eye from the truck's reference point

class TruckViewTest : public PushbackTest {
protected:
    void SetUp() override {
        PushbackTest::SetUp();
        // As the plug-in registers it at enable.
        XPLMRegisterHotKey(XPLM_VK_F12, xplm_DownFlag, "Toggle truckview", TruckViewHKCallBack, nullptr);
    }

    /// Checks the camera sits in the truck, looking at the aircraft (or `awayDeg` off it).
    void ExpectDriversView(double awayDeg) {
        const simhost::CameraState cam = host->camera();
        ASSERT_TRUE(cam.controlled);
        EXPECT_EQ(cam.howLong, 1) << "until the view changes";
        const double h = myTruckHeading / kRadToDeg;
        EXPECT_NEAR(cam.x, gKLVTruckX + kSeatAheadM * std::sin(h), 0.01);
        EXPECT_NEAR(cam.z, gKLVTruckZ - kSeatAheadM * std::cos(h), 0.01);
        EXPECT_NEAR(cam.y, gKLVTruckY + kSeatUpM, 0.01);
        const double dx = X() - cam.x, dz = Z() - cam.z;
        const double dy = host->getf("sim/flightmodel/position/local_y") - cam.y;
        EXPECT_NEAR(HeadingDiff(cam.heading, std::atan2(dx, -dz) * kRadToDeg + awayDeg), 0.0, 0.5);
        if (awayDeg == 0) EXPECT_NEAR(cam.pitch, std::atan2(dy, std::hypot(dx, dz)) * kRadToDeg, 0.5);
        EXPECT_FLOAT_EQ(cam.roll, 0.0f);
    }
};

TEST_F(TruckViewTest, DuringAPushTheCameraSitsInTheTruckLookingAtTheAircraftUntilTheViewChanges) {
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);
    host->set(kParkBrake, 0);
    ASSERT_TRUE(RunUntilMoving(60.0));
    host->runFor(1.0);
    host->pressKey(XPLM_VK_F12);
    host->runFrames(1);
    EXPECT_TRUE(host->camera().external) << "the spot view was chosen first";
    ExpectDriversView(0);
    host->runFor(1.0);
    ExpectDriversView(0); // following the truck while the push goes on

    ASSERT_TRUE(host->runCommand("sim/view/default_view"));
    host->runFrames(2);
    EXPECT_FALSE(host->camera().controlled) << "a view change gives the camera back";

    // The controller keeps the camera when told it loses it, and writes nothing then.
    XPLMCameraPosition_t position{1, 2, 3, 4, 5, 6, 7};
    EXPECT_EQ(TruckViewControler(&position, 1, nullptr), 1);
    EXPECT_FLOAT_EQ(position.x, 1.0f);
    EXPECT_EQ(TruckViewControler(nullptr, 0, nullptr), 1);
    EXPECT_EQ(TruckViewControler(&position, 0, nullptr), 1);
    EXPECT_FLOAT_EQ(position.zoom, 7.0f) << "the zoom is left as it is";
}

TEST_F(TruckViewTest, TowingAtTheMainGearTheDriverLooksAway) {
    PrefFrontWheel = false;
    gKLVTruckX = X() + 20.0;
    gKLVTruckZ = Z() + 5.0;
    myTruckHeading = 30.0f;
    host->pressKey(XPLM_VK_F12);
    host->runFrames(1);
    ExpectDriversView(180.0);
}

} // namespace
} // namespace kalvora_test
