// 2-D drawing functions, checked on the pixels of simhost's off-screen frame,
// and the layout of the nine-part sprite-sheet frame.
#include "GlFixture.h"
#include "toolkit/Colors.h"
#include "toolkit/OGLUtils.h"

#include "XPLMGraphics.h"

#include <algorithm>

using kalvora_gl_test::GlTest;
using kalvora_gl_test::kFrameH;
using kalvora_gl_test::kFrameW;
using kalvora_gl_test::Rgb;

namespace {

class Drawing : public GlTest {
protected:
    void SetUp() override {
        GlTest::SetUp();
        HV_OGLUtils::FindDataRefs(); // this test's simulator, as at plug-in start
    }
};

/// Bounding box of the pixels that match a predicate; empty (l > r) when none.
struct Box {
    int l = 1 << 20, b = 1 << 20, r = -1, t = -1;
};

} // namespace

TEST_F(Drawing, FilledRectangleCoversExactlyItsPixels) {
    HV_OGLUtils::DrawFillRect(20, 60, 70, 30, HV_OGLUtils_ColorGreen, 1.0f);
    EndFrame();
    // Columns 20..69, rows 30..59.
    EXPECT_EQ(Count(20, 30, 70, 60, [](Rgb p) { return p.g > 220 && p.r > 90 && p.r < 115; }), 50 * 30);
    EXPECT_EQ(Count(0, 0, kFrameW, kFrameH, [](Rgb p) { return !IsBlack(p); }), 50 * 30);
}

TEST_F(Drawing, AlphaBlendsAndANullColourKeepsTheCurrentOne) {
    HV_OGLUtils::DrawFillRect(10, 50, 50, 10, HV_OGLUtils_ColorWhite, 0.5f);
    glColor4f(0.0f, 0.0f, 1.0f, 1.0f);
    HV_OGLUtils::DrawFillRect(60, 50, 100, 10, nullptr, 0.2f); // alpha ignored with no colour
    EndFrame();
    EXPECT_NEAR(Px(30, 30).r, 128, 2);
    EXPECT_NEAR(Px(30, 30).b, 128, 2);
    EXPECT_TRUE(IsBlue(Px(80, 30)));
}

TEST_F(Drawing, OutlineDrawsTheFourEdgesOnly) {
    HV_OGLUtils::DrawRect(40, 140, 140, 40, HV_OGLUtils_ColorWhite, 1.0f, 1.0f);
    EndFrame();
    auto lit = [](Rgb p) { return !IsBlack(p); };
    // Each edge lights a run of pixels within a pixel of its line.
    EXPECT_GE(Count(42, 138, 138, 142, lit), 90); // top
    EXPECT_GE(Count(42, 38, 138, 42, lit), 90);   // bottom
    EXPECT_GE(Count(38, 42, 42, 138, lit), 90);   // left
    EXPECT_GE(Count(138, 42, 142, 138, lit), 90); // right
    EXPECT_EQ(Count(43, 43, 137, 137, lit), 0);   // hollow
}

TEST_F(Drawing, BevelPutsTheFirstColourTopLeftAndTheSecondBottomRight) {
    float light[3] = {1, 0, 0}, dark[3] = {0, 1, 0};
    HV_OGLUtils::DrawRectBorders(40, 140, 140, 40, light, 1.0f, dark, 1.0f, 1.0f);
    EndFrame();
    EXPECT_GE(Count(42, 138, 138, 142, IsRed), 90);   // top
    EXPECT_GE(Count(38, 42, 42, 138, IsRed), 90);     // left
    EXPECT_GE(Count(138, 42, 142, 138, IsGreen), 90); // right
    EXPECT_GE(Count(42, 38, 138, 42, IsGreen), 90);   // bottom
    EXPECT_EQ(Count(42, 138, 138, 142, IsGreen), 0);
    EXPECT_EQ(Count(42, 38, 138, 42, IsRed), 0);
}

