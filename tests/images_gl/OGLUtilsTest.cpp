// 2-D drawing functions, checked on the pixels of simhost's off-screen frame,
// and the layout of the nine-part sprite-sheet frame.
#include "GlFixture.h"
#include "toolkit/Colors.h"
#include "toolkit/OGLUtils.h"

#include "XPLMGraphics.h"

namespace kalvora_test {
namespace {

class Drawing : public GlTest {
protected:
    void SetUp() override {
        GlTest::SetUp();
        HV_OGLUtils::FindDataRefs(); // this test's simulator, as at plug-in start
    }
};

TEST_F(Drawing, RectanglesAndLinesCoverTheirPixels) {
    HV_OGLUtils::DrawFillRect(20, 60, 70, 30, HV_OGLUtils_ColorGreen, 1.0f); // columns 20..69, rows 30..59
    EndFrame();
    EXPECT_EQ(Count(20, 30, 70, 60, [](Rgb p) { return p.g > 220 && p.r > 90 && p.r < 115; }), 50 * 30);
    EXPECT_EQ(Count(0, 0, kFrameW, kFrameH, IsLit), 50 * 30);

    StartFrame(0, 0, 0);
    HV_OGLUtils::DrawFillRect(10, 50, 50, 10, HV_OGLUtils_ColorWhite, 0.5f);
    glColor4f(0.0f, 0.0f, 1.0f, 1.0f);
    HV_OGLUtils::DrawFillRect(60, 50, 100, 10, nullptr,
                              0.2f); // a null colour keeps the current one, alpha too
    HV_OGLUtils::DrawLine(10, 100, 200, 100, HV_OGLUtils_ColorWhite, 1.0f, 1.0f);
    EndFrame();
    EXPECT_NEAR(Px(30, 30).r, 128, 2);
    EXPECT_NEAR(Px(30, 30).b, 128, 2);
    EXPECT_TRUE(IsBlue(Px(80, 30)));
    EXPECT_GE(Count(12, 98, 198, 102, IsLit), 180);
    EXPECT_EQ(Count(0, 60, kFrameW, 97, IsLit) + Count(0, 103, kFrameW, kFrameH, IsLit), 0);
}

TEST_F(Drawing, TextIsBlackByDefaultAndStartsAtItsPoint) {
    StartFrame(1, 1, 1);
    HV_OGLUtils::DrawText("HELLO", 30, 100, nullptr, false, xplmFont_Basic, nullptr, false);
    EndFrame();
    const auto dark = [](Rgb p) { return p.r < 60 && p.g < 60 && p.b < 60; };
    EXPECT_GT(Count(30, 100, 100, 130, dark), 10);
    EXPECT_EQ(Count(0, 0, 29, kFrameH, dark), 0);                          // nothing left of x
    EXPECT_EQ(Count(0, 0, kFrameW, 99, dark), 0);                          // nothing below y
    EXPECT_EQ(host().geti("sim/graphics/misc/use_proportional_fonts"), 0); // set back after drawing
}

TEST(StretchedQuad, EdgesKeepTheirSizeTheMiddleIsTiledUpwardsAndAPartialTileHasAnEvenHeight) {
    // Sheet columns 0 | 8 | 24 | 32, rows 0 | 6 | 10 | 14: edges 8 and 6 wide, tiles 4 high.
    // Screen 100 x 30 from (10, 20): middle span 30 - 6 - 4 = 20 = five tiles, no partial one.
    const auto pieces = LayoutStretchedQuad(10, 20, 110, 50, 0, 8, 24, 32, 0, 6, 10, 14);
    ASSERT_EQ(pieces.size(), 3u * (1 + 5 + 1));
    const auto expect = [](const StretchedQuadPiece& p, std::vector<int> xyst) {
        EXPECT_EQ((std::vector<int>{p.x1, p.x2, p.y1, p.y2, p.s1, p.s2, p.t1, p.t2}), xyst);
    };
    expect(pieces[0], {10, 18, 20, 26, 0, 8, 0, 6});   // bottom left
    expect(pieces[1], {18, 102, 20, 26, 8, 24, 0, 6}); // stretched between the edges
    for (int i = 0; i < 5; ++i)
        expect(pieces[3 + 3 * i], {10, 18, 26 + 4 * i, 30 + 4 * i, 0, 8, 6, 10});
    expect(pieces.back(), {102, 110, 46, 50, 24, 32, 10, 14}); // top right

    const struct {
        int span, tile, full, partial;
    } cases[] = {{10, 4, 2, 2}, {9, 4, 2, 2}, {11, 4, 2, 4}, {8, 4, 2, 0}, {3, 4, 0, 4}, {0, 4, 0, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "span " << c.span << " tile " << c.tile);
        // Bottom edge 2 high, top edge 3 high, screen height = span + 5.
        const auto rows =
            LayoutStretchedQuad(0, 0, 50, c.span + 5, 0, 4, 8, 12, 0, 2, 2 + c.tile, 5 + c.tile);
        ASSERT_EQ(static_cast<int>(rows.size()) / 3, 2 + c.full + (c.partial ? 1 : 0));
        if (!c.partial) continue;
        const StretchedQuadPiece& p = rows[3 * (1 + c.full)];
        EXPECT_EQ(p.y1, 2 + c.full * c.tile);
        EXPECT_EQ(p.y2 - p.y1, c.partial);
        EXPECT_EQ(p.t1, 2);
        EXPECT_EQ(p.t2, 2 + c.partial); // the start of the tile, not its end
    }
}

} // namespace
} // namespace kalvora_test
