// The truck as drawn: on the apron under the gear at each frame, and nothing
// when it is switched off or hidden.
#include "PushbackFixture.h"

#include "graphics/GraphicsHooks.h"

namespace kalvora_test {
namespace {

class TruckDrawing : public PushbackTest {
protected:
    void SetUp() override {
        PushbackTest::SetUp();
        simhost::HostOptions options;
        options.render = true;
        options.xplaneVersion = 11410; // still calls the 3-D draw phases
        Reboot(options);
        if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL: " << simhost::gfx::unavailableReason();
    }
};

TEST_F(TruckDrawing, TruckStandsOneMetreAboveTheApronAtEachDrawAndIsNotDrawnWhenOffOrHidden) {
    PrefDrawTruck = false;
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);
    gKLVTruckY = 50.0;
    host->runFrames(2);
    EXPECT_DOUBLE_EQ(gKLVTruckY, 50.0);

    PrefDrawTruck = true;
    host->runFrames(1);
    double apron = 0.0;
    GetApronElev(&apron);
    EXPECT_DOUBLE_EQ(gKLVTruckY, apron);
    EXPECT_FLOAT_EQ(gKLVtheTruck.y, static_cast<float>(apron + 1.0));
    EXPECT_FLOAT_EQ(gKLVtheTruck.heading, myTruckHeading);

    resetAll(); // hidden
    gKLVTruckY = 50.0;
    host->runFrames(2);
    EXPECT_DOUBLE_EQ(gKLVTruckY, 50.0);
}

} // namespace
} // namespace kalvora_test
