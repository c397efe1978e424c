// A simhost with rendering on (an X-Plane that still calls the 3-D draw phases),
// one in-process plug-in that owns a draw callback in the aircraft phase and the
// camera, and helpers to render one frame and read where things landed.
// Skips when no OpenGL context can be made on this machine.
#pragma once

#include "graphics/GraphicsHooks.h"
#include "simhost/Simhost.h"

#include "XPLMCamera.h"
#include "XPLMDisplay.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>

namespace kalvora_scene_test {

constexpr int kFrameW = 320;         ///< rendered frame width, pixels
constexpr int kFrameH = 240;         ///< rendered frame height, pixels
constexpr int kLegacyXPlane = 11410; ///< an X-Plane that draws in the 3-D phases

/// Pixel statistics of a region where a frame differs from a reference frame.
struct Blob {
    int count = 0;              ///< pixels that differ
    double cx = 0, cy = 0;      ///< their centre, pixels (y from the bottom)
    double r = 0, g = 0, b = 0; ///< their mean colour, 0..255
};

class SceneTest : public ::testing::Test {
protected:
    /// Width and height of the rendered frames, pixels.
    struct FrameSize {
        int width, height;
    };
    virtual FrameSize Size() const { return {kFrameW, kFrameH}; }

    void SetUp() override {
        simhost::HostOptions options;
        options.render = true;
        options.xplaneVersion = kLegacyXPlane;
        options.screenWidth = Size().width;
        options.screenHeight = Size().height;
        host_ = std::make_unique<simhost::Host>(options);
        simhost::InProcessPlugin plugin;
        plugin.name = "SceneTest";
        plugin.signature = "kalvora.test.scene";
        plugin.description = "scene object drawing tests";
        const int id = host_->addPlugin(plugin);
        ASSERT_GE(id, 0);
        host_->setDirectCaller(id);
        if (!host_->renderingAvailable()) GTEST_SKIP() << "no OpenGL: " << simhost::gfx::unavailableReason();
        XPLMRegisterDrawCallback(&DrawCallBack, xplm_Phase_Airplanes, 0, this);
        XPLMControlCamera(xplm_ControlCameraForever, &CameraCallBack, this);
        LookFrom(0, 0, 0, 0, 0);
    }

    void TearDown() override { host_.reset(); }

    /// Puts the camera at (x, y, z) metres looking along `heading` (degrees) tilted by `pitch`.
    void LookFrom(float x, float y, float z, float pitch, float heading) {
        camera_ = {};
        camera_.x = x;
        camera_.y = y;
        camera_.z = z;
        camera_.pitch = pitch;
        camera_.heading = heading;
        camera_.zoom = 1;
    }

    /// Puts the camera at the eye point looking at the target point (metres).
    void LookAt(float ex, float ey, float ez, float tx, float ty, float tz) {
        const double dx = tx - ex, dy = ty - ey, dz = tz - ez;
        constexpr double kDegPerRad = 57.29577951;
        const double heading = std::atan2(dx, -dz) * kDegPerRad; // clockwise from -Z
        const double pitch = std::atan2(dy, std::sqrt(dx * dx + dz * dz)) * kDegPerRad;
        LookFrom(ex, ey, ez, static_cast<float>(pitch),
                 static_cast<float>(heading < 0 ? heading + 360 : heading));
    }

    /// Runs one frame with `draw` called in the aircraft phase and returns its pixels.
    simhost::gfx::Image Render(std::function<void()> draw) {
        draw_ = std::move(draw);
        host_->runFrames(1);
        draw_ = nullptr;
        simhost::gfx::Image image;
        EXPECT_TRUE(simhost::gfx::readFrame(image));
        return image;
    }

    /// Where `image` differs from `reference` by more than `tolerance` on any channel.
    static Blob Difference(const simhost::gfx::Image& image, const simhost::gfx::Image& reference,
                           int tolerance = 24) {
        Blob b;
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x) {
                const uint32_t p = image.at(x, y), q = reference.at(x, y);
                bool differs = false;
                for (int shift = 8; shift <= 24; shift += 8)
                    differs =
                        differs || std::abs(int((p >> shift) & 0xFF) - int((q >> shift) & 0xFF)) > tolerance;
                if (!differs) continue;
                ++b.count;
                b.cx += x;
                b.cy += y;
                b.r += p >> 24;
                b.g += (p >> 16) & 0xFF;
                b.b += (p >> 8) & 0xFF;
            }
        if (b.count) {
            b.cx /= b.count;
            b.cy /= b.count;
            b.r /= b.count;
            b.g /= b.count;
            b.b /= b.count;
        }
        return b;
    }

    /// A sun over the scene, as the simulator lights it before the aircraft phase.
    static void SunLight() {
        const GLfloat direction[4] = {0.4f, 1.0f, 0.6f, 0.0f};
        const GLfloat white[4] = {0.8f, 0.8f, 0.8f, 1.0f};
        const GLfloat ambient[4] = {0.45f, 0.45f, 0.45f, 1.0f};
        glEnable(GL_LIGHT0);
        glLightfv(GL_LIGHT0, GL_POSITION, direction);
        glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
    }

    simhost::Host& host() { return *host_; }

    std::unique_ptr<simhost::Host> host_;
    XPLMCameraPosition_t camera_{};
    std::function<void()> draw_;

private:
    static int DrawCallBack(XPLMDrawingPhase, int, void* ref) {
        auto* self = static_cast<SceneTest*>(ref);
        if (self->draw_) self->draw_();
        return 1;
    }
    static int CameraCallBack(XPLMCameraPosition_t* out, int losing, void* ref) {
        if (losing || !out) return 0;
        *out = static_cast<SceneTest*>(ref)->camera_;
        return 1;
    }
};

} // namespace kalvora_scene_test
