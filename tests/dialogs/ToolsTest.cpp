// The two layout tools: the measuring window follows its own geometry, and the
// texture cutter turns a dragged rectangle into texture coordinates.
#include "dialogs/DialogsFixture.h"

#include "images/Texture.h"
#include "toolkit/MeasureWindow.h"
#include "toolkit/TextureCutter.h"

namespace kalvora_test {
namespace {

using ToolsTest = DialogsTest;

TEST_F(ToolsTest, MeasuringWindowShowsWhereItIsAfterAMove) {
    HV_MeasureWindow* m = OpenMeasureWindow();
    EXPECT_EQ(OpenMeasureWindow(), m) << "one at a time";
    simhost::WidgetHandle window = ShownWindow("Measure");
    ASSERT_NE(window, nullptr);
    simhost::WidgetInfo before;
    ASSERT_TRUE(simhost::widgetInfo(window, before));
    EXPECT_EQ(TextOf(m->positionLine),
              HV_MeasureWindow::PositionText(before.left, before.top, before.right, before.bottom));
    EXPECT_EQ(TextOf(m->sizeLine), std::to_string(before.right - before.left) + " x " +
                                       std::to_string(before.top - before.bottom) + " pixels");

    // Drag by the title bar.
    host->mouseDown(before.left + 60, before.top - 5);
    host->mouseDrag(before.left + 160, before.top - 45);
    host->mouseUp(before.left + 160, before.top - 45);
    host->runFrames(1);
    simhost::WidgetInfo moved;
    ASSERT_TRUE(simhost::widgetInfo(window, moved));
    ASSERT_NE(moved.left, before.left) << "the window did not move";
    EXPECT_EQ(TextOf(m->positionLine),
              HV_MeasureWindow::PositionText(moved.left, moved.top, moved.right, moved.bottom));
}

TEST_F(ToolsTest, TheTextureCutterTurnsADraggedRectangleIntoTexturePixelsAndCoordinates) {
    simhost::HostOptions drawing;
    drawing.render = true;
    Restart(drawing);
    if (!host->renderingAvailable()) GTEST_SKIP() << "no OpenGL context";
    HV_TextureCutter* notAPicture = OpenTextureCutter(KALVORA_SOURCE_DIR "/CMakeLists.txt");
    EXPECT_EQ(notAPicture->picture, nullptr) << "a file that is no picture still opens a window";
    EXPECT_NE(ShownWindow("Texture cutter"), nullptr);
    EXPECT_NE(host->logText().find("cannot read"), std::string::npos);
    HV_Window::CloseAll();

    HV_TextureCutter* cutter = OpenTextureCutter(KALVORA_SOURCE_DIR "/assets/Kalvora/Bitmaps/iconTruck.png");
    ASSERT_NE(cutter->picture, nullptr);
    const int textureWidth = static_cast<int>(cutter->texture->width);
    const int textureHeight = static_cast<int>(cutter->texture->height);
    ASSERT_GT(textureWidth, 0);
    simhost::WidgetInfo picture;
    ASSERT_TRUE(simhost::widgetInfo(cutter->picture->widget, picture));
    // From 10 right / 5 down of the picture's top-left corner to 40 right / 25 down.
    host->mouseDown(picture.left + 10, picture.top - 5);
    host->mouseDrag(picture.left + 30, picture.top - 15);
    host->mouseUp(picture.left + 40, picture.top - 25);
    EXPECT_EQ(cutter->cut.left, 10);
    EXPECT_EQ(cutter->cut.right, 40);
    EXPECT_EQ(cutter->cut.top, textureHeight - 5);
    EXPECT_EQ(cutter->cut.bottom, textureHeight - 25);
    EXPECT_FLOAT_EQ(cutter->cut.s1, 10.0f / textureWidth);
    EXPECT_FLOAT_EQ(cutter->cut.t2, (textureHeight - 5.0f) / textureHeight);
    EXPECT_EQ(TextOf(cutter->pixelLine), cutter->PixelText());
    EXPECT_NE(TextOf(cutter->pixelLine).find("(30 x 20)"), std::string::npos) << TextOf(cutter->pixelLine);
    EXPECT_NE(host->logText().find(cutter->PixelText()), std::string::npos) << "the cut is logged";
    // A drag that leaves the picture is held at its edge.
    host->mouseDown(picture.left + 70, picture.top - 50);
    host->mouseUp(picture.right + 200, picture.bottom - 200);
    EXPECT_EQ(cutter->cut.right, picture.right - picture.left);
    EXPECT_EQ(cutter->cut.bottom, textureHeight - (picture.top - picture.bottom));
}

} // namespace
} // namespace kalvora_test