TEST_F(Drawing, BevelWithNoFirstWidthDrawsOnlyRightAndBottom) {
    float light[3] = {1, 0, 0}, dark[3] = {0, 1, 0};
    HV_OGLUtils::DrawRectBorders(40, 140, 140, 40, light, 0.0f, dark, 3.0f, 1.0f);
    EndFrame();
    EXPECT_EQ(Count(0, 0, kFrameW, kFrameH, IsRed), 0);
    EXPECT_GE(Count(136, 42, 144, 138, IsGreen), 3 * 90); // three pixels wide
    EXPECT_GE(Count(42, 36, 138, 44, IsGreen), 3 * 90);
    EXPECT_EQ(Count(30, 60, 60, 138, IsGreen), 0); // no left edge
}

TEST_F(Drawing, LineRunsBetweenItsEnds) {
    HV_OGLUtils::DrawLine(10, 100, 200, 100, HV_OGLUtils_ColorWhite, 1.0f, 1.0f);
    EndFrame();
    auto lit = [](Rgb p) { return !IsBlack(p); };
    EXPECT_GE(Count(12, 98, 198, 102, lit), 180);
    EXPECT_EQ(Count(0, 0, kFrameW, 97, lit), 0);
    EXPECT_EQ(Count(0, 103, kFrameW, kFrameH, lit), 0);
}

TEST_F(Drawing, TextIsBlackByDefaultAndItsShadowIsOnePixelOff) {
    StartFrame(1, 1, 1);
    HV_OGLUtils::DrawText("HELLO", 30, 100, nullptr, false, xplmFont_Basic, nullptr, false);
    EndFrame();
    auto dark = [](Rgb p) { return p.r < 60 && p.g < 60 && p.b < 60; };
    EXPECT_GT(Count(30, 100, 100, 130, dark), 10);
    EXPECT_EQ(Count(0, 0, 29, kFrameH, dark), 0); // nothing left of x
    EXPECT_EQ(Count(0, 0, kFrameW, 99, dark), 0); // nothing below y
    EXPECT_EQ(host().geti("sim/graphics/misc/use_proportional_fonts"), 0);

    for (bool upLeft : {true, false}) {
        SCOPED_TRACE(upLeft ? "up-left" : "down-right");
        StartFrame(0, 0, 0);
        float green[3] = {0, 1, 0};
        HV_OGLUtils::DrawText("HELLO", 60, 80, green, true, xplmFont_Basic, HV_OGLUtils_ColorRed, upLeft);
        EndFrame();
        Box text, shadow;
        for (int y = 0; y < kFrameH; ++y)
            for (int x = 0; x < kFrameW; ++x) {
                Box* box =
                    IsGreen(Px(x, y)) ? &text : (Px(x, y).r > 180 && Px(x, y).g < 140 ? &shadow : nullptr);
                if (!box) continue;
                box->l = std::min(box->l, x);
                box->r = std::max(box->r, x);
                box->b = std::min(box->b, y);
                box->t = std::max(box->t, y);
            }
        ASSERT_LE(text.l, text.r);
        ASSERT_LE(shadow.l, shadow.r);
        if (upLeft) {
            EXPECT_EQ(shadow.l, text.l - 1);
            EXPECT_EQ(shadow.t, text.t + 1);
        } else {
            EXPECT_EQ(shadow.r, text.r + 1);
            EXPECT_EQ(shadow.b, text.b - 1);
        }
        EXPECT_EQ(host().geti("sim/graphics/misc/use_proportional_fonts"), 0); // set back after drawing
    }
}

