// The XPLMGraphics.h functions: blending, decorated windows and the local frame.
#include "RenderFixture.h"

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "simhost/Simhost.h"

#include <cmath>

namespace simhost::testing {
namespace {

using GraphicsState = RenderTest;

TEST_F(GraphicsState, BlendingMixesOnlyWhenEnabled) {
    fillRect(0, 0, kFrameW, kFrameH, 0, 0, 1);
    XPLMSetGraphicsState(0, 0, 0, 0, 1, 0, 0);
    fillRect(0, 0, 50, 50, 1, 0, 0, 0.5f);
    XPLMSetGraphicsState(0, 0, 0, 0, 0, 0, 0);
    fillRect(100, 0, 150, 50, 1, 0, 0, 0.5f);
    gfx::Image img = frame();
    uint32_t mixed = img.at(25, 25);
    EXPECT_NEAR(red(mixed), 128, 2);
    EXPECT_NEAR(blue(mixed), 127, 2);
    EXPECT_EQ(img.at(125, 25) >> 8, rgba(255, 0, 0) >> 8);
}

TEST(LocalFrame, WorldToLocalAndBackIsTheIdentityWithNorthAtMinusZAndEastAtPlusX) {
    gfx::setReferencePoint(47.4647, 8.5492);
    double x, y, z, lat, lon, alt;
    XPLMWorldToLocal(47.6, 8.3, 1200, &x, &y, &z);
    XPLMLocalToWorld(x, y, z, &lat, &lon, &alt);
    EXPECT_NEAR(lat, 47.6, 1e-9);
    EXPECT_NEAR(lon, 8.3, 1e-9);
    EXPECT_NEAR(alt, 1200, 1e-6);
    gfx::setReferencePoint(47.0, 8.0);
    XPLMWorldToLocal(48.0, 8.0, 10, &x, &y, &z); // one degree north
    EXPECT_NEAR(z, -111195, 50);
    EXPECT_NEAR(x, 0, 1e-6);
    EXPECT_DOUBLE_EQ(y, 10);
    XPLMWorldToLocal(47.0, 9.0, 0, &x, &y, &z); // one degree east, shrunk by cos(latitude)
    EXPECT_NEAR(x, 111195 * std::cos(47.0 * M_PI / 180), 50);
    XPLMWorldToLocal(47.0, 8.0, 0, nullptr, nullptr, nullptr); // NULL outputs are allowed
    // Across the antimeridian the short way round is taken.
    gfx::setReferencePoint(0, 179.9);
    XPLMWorldToLocal(0, -179.9, 0, &x, &y, &z);
    EXPECT_NEAR(x, 0.2 * 111195, 50);
}

int gScreenDraws = 0;

TEST(HostWindows, DecoratedWindowsGetAFrameAndTitleBarAndVisibleDeviceScreensAreDrawn) {
    simhost::HostOptions options;
    options.render = true;
    options.drawWorld = false;
    options.screenWidth = kFrameW;
    options.screenHeight = kFrameH;
    simhost::Host host(options);
    if (!host.renderingAvailable()) GTEST_SKIP() << "no OpenGL: " << gfx::unavailableReason();
    simhost::InProcessPlugin self;
    self.name = self.signature = "frames";
    host.setDirectCaller(host.addPlugin(self));
    XPLMCreateWindow_t p{};
    p.structSize = sizeof p;
    p.left = 40;
    p.top = 120;
    p.right = 200;
    p.bottom = 40;
    p.visible = 1;
    p.decorateAsFloatingWindow = xplm_WindowDecorationRoundRectangle;
    p.layer = xplm_WindowLayerFloatingWindows;
    XPLMWindowID w = XPLMCreateWindowEx(&p);
    char id[] = "frames_screen";
    XPLMCreateAvionics_t device{};
    device.structSize = sizeof device;
    device.screenWidth = device.screenHeight = 64;
    device.drawCallback = [](void*) { ++gScreenDraws; };
    device.deviceID = id;
    XPLMAvionicsID screen = XPLMCreateAvionicsEx(&device);
    host.runFrames(1);
    gfx::Image img;
    ASSERT_TRUE(gfx::readFrame(img));
    const uint32_t sky = img.at(5, 5);
    EXPECT_NE(img.at(100, 130), sky); // the title bar above the top edge
    EXPECT_NE(img.at(38, 80), sky);   // the left edge
    EXPECT_EQ(img.at(100, 80), sky);  // inside: only what the plug-in draws
    EXPECT_EQ(gScreenDraws, 0);       // the pop-up is hidden
    XPLMSetAvionicsPopupVisible(screen, 1);
    XPLMSetWindowIsVisible(w, 0);
    host.runFrames(2);
    ASSERT_TRUE(gfx::readFrame(img));
    EXPECT_EQ(img.at(100, 130), sky);
    EXPECT_EQ(gScreenDraws, 2);
}

} // namespace
} // namespace simhost::testing
