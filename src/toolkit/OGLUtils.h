// Immediate-mode OpenGL drawing in the simulator's 2-D window coordinates:
// pixels, origin bottom left, y upwards. Rectangles are given as left, top,
// right, bottom with top above bottom. Call only from drawing callbacks.
// Every HV_OGLUtils function first sets the simulator's graphics state (no fog,
// no texture, no lighting, no alpha test, blending on, no depth test or write).
// A null colour keeps the current OpenGL colour.
#pragma once

#include <vector>

namespace HV_OGLUtils {
/// Looks up the simulator values text drawing uses. Call at plug-in start; otherwise the
/// first text drawn looks them up once.
void FindDataRefs();
/// Outline: the four edges as GL_LINES of `lineWidth` pixels.
void DrawRect(int left, int top, int right, int bottom, const float* color, float lineWidth, float alpha);
/// Bevel: top and left edges in color1/width1, right and bottom in color2/width2; width <= 0 skips that half.
void DrawRectBorders(int left, int top, int right, int bottom, const float* color1, float width1,
                     const float* color2, float width2, float alpha);
/// One line segment.
void DrawLine(int x1, int y1, int x2, int y2, const float* color, float lineWidth, float alpha);
/// Filled rectangle.
void DrawFillRect(int left, int top, int right, int bottom, const float* color, float alpha);
/// Text at (x, y) (lower left of the first character) in `color` (black when null), font
/// `fontID`, optionally proportional; `shadowColor` adds a one-pixel shadow up-left or down-right.
void DrawText(const char* text, int x, int y, const float* color, bool proportional, int fontID,
              const float* shadowColor, bool shadowUpLeft);
} // namespace HV_OGLUtils

/// Side of the square sprite sheet SingleQuad and DrawStretchedQuad address, pixels.
inline constexpr int kSpriteSheetSize = 512;

/// Emits one textured quad into a GL_QUADS batch the caller has begun; texture
/// coordinates (s, t) are pixel positions in the 512 x 512 sprite sheet.
void SingleQuad(int x1, int y1, int x2, int y2, int s1, int t1, int s2, int t2);

/// One quad of a nine-part frame: screen and sprite-sheet pixel rectangles.
struct StretchedQuadPiece {
    int x1, y1, x2, y2; ///< screen pixels, bottom left to top right
    int s1, t1, s2, t2; ///< sprite-sheet pixels
};
/// Lays out the nine-part frame of DrawStretchedQuad: edges fixed, centre column
/// stretched, middle rows tiled upwards (the last partial tile of even height).
/// Pieces come bottom row first, left to right. A tile height of 0 or less gives no middle rows.
std::vector<StretchedQuadPiece> LayoutStretchedQuad(int x1, int y1, int x2, int y2, int s1, int s2, int s3,
                                                    int s4, int t1, int t2, int t3, int t4);
/// Draws the nine-part frame from (x1, y1) bottom left to (x2, y2) top right in one GL_QUADS
/// batch: sheet columns s1 < s2 < s3 < s4 give left edge, centre, right edge; rows
/// t1 < t2 < t3 < t4 bottom edge, tiled middle, top edge. The sheet texture must be bound.
void DrawStretchedQuad(int x1, int y1, int x2, int y2, int s1, int s2, int s3, int s4, int t1, int t2, int t3,
                       int t4);
