// Immediate-mode 2-D drawing: rectangles, lines, text and sprite-sheet quads.
#include "toolkit/OGLUtils.h"

#include "XPLMDataAccess.h"
#include "XPLMGraphics.h"

#include <GL/gl.h>

#include <cstddef>

namespace {

/// Texture coordinate of one sprite-sheet pixel (1 / 512).
constexpr float kSheetTexel = 1.0f / kSpriteSheetSize;

XPLMDataRef HV_OGLUtils_UsePropFonts = nullptr;
bool gUsePropFontsLookedUp = false;

/// The state every 2-D drawing function starts from: untextured, blended, no depth.
void SetFlatDrawingState() {
    XPLMSetGraphicsState(0, 0, 0, 0, 1, 0, 0);
}

void SetColor(const float* color, float alpha) {
    if (color) glColor4f(color[0], color[1], color[2], alpha);
}

XPLMDataRef UsePropFonts() {
    if (!gUsePropFontsLookedUp) {
        HV_OGLUtils_UsePropFonts = XPLMFindDataRef("sim/graphics/misc/use_proportional_fonts");
        gUsePropFontsLookedUp = true;
    }
    return HV_OGLUtils_UsePropFonts;
}

/// Draws one string; the colour is copied because the host takes a mutable pointer (and SDK
/// headers before 4.2 declare the text mutable too, though the host only reads it).
void DrawString(const float* color, int x, int y, const char* text, int fontID) {
    float rgb[3] = {color[0], color[1], color[2]};
    XPLMDrawString(rgb, x, y, const_cast<char*>(text), nullptr, static_cast<XPLMFontID>(fontID));
}

} // namespace

void HV_OGLUtils::FindDataRefs() {
    HV_OGLUtils_UsePropFonts = XPLMFindDataRef("sim/graphics/misc/use_proportional_fonts");
    gUsePropFontsLookedUp = true;
}

void HV_OGLUtils::DrawRect(int left, int top, int right, int bottom, const float* color, float lineWidth,
                           float alpha) {
    SetFlatDrawingState();
    SetColor(color, alpha);
    glLineWidth(lineWidth);
    glBegin(GL_LINES);
    glVertex2i(left, top); // top, left to right
    glVertex2i(right, top);
    glVertex2i(right, top); // right, top to bottom
    glVertex2i(right, bottom);
    glVertex2i(right, bottom); // bottom, right to left
    glVertex2i(left, bottom);
    glVertex2i(left, bottom); // left, bottom to top
    glVertex2i(left, top);
    glEnd();
}

void HV_OGLUtils::DrawRectBorders(int left, int top, int right, int bottom, const float* color1, float width1,
                                  const float* color2, float width2, float alpha) {
    SetFlatDrawingState();
    if (width1 > 0) {
        glLineWidth(width1);
        SetColor(color1, alpha);
        glBegin(GL_LINES);
        glVertex2i(left, top); // top, left to right
        glVertex2i(right, top);
        glVertex2i(left, bottom); // left, bottom to top
        glVertex2i(left, top);
        glEnd();
    }
    if (width2 > 0) {
        glLineWidth(width2);
        SetColor(color2, alpha);
        glBegin(GL_LINES);
        glVertex2i(right, top); // right, top to bottom
        glVertex2i(right, bottom);
        glVertex2i(right, bottom); // bottom, right to left
        glVertex2i(left, bottom);
        glEnd();
    }
}

void HV_OGLUtils::DrawLine(int x1, int y1, int x2, int y2, const float* color, float lineWidth, float alpha) {
    SetFlatDrawingState();
    SetColor(color, alpha);
    glLineWidth(lineWidth);
    glBegin(GL_LINES);
    glVertex2i(x1, y1);
    glVertex2i(x2, y2);
    glEnd();
}

void HV_OGLUtils::DrawFillRect(int left, int top, int right, int bottom, const float* color, float alpha) {
    SetFlatDrawingState();
    SetColor(color, alpha);
    glBegin(GL_QUADS);
    glVertex2i(left, top);
    glVertex2i(right, top);
    glVertex2i(right, bottom);
    glVertex2i(left, bottom);
    glEnd();
}

