// A rendered frame of an emulated X-Plane 12 (no 3-D drawing phases) shows the
// tug and the GPU cart, drawn only as object instances, where they stand.
#include "ModernFixture.h"

#include "support/Frames.h"

#include <cmath>
#include <cstdlib>

namespace kalvora_test {
namespace {

constexpr int kFrameWidth = 320;      // pixels
constexpr int kFrameHeight = 240;     // pixels
constexpr double kCameraHeightM = 60; // above the apron
constexpr int kSearchRadiusPx = 20; // around an instance's origin (about 4 m: the tug's body is ahead of it)
constexpr double kLookAheadM = 15;  // camera ahead of the aircraft's reference point

class InstanceRender : public ModernTest {
protected:
    void SetUp() override {
        ModernTest::SetUp();
        options.render = true;
        options.drawWorld = false; // the instances are found as what is not sky
        options.screenWidth = kFrameWidth;
        options.screenHeight = kFrameHeight;
    }

    /// Holds the camera straight above the point kLookAheadM ahead of the aircraft's reference point (nose
    /// gear, cart and tug in view), the aircraft's heading up in the frame.
    void LookDown() {
        const double h = options.startHeadingDeg * kRadPerDeg;
        camera = CameraAt(host->getf(kLocalX) + kLookAheadM * std::sin(h),
                          options.startElevationM + kCameraHeightM,
                          host->getf(kLocalZ) - kLookAheadM * std::cos(h), -90, options.startHeadingDeg);
        HoldCamera(*host, &camera);
    }

    /// Non-sky pixels around where an instance standing on the apron at local (x, z) appears in the frame.
    int PixelsAround(const simhost::gfx::Image& image, double x, double z) const {
        const Pixel at = Project(camera, x, options.startElevationM, z, kFrameWidth, kFrameHeight);
        EXPECT_TRUE(at.x >= kSearchRadiusPx && at.x < kFrameWidth - kSearchRadiusPx &&
                    at.y >= kSearchRadiusPx && at.y < kFrameHeight - kSearchRadiusPx)
            << "in the frame: " << at.x << ", " << at.y;
        return PixelsWhere(image,
                           [&](int px, int py) {
                               return std::abs(px - at.x) <= kSearchRadiusPx &&
                                      std::abs(py - at.y) <= kSearchRadiusPx && NotSkyAt(image, px, py);
                           })
            .count;
    }

    XPLMCameraPosition_t camera{};
};

TEST_F(InstanceRender, TugAndCartShowWhereTheirInstancesStand) {
    Load();
    if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL rendering here";
    LookDown();
    EXPECT_EQ(NotSky(GrabFrame(*host, "modern-renders/modern-empty.png")).count, 0)
        << "nothing before the tug and the cart come";

    ASSERT_TRUE(Pick("GPU"));
    host->runFor(1);
    ASSERT_TRUE(Pick("GPU"));                // disconnected, still standing: a push is allowed
    ASSERT_TRUE(Pick("Push straight back")); // the view it switches to leaves the held camera alone
    host->runFor(2);
    const simhost::gfx::Image frame = GrabFrame(*host, "modern-renders/modern-tug-and-gpu.png");
    const std::vector<simhost::InstanceInfo> tug = Instances("KLVdefault.obj"), cart = Instances("GPU.obj");
    ASSERT_EQ(tug.size(), 1u);
    ASSERT_EQ(cart.size(), 1u);
    EXPECT_GT(PixelsAround(frame, tug[0].x, tug[0].z), 20) << "the tug";
    EXPECT_GT(PixelsAround(frame, cart[0].x, cart[0].z), 20) << "the cart";

    host->loadAirport();
    host->runFrames(2);
    EXPECT_EQ(NotSky(GrabFrame(*host, "modern-renders/modern-after-airport.png")).count, 0)
        << "both gone with their instances";
}

} // namespace
} // namespace kalvora_test
