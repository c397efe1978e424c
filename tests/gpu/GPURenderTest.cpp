// The GPU cart in rendered frames: the camera looks straight down on the nose
// gear with the aircraft's heading up, so the cart must show up ahead and to
// the right of the frame's centre, 45 degrees off the heading.
#include "GPUFixture.h"

#include "graphics/GraphicsHooks.h"

namespace kalvora_test {
namespace {

constexpr int kFrameWidth = 320;      // pixels
constexpr int kFrameHeight = 240;     // pixels
constexpr double kCameraHeight = 25.; // metres above the apron
constexpr int kSkyTolerance = 40;     // colour difference that tells an object from the sky

/// Pixels that are not the sky and their centre, bottom-left origin.
struct Blob {
    int count = 0;
    double x = 0, y = 0;
};

class GPURender : public GPUTest {
protected:
    void SetUp() override {
        GPUTest::SetUp();
        options.render = true;
        options.drawWorld = false; // the cart is found as what is not sky
        options.xplaneVersion = 11000; // the drawing phases a cart is drawn in exist before 11.50
        options.screenWidth = kFrameWidth;
        options.screenHeight = kFrameHeight;
    }

    /// Loads the plug-in and has the ground-ops plug-in hold the camera above the nose gear.
    void LoadAndLookDown() {
        Load();
        if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL rendering here";
        const simhost::Aircraft::Gear& nose = host->aircraft().gear.at(0);
        const double h = host->getf("sim/flightmodel/position/psi") * M_PI / 180.0;
        const double ahead = -nose.z; // body z points aft
        camera.x = static_cast<float>(host->getf("sim/flightmodel/position/local_x") + ahead * std::sin(h) +
                                      nose.x * std::cos(h));
        camera.z = static_cast<float>(host->getf("sim/flightmodel/position/local_z") - ahead * std::cos(h) +
                                      nose.x * std::sin(h));
        camera.y = static_cast<float>(options.startElevationM + kCameraHeight);
        camera.pitch = -90.0f;
        camera.heading = static_cast<float>(options.startHeadingDeg);
        camera.roll = 0.0f;
        camera.zoom = 1.0f;
        host->setDirectCaller(groundOps);
        XPLMControlCamera(xplm_ControlCameraForever, HoldCamera, &camera);
    }

    static int HoldCamera(XPLMCameraPosition_t* out, int losingControl, void* refcon) {
        if (losingControl || !out) return 0;
        *out = *static_cast<XPLMCameraPosition_t*>(refcon);
        return 1;
    }

    /// Draws a frame and finds what is not sky; keeps the picture under the build folder.
    Blob Frame(const std::string& name) {
        host->runFrames(1);
        simhost::gfx::Image image;
        EXPECT_TRUE(simhost::gfx::readFrame(image));
        const std::string dir = std::string(KALVORA_BINARY_DIR) + "/gpu-renders";
        fs::create_directories(dir);
        simhost::gfx::writePng(image, dir + "/" + name + ".png");
        const uint32_t sky = image.at(1, 1);
        Blob blob;
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x) {
                const uint32_t p = image.at(x, y);
                bool differs = false;
                for (int shift = 8; shift <= 24; shift += 8)
                    differs |=
                        std::abs(int((p >> shift) & 0xFF) - int((sky >> shift) & 0xFF)) > kSkyTolerance;
                if (!differs) continue;
                ++blob.count;
                blob.x += x;
                blob.y += y;
            }
        if (blob.count > 0) {
            blob.x = blob.x / blob.count - image.width / 2.0;
            blob.y = blob.y / blob.count - image.height / 2.0;
        }
        return blob;
    }

    XPLMCameraPosition_t camera{};
};

TEST_F(GPURender, TheCartStandsAheadRightOfTheNoseUntilANewAirport) {
    LoadAndLookDown();
    EXPECT_EQ(Frame("gpu-absent").count, 0);

    ASSERT_TRUE(host->pickMenu(kGPUMenu));
    const Blob shown = Frame("gpu-connected");
    ASSERT_GT(shown.count, 100);
    // 5 m at 25 m below a 45-degree field of view is about 58 pixels of a 240-pixel frame.
    const double bearing = std::atan2(shown.x, shown.y) * 180.0 / M_PI;
    EXPECT_NEAR(bearing, 45.0, 8.0) << "right of the heading, which is up in the frame";
    EXPECT_NEAR(std::hypot(shown.x, shown.y), 58.0, 12.0);

    ASSERT_TRUE(host->pickMenu(kGPUMenu));
    const Blob disconnected = Frame("gpu-disconnected");
    EXPECT_EQ(disconnected.count, shown.count) << "it stays where it was after the disconnection";

    host->loadAirport();
    EXPECT_EQ(Frame("gpu-after-airport").count, 0);
}

TEST_F(GPURender, NotDrawnWithoutGPUHandling) {
    WritePreferences(false);
    LoadAndLookDown();
    Send(kConnect);
    ASSERT_EQ(Status(), 1);
    EXPECT_EQ(Frame("gpu-not-handled").count, 0);
}

} // namespace
} // namespace kalvora_test