void HV_OGLUtils::DrawText(const char* text, int x, int y, const float* color, bool proportional, int fontID,
                           const float* shadowColor, bool shadowUpLeft) {
    SetFlatDrawingState();
    if (!text) return;
    XPLMDataRef propFonts = proportional ? UsePropFonts() : nullptr;
    if (propFonts) XPLMSetDatai(propFonts, 1);
    if (shadowColor) {
        const int dx = shadowUpLeft ? -1 : 1;
        DrawString(shadowColor, x + dx, y - dx, text, fontID);
    }
    static const float kBlack[3] = {0.0f, 0.0f, 0.0f};
    DrawString(color ? color : kBlack, x, y, text, fontID);
    if (propFonts) XPLMSetDatai(propFonts, 0);
}

void SingleQuad(int x1, int y1, int x2, int y2, int s1, int t1, int s2, int t2) {
    glTexCoord2f(s1 * kSheetTexel, t2 * kSheetTexel);
    glVertex2i(x1, y2);
    glTexCoord2f(s2 * kSheetTexel, t2 * kSheetTexel);
    glVertex2i(x2, y2);
    glTexCoord2f(s2 * kSheetTexel, t1 * kSheetTexel);
    glVertex2i(x2, y1);
    glTexCoord2f(s1 * kSheetTexel, t1 * kSheetTexel);
    glVertex2i(x1, y1);
}

std::vector<StretchedQuadPiece> LayoutStretchedQuad(int x1, int y1, int x2, int y2, int s1, int s2, int s3,
                                                    int s4, int t1, int t2, int t3, int t4) {
    const int xa = x1 + (s2 - s1); // end of the left edge
    const int xb = x2 - (s4 - s3); // start of the right edge
    const int ya = y1 + (t2 - t1); // top of the bottom edge
    const int yb = y2 - (t4 - t3); // bottom of the top edge
    const int tileHeight = t3 - t2;
    // A frame smaller than its two edges has no middle to tile.
    int middle = (y2 - y1) - (t2 - t1) - (t4 - t3);
    if (middle < 0) middle = 0;
    const int fullTiles = tileHeight > 0 ? middle / tileHeight : 0;
    // The last partial tile: remainder + 1 rounded down to an even height (an odd one grows by a pixel).
    const int partial = tileHeight > 0 ? ((middle % tileHeight + 1) / 2) * 2 : 0;

    std::vector<StretchedQuadPiece> pieces;
    pieces.reserve(static_cast<size_t>(3 * (fullTiles + 3)));
    auto row = [&](int yLow, int yHigh, int tLow, int tHigh) {
        pieces.push_back({x1, yLow, xa, yHigh, s1, tLow, s2, tHigh});
        pieces.push_back({xa, yLow, xb, yHigh, s2, tLow, s3, tHigh});
        pieces.push_back({xb, yLow, x2, yHigh, s3, tLow, s4, tHigh});
    };
    row(y1, ya, t1, t2);
    for (int i = 0; i < fullTiles; ++i)
        row(ya + i * tileHeight, ya + (i + 1) * tileHeight, t2, t3);
    if (partial != 0)
        row(ya + fullTiles * tileHeight, ya + fullTiles * tileHeight + partial, t2, t2 + partial);
    row(yb, y2, t3, t4);
    return pieces;
}

void DrawStretchedQuad(int x1, int y1, int x2, int y2, int s1, int s2, int s3, int s4, int t1, int t2, int t3,
                       int t4) {
    const std::vector<StretchedQuadPiece> pieces =
        LayoutStretchedQuad(x1, y1, x2, y2, s1, s2, s3, s4, t1, t2, t3, t4);
    glBegin(GL_QUADS);
    for (const StretchedQuadPiece& p : pieces)
        SingleQuad(p.x1, p.y1, p.x2, p.y2, p.s1, p.t1, p.s2, p.t2);
    glEnd();
}
