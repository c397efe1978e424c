// The truck as drawn: on the apron under the gear at each frame, nothing when
// it is switched off or hidden, and in a rendered frame at the nose gear.
#include "PushbackFixture.h"

#include "XPLMCamera.h"
#include "graphics/GraphicsHooks.h"
#include "objects/Obj8Writer.h"
#include "objects/ObjModel.h"

#include <GL/gl.h>

#include <cstdlib>

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

    void TearDown() override {
        if (!dir_.empty()) std::system(("rm -rf '" + dir_ + "'").c_str());
        PushbackTest::TearDown();
    }

    /// Loads a 3 x 2 m red panel seen from both sides, standing on the apron, as the truck.
    void LoadPanelTruck() {
        char tmpl[] = "/tmp/kalvora-truck-XXXXXX";
        ASSERT_NE(mkdtemp(tmpl), nullptr);
        dir_ = tmpl;
        XObj8 obj;
        obj.geoTris.clear(8);
        // x y z nx ny nz s t; the model's origin is 1 m above the apron, so y runs -1..1.
        const float front[4][8] = {{-1.5f, -1, 0, 0, 0, 1, 0, 0},
                                   {1.5f, -1, 0, 0, 0, 1, 1, 0},
                                   {1.5f, 1, 0, 0, 0, 1, 1, 1},
                                   {-1.5f, 1, 0, 0, 0, 1, 0, 1}};
        int n[4];
        for (int i = 0; i < 4; ++i)
            n[i] = obj.geoTris.append(front[i]);
        for (int i : {0, 1, 2, 0, 2, 3, 0, 2, 1, 0, 3, 2})
            obj.indices.push_back(n[i]);
        XObjCmd8 reset{};
        reset.id = attr_Reset;
        XObjCmd8 tris{};
        tris.id = obj8_Tris;
        tris.idxOffset = 0;
        tris.idxCount = 12;
        XObjLOD8 lod;
        lod.cmds = {reset, tris};
        obj.lods = {lod};
        obj.texture = "panel.png";
        ASSERT_TRUE(XObj8Write((dir_ + "/panel.obj").c_str(), obj));
        simhost::gfx::Image red;
        red.width = red.height = 8;
        for (int i = 0; i < 64; ++i)
            red.rgba.insert(red.rgba.end(), {230, 20, 20, 255});
        ASSERT_TRUE(simhost::gfx::writePng(red, dir_ + "/panel.png"));
        ASSERT_TRUE(gKLVtheTruck.LoadXObject((dir_ + "/panel").c_str()));
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

    static int CameraCallBack(XPLMCameraPosition_t* position, int /*losingControl*/, void* refcon) {
        *position = *static_cast<XPLMCameraPosition_t*>(refcon);
        return 1;
    }

    /// Takes the camera and looks from (ex, ey, ez) at (tx, ty, tz), metres.
    void LookAt(double ex, double ey, double ez, double tx, double ty, double tz) {
        constexpr double kDegPerRad = 57.29577951;
        const double dx = tx - ex, dy = ty - ey, dz = tz - ez;
        camera_ = {};
        camera_.x = static_cast<float>(ex);
        camera_.y = static_cast<float>(ey);
        camera_.z = static_cast<float>(ez);
        camera_.heading = static_cast<float>(std::atan2(dx, -dz) * kDegPerRad); // clockwise from -z
        camera_.pitch = static_cast<float>(std::atan2(dy, std::hypot(dx, dz)) * kDegPerRad);
        camera_.zoom = 1.0f;
        XPLMControlCamera(xplm_ControlCameraForever, &CameraCallBack, &camera_);
    }

    simhost::gfx::Image Frame() {
        host->runFrames(1);
        simhost::gfx::Image image;
        EXPECT_TRUE(simhost::gfx::readFrame(image));
        return image;
    }

    std::string dir_;
    XPLMCameraPosition_t camera_{};
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
    LoadPanelTruck();
    PrefSwitchView = false; // the test holds the camera
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);
    ASSERT_TRUE(RunUntilTruckAtGear(20.0));
    double gx = 0.0, gy = 0.0, gz = 0.0, apron = 0.0;
    GearPostionOGL(gKLVGearIndex, &gx, &gy, &gz);
    GetApronElev(&apron);
    // 25 m ahead of the nose (heading 0 looks towards -z), 4 m up, looking at the gear.
    LookAt(gx, apron + 4.0, gz - 25.0, gx, apron + 1.0, gz);
    const simhost::gfx::Image shown = Frame();
    PrefDrawTruck = false;
    const simhost::gfx::Image hidden = Frame();

    int count = 0;
    double cx = 0.0, cy = 0.0;
    for (int y = 0; y < kFrameH; ++y)
        for (int x = 0; x < kFrameW; ++x) {
            const uint32_t p = shown.at(x, y), q = hidden.at(x, y);
            const int red = static_cast<int>(p >> 24), green = static_cast<int>((p >> 16) & 0xFF);
            if (p == q || red < green + 60) continue; // the panel is red where it differs
            ++count;
            cx += x;
            cy += y;
        }
    ASSERT_GT(count, 200) << "the truck is not in the frame";
    cx /= count;
    cy /= count;
    EXPECT_NEAR(cx, kFrameW / 2.0, kFrameW * 0.1); // straight ahead, where the gear is
    EXPECT_NEAR(cy, kFrameH / 2.0, kFrameH * 0.2);
}

} // namespace
} // namespace kalvora_test
