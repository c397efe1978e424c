// A rendered frame of an emulated X-Plane 12 (no 3-D drawing phases) shows the
// tug and the GPU cart, drawn only as object instances, where they stand.
#include "ModernFixture.h"

#include "XPLMCamera.h"
#include "graphics/GraphicsHooks.h"

#include <cmath>
#include <cstdlib>

namespace kalvora_test {
namespace {

constexpr int kFrameWidth = 320;      // pixels
constexpr int kFrameHeight = 240;     // pixels
constexpr double kCameraHeightM = 60; // above the apron
constexpr double kHalfFovDeg = 22.5;  // half of the renderer's vertical field of view at zoom 1
constexpr int kSkyTolerance = 40;     // colour difference that tells an object from the sky
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

    /// A second plug-in holds the camera straight above the aircraft, its heading up in the frame.
    void LookDown() {
        // Above the point kLookAheadM ahead of the aircraft's reference point: nose gear, cart and tug.
        const double h = options.startHeadingDeg * M_PI / 180.0;
        camera.x =
            static_cast<float>(host->getf("sim/flightmodel/position/local_x") + kLookAheadM * std::sin(h));
        camera.z =
            static_cast<float>(host->getf("sim/flightmodel/position/local_z") - kLookAheadM * std::cos(h));
        camera.y = static_cast<float>(options.startElevationM + kCameraHeightM);
        camera.pitch = -90.0f;
        camera.heading = static_cast<float>(options.startHeadingDeg);
        camera.zoom = 1.0f;
        simhost::InProcessPlugin holder;
        holder.name = holder.signature = "test.camera";
        const int id = host->addPlugin(holder);
        ASSERT_GE(id, 0);
        host->setDirectCaller(id);
        XPLMControlCamera(xplm_ControlCameraForever, HoldCamera, &camera);
    }

    static int HoldCamera(XPLMCameraPosition_t* out, int losingControl, void* refcon) {
        if (losingControl || !out) return 0;
        *out = *static_cast<XPLMCameraPosition_t*>(refcon);
        return 1;
    }

    /// Renders a frame (kept under the build folder) and returns it.
    simhost::gfx::Image Frame(const std::string& name) {
        host->runFrames(1);
        simhost::gfx::Image image;
        EXPECT_TRUE(simhost::gfx::readFrame(image));
        const std::string dir = std::string(KALVORA_BINARY_DIR) + "/modern-renders";
        fs::create_directories(dir);
        simhost::gfx::writePng(image, dir + "/" + name + ".png");
        return image;
    }

    static bool NotSky(const simhost::gfx::Image& image, int x, int y) {
        const uint32_t sky = image.at(1, 1), p = image.at(x, y);
        for (int shift = 8; shift <= 24; shift += 8)
            if (std::abs(int((p >> shift) & 0xFF) - int((sky >> shift) & 0xFF)) > kSkyTolerance) return true;
        return false;
    }

    static int NotSkyCount(const simhost::gfx::Image& image) {
        int n = 0;
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x)
                n += NotSky(image, x, y);
        return n;
    }

    /// Non-sky pixels around where an instance at local (x, z) appears in the frame.
    int PixelsAround(const simhost::gfx::Image& image, double x, double z) const {
        const double h = options.startHeadingDeg * M_PI / 180.0;
        const double dx = x - camera.x, dz = z - camera.z;
        const double ahead = dx * std::sin(h) - dz * std::cos(h), right = dx * std::cos(h) + dz * std::sin(h);
        const double metresPerHalfHeight = kCameraHeightM * std::tan(kHalfFovDeg * M_PI / 180.0);
        const int px = static_cast<int>(kFrameWidth / 2.0 + right / metresPerHalfHeight * kFrameHeight / 2.0);
        const int py =
            static_cast<int>(kFrameHeight / 2.0 + ahead / metresPerHalfHeight * kFrameHeight / 2.0);
        EXPECT_TRUE(px >= kSearchRadiusPx && px < kFrameWidth - kSearchRadiusPx && py >= kSearchRadiusPx &&
                    py < kFrameHeight - kSearchRadiusPx)
            << "in the frame: " << px << ", " << py;
        int n = 0;
        for (int y = py - kSearchRadiusPx; y <= py + kSearchRadiusPx; ++y)
            for (int x2 = px - kSearchRadiusPx; x2 <= px + kSearchRadiusPx; ++x2)
                n += NotSky(image, x2, y);
        return n;
    }

    XPLMCameraPosition_t camera{};
};

TEST_F(InstanceRender, TugAndCartShowWhereTheirInstancesStand) {
    Load();
    if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL rendering here";
    LookDown();
    EXPECT_EQ(NotSkyCount(Frame("modern-empty")), 0) << "nothing before the tug and the cart come";

    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/GPU"));
    host->runFor(1);
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/GPU")); // disconnected, still standing: a push is allowed
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Push straight back"));
    host->runFor(2);
    const simhost::gfx::Image frame = Frame("modern-tug-and-gpu");
    const std::vector<simhost::InstanceInfo> tug = Instances("KLVdefault.obj"), cart = Instances("GPU.obj");
    ASSERT_EQ(tug.size(), 1u);
    ASSERT_EQ(cart.size(), 1u);
    EXPECT_GT(PixelsAround(frame, tug[0].x, tug[0].z), 20) << "the tug";
    EXPECT_GT(PixelsAround(frame, cart[0].x, cart[0].z), 20) << "the cart";

    host->loadAirport();
    host->runFrames(2);
    EXPECT_EQ(NotSkyCount(Frame("modern-after-airport")), 0) << "both gone with their instances";
}

} // namespace
} // namespace kalvora_test
