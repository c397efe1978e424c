// A simhost with rendering on, one in-process plug-in that API calls are
// attributed to, and an off-screen 2-D frame whose pixels the tests read.
// Skips when no OpenGL context can be made on this machine.
#pragma once

#include "graphics/GraphicsHooks.h"
#include "simhost/Simhost.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

namespace kalvora_gl_test {

constexpr int kFrameW = 256; ///< test frame width, pixels
constexpr int kFrameH = 192; ///< test frame height, pixels

/// One pixel of a frame.
struct Rgb {
    int r, g, b;
};

class GlTest : public ::testing::Test {
protected:
    void SetUp() override {
        simhost::HostOptions options = Options();
        options.render = true;
        host_ = std::make_unique<simhost::Host>(options);
        simhost::InProcessPlugin plugin;
        plugin.name = "ImagesGlTest";
        plugin.signature = "kalvora.test.images_gl";
        plugin.description = "2-D drawing and texture tests";
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
    Rgb Px(int x, int y) const {
        const uint32_t p = image_.at(x, y);
        return {int(p >> 24), int((p >> 16) & 0xFF), int((p >> 8) & 0xFF)};
    }

    /// Pixels in [l, r) x [b, t) that match `pred`.
    template <typename Pred> int Count(int l, int b, int r, int t, Pred pred) const {
        int n = 0;
        for (int y = b; y < t; ++y)
            for (int x = l; x < r; ++x)
                n += pred(Px(x, y)) ? 1 : 0;
        return n;
    }

    static bool IsBlack(Rgb p) { return p.r < 20 && p.g < 20 && p.b < 20; }
    static bool IsRed(Rgb p) { return p.r > 200 && p.g < 60 && p.b < 60; }
    static bool IsGreen(Rgb p) { return p.g > 200 && p.r < 60 && p.b < 60; }
    static bool IsBlue(Rgb p) { return p.b > 200 && p.r < 60 && p.g < 60; }

    simhost::Host& host() { return *host_; }

    std::unique_ptr<simhost::Host> host_;
    simhost::gfx::Image image_;
};

} // namespace kalvora_gl_test
