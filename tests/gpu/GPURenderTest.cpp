// The GPU cart in rendered frames: the camera looks straight down on the nose
// gear with the aircraft's heading up, so the cart must show up ahead and to
// the right of the frame's centre, 45 degrees off the heading.
#include "GPUFixture.h"

#include "support/Frames.h"

namespace kalvora_test {
namespace {

constexpr int kFrameWidth = 320;      // pixels
constexpr int kFrameHeight = 240;     // pixels
constexpr double kCameraHeight = 25.; // metres above the apron

class GPURender : public GPUTest {
protected:
    void SetUp() override {
        GPUTest::SetUp();
        options.render = true;
        options.drawWorld = false;     // the cart is found as what is not sky
        options.xplaneVersion = 11000; // the drawing phases a cart is drawn in exist before 11.50
        options.screenWidth = kFrameWidth;
        options.screenHeight = kFrameHeight;
    }

    /// Loads the plug-in and holds the camera above the nose gear, the aircraft's heading up.
    void LoadAndLookDown() {
        Load();
        if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL rendering here";
        const simhost::Aircraft::Gear& nose = host->aircraft().gear.at(0);
        const double h = host->getf(kPsi) * kRadPerDeg;
        const double ahead = -nose.z; // body z points aft
        camera = CameraAt(host->getf(kLocalX) + ahead * std::sin(h) + nose.x * std::cos(h),
                          options.startElevationM + kCameraHeight,
                          host->getf(kLocalZ) - ahead * std::cos(h) + nose.x * std::sin(h), -90,
                          options.startHeadingDeg);
        HoldCamera(*host, &camera);
    }

    /// Draws a frame (kept under the build folder) and finds what is not sky, its centre from the frame's.
    Blob Frame(const std::string& name) {
        Blob blob = NotSky(GrabFrame(*host, "gpu-renders/" + name + ".png"));
        blob.cx -= kFrameWidth / 2.0;
        blob.cy -= kFrameHeight / 2.0;
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
    const double bearing = std::atan2(shown.cx, shown.cy) * 180.0 / M_PI;
    EXPECT_NEAR(bearing, 45.0, 8.0) << "right of the heading, which is up in the frame";
    EXPECT_NEAR(std::hypot(shown.cx, shown.cy), 58.0, 12.0);

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