TEST(StretchedQuad, EdgesKeepTheirSizeAndTheMiddleIsTiledUpwards) {
    // Sheet columns 0 | 8 | 24 | 32, rows 0 | 6 | 10 | 14: edges 8 and 6 wide, tiles 4 high.
    // Screen 100 x 30 from (10, 20): middle span 30 - 6 - 4 = 20 = five tiles, no partial one.
    auto pieces = LayoutStretchedQuad(10, 20, 110, 50, 0, 8, 24, 32, 0, 6, 10, 14);
    ASSERT_EQ(pieces.size(), 3u * (1 + 5 + 1));
    const StretchedQuadPiece& bl = pieces[0];
    EXPECT_EQ(bl.x1, 10);
    EXPECT_EQ(bl.x2, 18);
    EXPECT_EQ(bl.y1, 20);
    EXPECT_EQ(bl.y2, 26);
    EXPECT_EQ(bl.t1, 0);
    EXPECT_EQ(bl.t2, 6);
    const StretchedQuadPiece& centre = pieces[1];
    EXPECT_EQ(centre.x1, 18);
    EXPECT_EQ(centre.x2, 110 - 8); // stretched between the edges
    EXPECT_EQ(centre.s1, 8);
    EXPECT_EQ(centre.s2, 24);
    for (int i = 0; i < 5; ++i) {
        const StretchedQuadPiece& tile = pieces[3 + 3 * i];
        EXPECT_EQ(tile.y1, 26 + 4 * i);
        EXPECT_EQ(tile.y2, 30 + 4 * i);
        EXPECT_EQ(tile.t1, 6);
        EXPECT_EQ(tile.t2, 10);
    }
    const StretchedQuadPiece& tr = pieces.back();
    EXPECT_EQ(tr.x1, 110 - 8);
    EXPECT_EQ(tr.x2, 110);
    EXPECT_EQ(tr.y1, 50 - 4);
    EXPECT_EQ(tr.y2, 50);
    EXPECT_EQ(tr.s1, 24);
    EXPECT_EQ(tr.s2, 32);
    EXPECT_EQ(tr.t1, 10);
    EXPECT_EQ(tr.t2, 14);
}

TEST(StretchedQuad, APartialTileHasAnEvenHeight) {
    struct Case {
        int span, tile, full, partial;
    } cases[] = {{10, 4, 2, 2}, {9, 4, 2, 2}, {11, 4, 2, 4}, {8, 4, 2, 0}, {3, 4, 0, 4}, {0, 4, 0, 0}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "span " << c.span << " tile " << c.tile);
        // Bottom edge 2 high, top edge 3 high, screen height = span + 5.
        auto pieces = LayoutStretchedQuad(0, 0, 50, c.span + 5, 0, 4, 8, 12, 0, 2, 2 + c.tile, 5 + c.tile);
        const int rows = static_cast<int>(pieces.size()) / 3;
        ASSERT_EQ(rows, 2 + c.full + (c.partial ? 1 : 0));
        if (c.partial) {
            const StretchedQuadPiece& p = pieces[3 * (1 + c.full)];
            EXPECT_EQ(p.y1, 2 + c.full * c.tile);
            EXPECT_EQ(p.y2 - p.y1, c.partial);
            EXPECT_EQ(p.t1, 2);
            EXPECT_EQ(p.t2, 2 + c.partial); // the start of the tile, not its end
        }
    }
}

TEST_F(Drawing, SpriteQuadsSampleTheSheetInPixelUnits) {
    // A 512 x 512 sheet: left half red, right half blue (bottom row first).
    std::vector<unsigned char> sheet(512 * 512 * 3, 0);
    for (int y = 0; y < 512; ++y)
        for (int x = 0; x < 512; ++x)
            sheet[(y * 512 + x) * 3 + (x < 256 ? 0 : 2)] = 255;
    int tex = 0;
    XPLMGenerateTextureNumbers(&tex, 1);
    XPLMBindTexture2d(tex, 0);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, 512, 512, 0, GL_RGB, GL_UNSIGNED_BYTE, sheet.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    XPLMSetGraphicsState(0, 1, 0, 0, 0, 0, 0);
    glColor3f(1, 1, 1);
    glBegin(GL_QUADS);
    SingleQuad(10, 10, 60, 60, 300, 0, 500, 100); // blue part of the sheet
    SingleQuad(70, 10, 120, 60, 0, 0, 200, 100);  // red part
    glEnd();
    // A frame whose columns straddle the halves: left edge red, right edge blue.
    DrawStretchedQuad(130, 10, 250, 100, 200, 240, 260, 300, 0, 10, 20, 30);
    EndFrame();
    EXPECT_TRUE(IsBlue(Px(35, 35)));
    EXPECT_TRUE(IsRed(Px(95, 35)));
    EXPECT_TRUE(IsRed(Px(140, 50)));
    EXPECT_TRUE(IsBlue(Px(240, 50)));
    EXPECT_TRUE(IsBlack(Px(125, 50)));
}
