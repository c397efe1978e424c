// The free-move panel and its keys driving a push that runs in simhost.
#include "pushback/PushbackFixture.h"

#include "XPLMDisplay.h"
#include "toolkit/Controls.h"
#include "toolkit/Window.h"
#include "truck/FreeMove.h"

#include <simhost/Widgets.h>

#include <cmath>

namespace kalvora_test {
namespace {

// The panel's default keys (virtual key codes).
constexpr int kKeyForward = 0xB3, kKeyRelease = 0xB4, kKeyLeft = 0xB5, kKeyRight = 0xB6;

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

TEST_F(FreeMoveTest, ThePanelsButtonsSetTheMotionRequests) {
    FreeMove* p = PushWithPanel();
    ASSERT_NE(p, nullptr);
    OpenFreeMovePanel();
    EXPECT_EQ(OpenedFreeMovePanel(), p) << "one panel at a time";

    // A turn keeps the direction; stop keeps the aircraft hooked up, and a turn then changes only the turn.
    const struct {
        HV_Panel* button;
        int direction, turn;
    } presses[] = {
        {p->forwardButton, kMoveForward, kRotateStraight}, {p->leftButton, kMoveForward, kRotateTailLeft},
        {p->rightButton, kMoveForward, kRotateTailRight},  {p->reverseButton, kMoveBackward, kRotateStraight},
        {p->stopButton, kMoveNone, kRotateStraight},       {p->leftButton, kMoveNone, kRotateTailLeft}};
    for (const auto& press : presses) {
        ASSERT_TRUE(Click(press.button));
        EXPECT_EQ(gKLVPlaneMoveDirection, press.direction);
        EXPECT_EQ(gKLVPlaneRotateDir, press.turn);
        EXPECT_TRUE(gKLVisPlaneMoving);
    }
    ASSERT_TRUE(SnifferRegistered());
    ASSERT_TRUE(Click(p->releaseButton));
    EXPECT_FALSE(gKLVisPlaneMoving);
    EXPECT_EQ(gKLVPlaneMoveDirection, kMoveNone);
    EXPECT_EQ(OpenedFreeMovePanel(), nullptr) << "release closes the panel";
    EXPECT_FALSE(SnifferRegistered());
}

TEST_F(FreeMoveTest, KeysAndTheSpeedSliderDriveThePushWhileThePanelIsOpen) {
    FreeMove* p = PushWithPanel();
    ASSERT_NE(p, nullptr);
    host->runFor(0.5);
    ASSERT_TRUE(simhost::dragSliderTo(*host, p->speedSlider->widget, 0));
    EXPECT_FLOAT_EQ(PrefTruckSpeed, 0.0f);
    EXPECT_DOUBLE_EQ(PrefStepValue, 0.0);
    host->runFrames(2);
    const double x = X(), z = Z(), truckX = gKLVTruckX, truckZ = gKLVTruckZ;
    host->runFor(2.0);
    EXPECT_TRUE(gKLVisPlaneMoving) << "the sequence goes on";
    EXPECT_NEAR(X(), x, 1e-6);
    EXPECT_NEAR(Z(), z, 1e-6);
    EXPECT_NEAR(gKLVTruckX, truckX, 1e-6);
    EXPECT_NEAR(gKLVTruckZ, truckZ, 1e-6);
    XPLMRegisterHotKey(static_cast<char>(gPref_FreeMove_l), xplm_DownFlag, "another use of the key", CountKey,
                       nullptr);
    gPassedKeys = 0;
    host->pressKey(kKeyForward);
    EXPECT_EQ(gKLVPlaneMoveDirection, kMoveForward);
    host->pressKey(kKeyLeft);
    EXPECT_EQ(gKLVPlaneRotateDir, kRotateTailLeft);
    EXPECT_EQ(gPassedKeys, 1) << "the sniffer passes the key on";
    host->pressKey(kKeyRight);
    EXPECT_EQ(gKLVPlaneRotateDir, kRotateTailRight);

    ASSERT_TRUE(simhost::clickCloseBox(*host, p->window->widget));
    EXPECT_EQ(OpenedFreeMovePanel(), nullptr);
    host->pressKey(kKeyRelease);
    EXPECT_EQ(gKLVPlaneMoveDirection, kMoveForward) << "keys do nothing once the panel is closed";
    EXPECT_TRUE(gKLVisPlaneMoving);
    OpenFreeMovePanel();
    p = OpenedFreeMovePanel();
    ASSERT_TRUE(simhost::dragSliderTo(*host, p->speedSlider->widget, 20));
    EXPECT_DOUBLE_EQ(PrefStepValue, 0.2);
    host->runFor(1.0);
    EXPECT_GT(std::hypot(X() - x, Z() - z), 1.0);
}

} // namespace
} // namespace kalvora_test
