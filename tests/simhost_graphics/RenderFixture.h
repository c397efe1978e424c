// A small off-screen frame for pixel tests; skips when no GL context can be made.
#pragma once

#include "graphics/GraphicsHooks.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace simhost::testing {

constexpr int kFrameW = 256; ///< test frame width, pixels
constexpr int kFrameH = 192; ///< test frame height, pixels

/// RGBA packed as 0xRRGGBBAA.
constexpr uint32_t rgba(int r, int g, int b, int a = 255) {
    return (uint32_t(r) << 24) | (uint32_t(g) << 16) | (uint32_t(b) << 8) | uint32_t(a);
}
inline int red(uint32_t p) {
    return int(p >> 24);
}
inline int blue(uint32_t p) {
    return int((p >> 8) & 0xFF);
}

class RenderTest : public ::testing::Test {
protected:
    void SetUp() override {
        gfx::setEnabled(true);
        if (!gfx::available()) GTEST_SKIP() << "no OpenGL: " << gfx::unavailableReason();
        ASSERT_TRUE(gfx::beginFrame(kFrameW, kFrameH));
        gfx::setup2D();
        // A known black background instead of the sky colour.
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }
    /// Finishes the frame and returns its pixels.
    gfx::Image frame() {
        gfx::endFrame();
        gfx::Image image;
        EXPECT_TRUE(gfx::readFrame(image));
        return image;
    }
    /// A flat-coloured axis-aligned rectangle in 2-D pixels.
    static void fillRect(int l, int b, int r, int t, float cr, float cg, float cb, float ca = 1) {
        glColor4f(cr, cg, cb, ca);
        glBegin(GL_QUADS);
        glVertex2i(l, b);
        glVertex2i(r, b);
        glVertex2i(r, t);
        glVertex2i(l, t);
        glEnd();
    }
};

} // namespace simhost::testing
