// A simhost with rendering on, one in-process plug-in that API calls are
// attributed to, and an off-screen 2-D frame whose pixels the tests read.
// Skips when no OpenGL context can be made on this machine.
#pragma once

#include "graphics/GraphicsHooks.h"
#include "simhost/Simhost.h"
#include "support/Frames.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <memory>

namespace kalvora_test {

constexpr int kFrameW = 256; ///< test frame width, pixels
constexpr int kFrameH = 192; ///< test frame height, pixels

class GlTest : public ::testing::Test {
protected:
    void SetUp() override {
        simhost::HostOptions options = Options();
        options.render = true;
        host_ = std::make_unique<simhost::Host>(options);
        simhost::InProcessPlugin plugin;
        plugin.name = plugin.signature = "kalvora.test.images_gl";
        const int id = host_->addPlugin(plugin);
        ASSERT_GE(id, 0);
        host_->setDirectCaller(id);
        if (!simhost::gfx::available()) GTEST_SKIP() << "no OpenGL: " << simhost::gfx::unavailableReason();
        StartFrame(0, 0, 0);
    }

    void TearDown() override { host_.reset(); }

    /// The emulated simulator; a test fixture may pick another version.
    virtual simhost::HostOptions Options() const { return {}; }

    /// Begins a new 2-D frame cleared to the given colour (0..1).
    void StartFrame(float r, float g, float b) {
        ASSERT_TRUE(simhost::gfx::beginFrame(kFrameW, kFrameH));
        simhost::gfx::setup2D();
        glClearColor(r, g, b, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }

    /// Finishes the frame and keeps its pixels for Px().
    void EndFrame() {
        simhost::gfx::endFrame();
        ASSERT_TRUE(simhost::gfx::readFrame(image_));
    }

    /// The pixel at (x, y), y counted from the bottom.
    Rgb Px(int x, int y) const { return ColorOf(image_.at(x, y)); }

    /// Pixels in [l, r) x [b, t) that match `pred`.
    template <typename Pred> int Count(int l, int b, int r, int t, Pred pred) const {
        return PixelsWhere(image_,
                           [&](int x, int y) { return x >= l && x < r && y >= b && y < t && pred(Px(x, y)); })
            .count;
    }

    static bool IsLit(Rgb p) { return p.r >= 20 || p.g >= 20 || p.b >= 20; }
    static bool IsBlack(Rgb p) { return !IsLit(p); }
    static bool IsRed(Rgb p) { return p.r > 200 && p.g < 60 && p.b < 60; }
    static bool IsBlue(Rgb p) { return p.b > 200 && p.r < 60 && p.g < 60; }
    /// Checks the pixel at (x, y) against a colour, each channel within `tolerance` (0..255).
    void ExpectPx(int x, int y, Rgb expected, int tolerance = 2) const {
        const Rgb p = Px(x, y);
        EXPECT_FALSE(Differ(p, expected, tolerance))
            << "at (" << x << ", " << y << "): " << p.r << ", " << p.g << ", " << p.b;
    }

    simhost::Host& host() { return *host_; }

    std::unique_ptr<simhost::Host> host_;
    simhost::gfx::Image image_;
};

} // namespace kalvora_test
