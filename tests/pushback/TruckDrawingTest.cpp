// The truck as drawn: on the apron under the gear at each frame, nothing when
// it is switched off or hidden, and in a rendered frame at the nose gear.
#include "PushbackFixture.h"

#include "XPLMCamera.h"
#include "graphics/GraphicsHooks.h"
#include "support/Frames.h"
#include "support/SmallModels.h"
#include "support/TempFolder.h"

#include <GL/gl.h>

namespace kalvora_test {
namespace {

constexpr int kFrameW = 320; // pixels
constexpr int kFrameH = 240; // pixels

class TruckDrawing : public PushbackTest {
protected:
    void SetUp() override {
        PushbackTest::SetUp();
        simhost::HostOptions options;
        options.render = true;
        options.xplaneVersion = 11410; // still calls the 3-D draw phases
        options.screenWidth = kFrameW;
        options.screenHeight = kFrameH;
        Reboot(options);
        if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL: " << simhost::gfx::unavailableReason();
        XPLMRegisterDrawCallback(SunLightCallBack, xplm_Phase_Airplanes, 1, nullptr);
    }

    /// A sun over the scene, as the simulator lights it before the aircraft phase.
    static int SunLightCallBack(XPLMDrawingPhase /*phase*/, int /*isBefore*/, void* /*refcon*/) {
        const GLfloat direction[4] = {0.4f, 1.0f, 0.6f, 0.0f};
        const GLfloat white[4] = {0.8f, 0.8f, 0.8f, 1.0f};
        const GLfloat ambient[4] = {0.45f, 0.45f, 0.45f, 1.0f};
        glEnable(GL_LIGHT0);
        glLightfv(GL_LIGHT0, GL_POSITION, direction);
        glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
        return 1;
    }
};

TEST_F(TruckDrawing, TruckStandsOneMetreAboveTheApronAtEachDraw) {
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);
    host->set("halvern/kalvora/truck/position_ogl_y", 50.0); // overwritten by the next draw
    host->runFrames(1);
    double apron = 0.0;
    GetApronElev(&apron);
    EXPECT_DOUBLE_EQ(gKLVTruckY, apron);
    EXPECT_FLOAT_EQ(gKLVtheTruck.y, static_cast<float>(apron + 1.0));
    EXPECT_FLOAT_EQ(gKLVtheTruck.x, static_cast<float>(gKLVTruckX));
    EXPECT_FLOAT_EQ(gKLVtheTruck.z, static_cast<float>(gKLVTruckZ));
    EXPECT_FLOAT_EQ(gKLVtheTruck.heading, myTruckHeading);
}

TEST_F(TruckDrawing, NothingIsDrawnWhenTheTruckIsOffOrHidden) {
    PrefDrawTruck = false;
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);
    gKLVTruckY = 50.0;
    host->runFrames(2);
    EXPECT_DOUBLE_EQ(gKLVTruckY, 50.0);

    PrefDrawTruck = true;
    resetAll(); // hidden
    host->runFrames(2);
    EXPECT_DOUBLE_EQ(gKLVTruckY, 50.0);
}

TEST_F(TruckDrawing, RenderedFrameShowsTheTruckAtTheNoseGear) {
    // A 3 x 2 m red panel seen from both sides as the truck; its origin is 1 m above the apron.
    TempFolder dir("kalvora-truck");
    dir.write("panel.obj", Obj8Text("panel.png", {Panel(-1.5f, -1, 1.5f, 1, 0)}, true));
    ASSERT_TRUE(WritePicture(dir.file("panel.png"), PictureFormat::Png, 8, Rgb{230, 20, 20}));
    ASSERT_TRUE(gKLVtheTruck.LoadXObject(dir.file("panel").c_str()));
    PrefSwitchView = false; // the test holds the camera
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);
    ASSERT_TRUE(RunUntilTruckAtGear(20.0));
    double gx = 0.0, gy = 0.0, gz = 0.0, apron = 0.0;
    GearPostionOGL(gKLVGearIndex, &gx, &gy, &gz);
    GetApronElev(&apron);
    // 25 m ahead of the nose (heading 0 looks towards -z), 4 m up, looking at the gear.
    XPLMCameraPosition_t camera = LookAt(gx, apron + 4.0, gz - 25.0, gx, apron + 1.0, gz);
    HoldCamera(*host, &camera);
    host->setDirectCaller(pluginId);
    const simhost::gfx::Image shown = GrabFrame(*host);
    PrefDrawTruck = false;
    const simhost::gfx::Image hidden = GrabFrame(*host);
    const Blob truck = PixelsWhere(shown, [&](int x, int y) {
        const Rgb c = ColorOf(shown.at(x, y));
        return shown.at(x, y) != hidden.at(x, y) && c.r >= c.g + 60; // the panel is red where it differs
    });
    ASSERT_GT(truck.count, 200) << "the truck is not in the frame";
    EXPECT_NEAR(truck.cx, kFrameW / 2.0, kFrameW * 0.1); // straight ahead, where the gear is
    EXPECT_NEAR(truck.cy, kFrameH / 2.0, kFrameH * 0.2);
}

} // namespace
} // namespace kalvora_test
