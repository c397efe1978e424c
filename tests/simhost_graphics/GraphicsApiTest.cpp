// The XPLMGraphics.h functions: blending, text, decorated windows and the local frame.
#include "RenderFixture.h"

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "simhost/Simhost.h"

#include <cmath>

namespace simhost::testing {
namespace {

using GraphicsState = RenderTest;
using Text = RenderTest;

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

TEST_F(Text, AStringLandsRightOfAndAboveItsOrigin) {
    float white[3] = {1, 1, 1};
    const char* text = "HELLO";
    XPLMDrawString(white, 100, 50, text, nullptr, xplmFont_Basic);
    gfx::Image img = frame();
    int width = static_cast<int>(XPLMMeasureString(xplmFont_Basic, text, 5));
    int charH = 0;
    XPLMGetFontDimensions(xplmFont_Basic, nullptr, &charH, nullptr);
    EXPECT_GT(width, 0);
    // Capitals sit on the baseline: every lit pixel lies inside the string's box.
    int inside = litPixels(img, 100, 50, 100 + width, 50 + charH);
    EXPECT_GT(inside, 20);
    EXPECT_EQ(litPixels(img, 0, 0, kFrameW, kFrameH), inside);
    // The colour is the one asked for.
    bool sawWhite = false;
    for (int y = 50; y < 50 + charH && !sawWhite; ++y)
        for (int x = 100; x < 100 + width; ++x)
            if (img.at(x, y) == rgba(255, 255, 255)) sawWhite = true;
    EXPECT_TRUE(sawWhite);
}

TEST_F(Text, WordWrapBreaksBetweenWordsOntoLowerLines) {
    float yellow[3] = {1, 1, 0};
    int charW = 0, charH = 0;
    XPLMGetFontDimensions(xplmFont_Basic, &charW, &charH, nullptr);
    int wrap = 6 * charW; // room for "ONE TWO" neither together nor with "THREE"
    XPLMDrawString(yellow, 10, 150, "ONE TWO THREE", &wrap, xplmFont_Basic);
    gfx::Image img = frame();
    EXPECT_GT(litPixels(img, 10, 150, 10 + wrap, 150 + charH), 0);             // ONE
    EXPECT_GT(litPixels(img, 10, 150 - charH, 10 + wrap, 150), 0);             // TWO
    EXPECT_GT(litPixels(img, 10, 150 - 2 * charH, 10 + wrap, 150 - charH), 0); // THREE
    EXPECT_EQ(litPixels(img, 10 + wrap, 0, kFrameW, kFrameH), 0);              // nothing past the width
}

TEST(LocalFrame, WorldToLocalAndBackIsTheIdentityNearTheReference) {
    gfx::setReferencePoint(47.4647, 8.5492);
    const double points[][3] = {
        {47.4647, 8.5492, 432}, {47.47, 8.55, 500}, {47.40, 8.60, 0}, {47.6, 8.3, 1200}};
    for (const auto& p : points) {
        double x, y, z, lat, lon, alt;
        XPLMWorldToLocal(p[0], p[1], p[2], &x, &y, &z);
        XPLMLocalToWorld(x, y, z, &lat, &lon, &alt);
        EXPECT_NEAR(lat, p[0], 1e-9);
        EXPECT_NEAR(lon, p[1], 1e-9);
        EXPECT_NEAR(alt, p[2], 1e-6);
    }
}

TEST(LocalFrame, NorthIsMinusZAndEastIsPlusX) {
    gfx::setReferencePoint(47.0, 8.0);
    double x, y, z;
    XPLMWorldToLocal(47.0, 8.0, 0, &x, &y, &z);
    EXPECT_NEAR(x, 0, 1e-6);
    EXPECT_NEAR(z, 0, 1e-6);
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
