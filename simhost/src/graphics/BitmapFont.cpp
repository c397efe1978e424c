#include "graphics/BitmapFont.h"

#include <GL/gl.h>

#include <cmath>
#include <cstring>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb/stb_easy_font.h>
#pragma GCC diagnostic pop

namespace simhost::gfx::font {
namespace {

constexpr int kAscentPx = 7;            // stroke rows 0..7 lie above the baseline
constexpr int kBytesPerVertex = 16;     // stb_easy_font: x, y, z floats + RGBA bytes
constexpr int kGlyphBufferBytes = 4096; // one glyph needs at most ~1 KiB of quads

/// The glyph drawn for c: characters outside printable ASCII become '?'.
char printable(char c) {
    unsigned char u = static_cast<unsigned char>(c);
    return (u < 32 || u > 126) ? '?' : c;
}

bool monospaced(int fontId) {
    return fontId != kProportionalFont;
}

} // namespace

int advance(int fontId, char c) {
    if (monospaced(fontId)) return kCellWidthPx;
    char s[2] = {printable(c), 0};
    return stb_easy_font_width(s);
}

int measure(int fontId, const char* text, int n) {
    if (!text) return 0;
    int w = 0;
    for (int i = 0; i < n && text[i]; ++i)
        w += advance(fontId, text[i]);
    return w;
}

int drawLine(int fontId, float x, float y, const char* text, int n) {
    if (!text) return 0;
    static char buffer[kGlyphBufferBytes];
    float penX = x;
    glBegin(GL_QUADS);
    for (int i = 0; i < n && text[i]; ++i) {
        char s[2] = {printable(text[i]), 0};
        int adv = advance(fontId, s[0]);
        // Centre a narrow glyph in its monospaced cell.
        float offset = monospaced(fontId) ? std::floor((kCellWidthPx - stb_easy_font_width(s)) / 2.0f) : 0.0f;
        int quads = stb_easy_font_print(0, 0, s, nullptr, buffer, sizeof buffer);
        for (int v = 0; v < quads * 4; ++v) {
            float vx, vy;
            std::memcpy(&vx, buffer + v * kBytesPerVertex, sizeof vx);
            std::memcpy(&vy, buffer + v * kBytesPerVertex + 4, sizeof vy);
            // stb's y grows downwards from the top of the cell.
            glVertex2f(penX + offset + vx, y + (kAscentPx - vy));
        }
        penX += adv;
    }
    glEnd();
    return static_cast<int>(penX - x);
}

} // namespace simhost::gfx::font
