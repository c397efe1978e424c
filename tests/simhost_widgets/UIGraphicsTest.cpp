// XPUIGraphics: track geometry and the drawn window, element and track shapes.
#include "XPUIGraphics.h"
#include "simhost_graphics/RenderFixture.h"

namespace simhost::testing {
namespace {

struct Metrics {
    int vertical, down, downPage, thumb, upPage, up;
};

Metrics metrics(int x1, int y1, int x2, int y2, int lo, int hi, int value, XPTrackStyle style) {
    Metrics m{};
    XPGetTrackMetrics(x1, y1, x2, y2, lo, hi, value, style, &m.vertical, &m.down, &m.downPage, &m.thumb,
                      &m.upPage, &m.up);
    return m;
}

TEST(TrackMetrics, PartsFillTheLengthAndTheThumbFollowsTheValue) {
    for (XPTrackStyle style : {xpTrack_ScrollBar, xpTrack_Slider, xpTrack_Progress}) {
        for (int value : {0, 25, 100}) {
            Metrics m = metrics(0, 0, 200, 16, 0, 100, value, style);
            EXPECT_EQ(m.vertical, 0);
            EXPECT_EQ(m.down + m.downPage + m.thumb + m.upPage + m.up, 200) << style << " " << value;
        }
    }
    Metrics atMin = metrics(0, 0, 200, 16, 0, 100, 0, xpTrack_ScrollBar);
    Metrics atMax = metrics(0, 0, 200, 16, 0, 100, 100, xpTrack_ScrollBar);
    EXPECT_EQ(atMin.downPage, 0);
    EXPECT_EQ(atMax.upPage, 0);
    EXPECT_EQ(atMin.down, 16); // arrow buttons as long as the bar is thick
    EXPECT_EQ(metrics(0, 0, 200, 16, 0, 100, 50, xpTrack_Slider).down, 0);
    EXPECT_EQ(metrics(0, 0, 200, 16, 0, 100, 50, xpTrack_Progress).thumb, 0);
    // Out-of-range values pin the thumb to an end; an empty range leaves it at the start.
    EXPECT_EQ(metrics(0, 0, 200, 16, 0, 100, 500, xpTrack_Slider).upPage, 0);
    EXPECT_EQ(metrics(0, 0, 200, 16, 5, 5, 5, xpTrack_Slider).downPage, 0);
    // Taller than wide: vertical, and corners may come in any order.
    Metrics v = metrics(10, 300, 26, 100, 0, 10, 10, xpTrack_ScrollBar);
    EXPECT_EQ(v.vertical, 1);
    EXPECT_EQ(v.down + v.downPage + v.thumb + v.upPage + v.up, 200);
    EXPECT_EQ(v.upPage, 0);
}

using UIDrawing = RenderTest;

TEST_F(UIDrawing, AWindowCoversItsRectangleWhicheverCornersAreGiven) {
    XPDrawWindow(10, 10, 60, 50, xpWindow_SubWindow);
    XPDrawWindow(160, 50, 110, 10, xpWindow_SubWindow);
    gfx::Image img = frame();
    for (int dx = 0; dx < 50; ++dx)
        for (int dy = 0; dy < 40; ++dy)
            ASSERT_EQ(img.at(10 + dx, 10 + dy), img.at(110 + dx, 10 + dy)) << dx << "," << dy;
    EXPECT_NE(img.at(30, 30), rgba(0, 0, 0));
    EXPECT_EQ(img.at(65, 30), rgba(0, 0, 0));
}

TEST_F(UIDrawing, ALitCheckBoxShowsItsMarkAndAnUnlitOneDoesNot) {
    XPDrawElement(10, 10, 22, 22, xpElement_CheckBox, 0);
    XPDrawElement(40, 10, 52, 22, xpElement_CheckBox, 1);
    gfx::Image img = frame();
    auto differing = [&](int x0) {
        int n = 0;
        for (int y = 12; y < 20; ++y)
            for (int x = x0 + 2; x < x0 + 10; ++x)
                if (img.at(x, y) != img.at(x0 + 2, 12)) ++n;
        return n;
    };
    EXPECT_EQ(differing(10), 0);
    EXPECT_GT(differing(40), 3);
}

TEST_F(UIDrawing, AProgressTrackFillsInProportion) {
    XPDrawTrack(0, 10, 200, 26, 0, 100, 25, xpTrack_Progress, 0);
    gfx::Image img = frame();
    uint32_t filled = img.at(20, 18);
    uint32_t empty = img.at(150, 18);
    EXPECT_NE(filled, empty);
    EXPECT_EQ(img.at(45, 18), filled);
    EXPECT_EQ(img.at(55, 18), empty);
}

} // namespace
} // namespace simhost::testing
