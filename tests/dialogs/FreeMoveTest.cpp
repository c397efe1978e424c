// The free-move panel and keys driving a push that runs in simhost.
#include "pushback/PushbackFixture.h"

#include "XPLMDisplay.h"
#include "toolkit/Controls.h"
#include "toolkit/Window.h"
#include "truck/FreeMove.h"

#include <simhost/Widgets.h>

#include <cmath>

namespace kalvora_test {
namespace {

int gPassedKeys = 0;
void CountKey(void*) {
    ++gPassedKeys;
}

class FreeMoveTest : public PushbackTest {
protected:
    void TearDown() override {
        host->setDirectCaller(pluginId);
        if (FreeMove* p = OpenedFreeMovePanel()) simhost::clickCloseBox(*host, p->window->widget);
        PushbackTest::TearDown();
    }

    /// A straight push with the aircraft moving, and the panel open.
    FreeMove* PushWithPanel() {
        EXPECT_EQ(StartFromMenu(kMenuStraight), 0);
        host->set(kParkBrake, 0);
        EXPECT_TRUE(RunUntilMoving(60.0));
        OpenFreeMovePanel();
        return OpenedFreeMovePanel();
    }
    bool Click(HV_Panel* control) { return simhost::clickWidget(*host, control->widget); }
    bool SnifferRegistered() {
        for (const std::string& line : host->registrations(pluginId))
            if (line.rfind("key sniffer", 0) == 0) return true;
        return false;
    }
};

TEST_F(FreeMoveTest, PanelLayout) {
    OpenFreeMovePanel();
    FreeMove* p = OpenedFreeMovePanel();
    ASSERT_NE(p, nullptr);
    simhost::WidgetInfo info;
    ASSERT_TRUE(simhost::widgetInfo(p->window->widget, info));
    EXPECT_EQ(info.descriptor, "Truck Movements Control Panel");
    EXPECT_EQ(info.right - info.left, 330);
    for (const char* label :
         {" Left ", "Right ", "Forward", "Reverse", "Stop", "Release Truck", "Truck speed"})
        EXPECT_NE(simhost::findWidget(label, p->window->widget), nullptr) << "'" << label << "'";
    simhost::WidgetInfo left, forward, right, reverse;
    ASSERT_TRUE(simhost::widgetInfo(p->leftButton->widget, left));
    ASSERT_TRUE(simhost::widgetInfo(p->forwardButton->widget, forward));
    ASSERT_TRUE(simhost::widgetInfo(p->rightButton->widget, right));
    ASSERT_TRUE(simhost::widgetInfo(p->reverseButton->widget, reverse));
    EXPECT_LT(left.right, forward.left + 1);
    EXPECT_LT(forward.right, right.left + 1);
    EXPECT_EQ(left.top, right.top) << "left and right stand on one row";
    EXPECT_LT(forward.top, info.top);
    EXPECT_LT(reverse.top, forward.bottom - 60) << "the truck picture lies between forward and reverse";
    EXPECT_TRUE(SnifferRegistered());
    OpenFreeMovePanel();
    EXPECT_EQ(OpenedFreeMovePanel(), p) << "one panel at a time";
}

TEST_F(FreeMoveTest, ButtonsSetTheMotionRequests) {
    FreeMove* p = PushWithPanel();
    ASSERT_NE(p, nullptr);
    ASSERT_TRUE(Click(p->forwardButton));
    EXPECT_EQ(gKLVPlaneMoveDirection, kMoveForward);
    EXPECT_EQ(gKLVPlaneRotateDir, kRotateStraight);
    ASSERT_TRUE(Click(p->leftButton));
    EXPECT_EQ(gKLVPlaneRotateDir, kRotateTailLeft);
    EXPECT_EQ(gKLVPlaneMoveDirection, kMoveForward) << "a turn keeps the direction";
    ASSERT_TRUE(Click(p->rightButton));
    EXPECT_EQ(gKLVPlaneRotateDir, kRotateTailRight);
    ASSERT_TRUE(Click(p->reverseButton));
    EXPECT_EQ(gKLVPlaneMoveDirection, kMoveBackward);
    EXPECT_EQ(gKLVPlaneRotateDir, kRotateStraight);
    ASSERT_TRUE(Click(p->stopButton));
    EXPECT_EQ(gKLVPlaneMoveDirection, kMoveNone);
    EXPECT_TRUE(gKLVisPlaneMoving) << "stop keeps the aircraft hooked up";
    // Left while stopped changes only the turn request.
    ASSERT_TRUE(Click(p->leftButton));
    EXPECT_EQ(gKLVPlaneMoveDirection, kMoveNone);
    EXPECT_EQ(gKLVPlaneRotateDir, kRotateTailLeft);
    ASSERT_TRUE(Click(p->releaseButton));
    EXPECT_FALSE(gKLVisPlaneMoving);
    EXPECT_EQ(gKLVPlaneMoveDirection, kMoveNone);
    EXPECT_EQ(OpenedFreeMovePanel(), nullptr) << "release closes the panel";
    EXPECT_FALSE(SnifferRegistered());
}

TEST_F(FreeMoveTest, KeysSetTheMotionRequestsAndReachTheSimulator) {
    ASSERT_NE(PushWithPanel(), nullptr);
    XPLMRegisterHotKey(static_cast<char>(gPref_FreeMove_l), xplm_DownFlag, "another use of the key", CountKey,
                       nullptr);
    gPassedKeys = 0;
    host->pressKey(0xB3);
    EXPECT_EQ(gKLVPlaneMoveDirection, kMoveForward);
    EXPECT_EQ(gKLVPlaneRotateDir, kRotateStraight);
    host->pressKey(0xB5);
    EXPECT_EQ(gKLVPlaneRotateDir, kRotateTailLeft);
    EXPECT_EQ(gPassedKeys, 1) << "the sniffer passes the key on";
    host->pressKey(0xB6);
    EXPECT_EQ(gKLVPlaneRotateDir, kRotateTailRight);
    host->pressKey(0xB4);
    EXPECT_EQ(gKLVPlaneMoveDirection, kMoveNone);
    EXPECT_FALSE(gKLVisPlaneMoving);
}

TEST_F(FreeMoveTest, KeysDoNothingOnceThePanelIsClosed) {
    FreeMove* p = PushWithPanel();
    ASSERT_NE(p, nullptr);
    ASSERT_TRUE(simhost::clickCloseBox(*host, p->window->widget));
    EXPECT_EQ(OpenedFreeMovePanel(), nullptr);
    const int direction = gKLVPlaneMoveDirection;
    host->pressKey(0xB4);
    EXPECT_EQ(gKLVPlaneMoveDirection, direction);
    EXPECT_TRUE(gKLVisPlaneMoving);
}

TEST_F(FreeMoveTest, SliderAtZeroStopsTheMotion) {
    FreeMove* p = PushWithPanel();
    ASSERT_NE(p, nullptr);
    host->runFor(0.5);
    ASSERT_TRUE(simhost::dragSliderTo(*host, p->speedSlider->widget, 0));
    EXPECT_FLOAT_EQ(PrefTruckSpeed, 0.0f);
    EXPECT_DOUBLE_EQ(PrefStepValue, 0.0);
    host->runFrames(2);
    const double x = X(), z = Z();
    const double truckX = gKLVTruckX, truckZ = gKLVTruckZ;
    host->runFor(2.0);
    EXPECT_TRUE(gKLVisPlaneMoving) << "the sequence goes on";
    EXPECT_NEAR(X(), x, 1e-6);
    EXPECT_NEAR(Z(), z, 1e-6);
    EXPECT_NEAR(gKLVTruckX, truckX, 1e-6);
    EXPECT_NEAR(gKLVTruckZ, truckZ, 1e-6);
    ASSERT_TRUE(simhost::dragSliderTo(*host, p->speedSlider->widget, 20));
    EXPECT_DOUBLE_EQ(PrefStepValue, 0.2);
    host->runFor(1.0);
    EXPECT_GT(std::hypot(X() - x, Z() - z), 1.0);
}

} // namespace
} // namespace kalvora_test
