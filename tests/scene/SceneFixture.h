// A simhost with rendering on (an X-Plane that still calls the 3-D draw phases),
// a camera the test holds, and a draw callback in the aircraft phase that runs
// what the test asks. Skips when no OpenGL context can be made on this machine.
#pragma once

#include "support/Frames.h"

#include "XPLMDisplay.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

namespace kalvora_scene_test {

using kalvora_test::Blob;
using kalvora_test::Difference;

constexpr int kFrameW = 320;         ///< rendered frame width, pixels
constexpr int kFrameH = 240;         ///< rendered frame height, pixels
constexpr int kLegacyXPlane = 11410; ///< an X-Plane that draws in the 3-D phases

class SceneTest : public ::testing::Test {
protected:
    /// Width and height of the rendered frames, pixels.
    virtual std::pair<int, int> Size() const { return {kFrameW, kFrameH}; }

    void SetUp() override {
        simhost::HostOptions options;
        options.render = true;
        options.xplaneVersion = kLegacyXPlane;
        std::tie(options.screenWidth, options.screenHeight) = Size();
        host_ = std::make_unique<simhost::Host>(options);
        ASSERT_GE(kalvora_test::HoldCamera(*host_, &camera_), 0);
        if (!host_->renderingAvailable()) GTEST_SKIP() << "no OpenGL: " << simhost::gfx::unavailableReason();
        XPLMRegisterDrawCallback(&DrawCallBack, xplm_Phase_Airplanes, 0, this);
        camera_ = kalvora_test::CameraAt(0, 0, 0, 0, 0);
    }

    void TearDown() override { host_.reset(); }

    /// Runs one frame with `draw` called in the aircraft phase and returns its pixels.
    simhost::gfx::Image Render(std::function<void()> draw) {
        draw_ = std::move(draw);
        host_->runFrames(1);
        draw_ = nullptr;
        simhost::gfx::Image image;
        EXPECT_TRUE(simhost::gfx::readFrame(image));
        return image;
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

private:
    static int DrawCallBack(XPLMDrawingPhase, int, void* ref) {
        auto* self = static_cast<SceneTest*>(ref);
        if (self->draw_) self->draw_();
        return 1;
    }
    std::function<void()> draw_;
};

} // namespace kalvora_scene_test
