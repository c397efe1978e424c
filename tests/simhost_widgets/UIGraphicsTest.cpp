// XPUIGraphics: track geometry and a drawn progress track.
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
