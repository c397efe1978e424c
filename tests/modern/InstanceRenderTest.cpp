// A rendered frame of an emulated X-Plane 12 (no 3-D drawing phases) shows the
// tug and the GPU cart, drawn only as object instances, where they stand.
#include "ModernFixture.h"

#include "support/Frames.h"

#include <cstdlib>

namespace kalvora_test {
namespace {

using InstanceRender = ModernTest;

TEST_F(InstanceRender, TugAndCartShowWhereTheirInstancesStand) {
    constexpr int kWidth = 320, kHeight = 240; // pixels
    constexpr double kCameraHeightM = 60;      // above the apron
    constexpr double kLookAheadM = 15; // of the aircraft's reference point: nose gear, cart and tug in view
    constexpr int kSearchPx = 20; // around an instance's origin (about 4 m: the tug's body is ahead of it)
    options.render = true;
    options.drawWorld = false; // the instances are found as what is not sky
    options.screenWidth = kWidth;
    options.screenHeight = kHeight;
    Load();
    if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL rendering here";
    const double h = options.startHeadingDeg * kRadPerDeg;
    XPLMCameraPosition_t camera =
        CameraAt(host->getf(kLocalX) + kLookAheadM * std::sin(h), options.startElevationM + kCameraHeightM,
                 host->getf(kLocalZ) - kLookAheadM * std::cos(h), -90, options.startHeadingDeg);
    HoldCamera(*host, &camera);
    EXPECT_EQ(NotSky(GrabFrame(*host, "modern-renders/modern-empty.png")).count, 0)
        << "nothing before they come";

    ASSERT_TRUE(Pick("GPU"));
    host->runFor(1);
    ASSERT_TRUE(Pick("GPU"));                // disconnected, still standing: a push is allowed
    ASSERT_TRUE(Pick("Push straight back")); // the view it switches to leaves the held camera alone
    host->runFor(2);
    const simhost::gfx::Image frame = GrabFrame(*host, "modern-renders/modern-tug-and-gpu.png");
    for (const char* model : {"KLVdefault.obj", "GPU.obj"}) {
        SCOPED_TRACE(model);
        const std::vector<simhost::InstanceInfo> shown = Instances(model);
        ASSERT_EQ(shown.size(), 1u);
        const Pixel at = Project(camera, shown[0].x, options.startElevationM, shown[0].z, kWidth, kHeight);
        ASSERT_TRUE(at.x >= kSearchPx && at.x < kWidth - kSearchPx && at.y >= kSearchPx &&
                    at.y < kHeight - kSearchPx)
            << "in the frame: " << at.x << ", " << at.y;
        EXPECT_GT(PixelsWhere(frame,
                              [&](int x, int y) {
                                  return std::abs(x - at.x) <= kSearchPx && std::abs(y - at.y) <= kSearchPx &&
                                         NotSkyAt(frame, x, y);
                              })
                      .count,
                  20);
    }

    host->loadAirport();
    host->runFrames(2);
    EXPECT_EQ(NotSky(GrabFrame(*host, "modern-renders/modern-after-airport.png")).count, 0)
        << "both gone with their instances";
}

} // namespace
} // namespace kalvora_test
