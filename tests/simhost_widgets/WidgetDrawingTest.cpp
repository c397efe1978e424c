// Widgets drawn for real: a window with its controls, and clipping.
#include "WidgetFixture.h"

#include "graphics/GraphicsHooks.h"

#include <GL/gl.h>

namespace simhost::testing {
namespace {

class WidgetDrawing : public WidgetTest {
protected:
    HostOptions options() override {
        HostOptions o;
        o.render = true;
        return o;
    }
};

TEST_F(WidgetDrawing, AWindowAndItsControlsAppearInTheFrame) {
    if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL rendering here";
    XPWidgetID window = mainWindow(100, 500, 400, 300, "Controls");
    XPSetWidgetProperty(window, xpProperty_MainWindowHasCloseBoxes, 1);
    XPWidgetID button = child(window, xpWidgetClass_Button, 120, 460, 220, 440, "OK");
    host->runFrames(1);
    // The window body is drawn over the sky, and the button differs from the body.
    gfx::Image frame;
    ASSERT_TRUE(gfx::readFrame(frame));
    uint32_t body = frame.at(390, 420); // right of every control
    uint32_t sky = frame.at(50, 50);
    EXPECT_NE(body, sky);
    EXPECT_NE(frame.at(125, 455), body);

    // A hidden button is not drawn: its area shows the window body.
    XPHideWidget(button);
    host->runFrames(1);
    ASSERT_TRUE(gfx::readFrame(frame));
    EXPECT_EQ(frame.at(125, 455), body);
}

/// A custom widget that paints far beyond its own rectangle.
int drawOverTheScreen(XPWidgetMessage msg, XPWidgetID, intptr_t, intptr_t) {
    if (msg != xpMsg_Draw) return 0;
    glColor3f(1, 0, 0);
    glBegin(GL_QUADS);
    glVertex2i(0, 0);
    glVertex2i(1024, 0);
    glVertex2i(1024, 768);
    glVertex2i(0, 768);
    glEnd();
    return 1;
}

TEST_F(WidgetDrawing, ClippingKeepsAWidgetsDrawingInsideItsExposedRectangle) {
    if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL rendering here";
    XPWidgetID window = mainWindow(100, 500, 400, 300, "Clipped");
    XPWidgetID painter = XPCreateCustomWidget(150, 450, 250, 350, 1, "", 0, window, drawOverTheScreen);
    XPSetWidgetProperty(painter, xpProperty_Clip, 1);
    host->runFrames(1);
    gfx::Image frame;
    ASSERT_TRUE(gfx::readFrame(frame));
    EXPECT_EQ(frame.at(200, 400) >> 8, 0xFF0000u);
    EXPECT_NE(frame.at(120, 320) >> 8, 0xFF0000u); // the window outside the widget
    EXPECT_NE(frame.at(50, 50) >> 8, 0xFF0000u);   // the sky

    XPSetWidgetProperty(painter, xpProperty_Clip, 0);
    host->runFrames(1);
    ASSERT_TRUE(gfx::readFrame(frame));
    EXPECT_EQ(frame.at(50, 50) >> 8, 0xFF0000u);
}

} // namespace
} // namespace simhost::testing
