// simhost's built-in bitmap font: the strokes of stb_easy_font drawn as GL
// quads, one pixel per stroke unit. xplmFont_Basic (and every deprecated font
// number) is monospaced; xplmFont_Proportional keeps the glyphs' own widths.
#pragma once

namespace simhost::gfx::font {

/// Monospaced cell width of the basic font, pixels.
constexpr int kCellWidthPx = 7;
/// Line height of every font (ascent 7 + descent 2 + 1 spacing), pixels.
constexpr int kLineHeightPx = 10;
/// Proportional font number (the API's xplmFont_Proportional).
constexpr int kProportionalFont = 18;

/// Advance of one character in a font, pixels.
int advance(int fontId, char c);
/// Width of the first n characters of text in a font, pixels (stops at a NUL).
int measure(int fontId, const char* text, int n);
/// Draws one line of text with its baseline-left at (x, y) in the current
/// colour, under the current matrices; returns the advance drawn, pixels.
int drawLine(int fontId, float x, float y, const char* text, int n);

} // namespace simhost::gfx::font
