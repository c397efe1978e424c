#include "graphics/WindowFrame.h"
#include "graphics/BitmapFont.h"

#include <GL/gl.h>

namespace simhost::gfx {
namespace {

void quad(float l, float t, float r, float b) {
    glVertex2f(l, b);
    glVertex2f(r, b);
    glVertex2f(r, t);
    glVertex2f(l, t);
}

constexpr float kFrameGrey = 0.18f;     ///< frame colour, all channels
constexpr float kTitleGrey = 0.28f;     ///< title bar of a window behind others
constexpr float kFrontTitleGrey = 0.4f; ///< title bar of the front window
constexpr float kTitleInsetPx = 6;      ///< title text from the bar's left end

} // namespace

void drawWindowFrame(int left, int top, int right, int bottom, const std::string& title, bool front) {
    glDisable(GL_TEXTURE_2D);
    glBegin(GL_QUADS);
    glColor3f(kFrameGrey, kFrameGrey, kFrameGrey);
    quad(left - kFramePx, top, left, bottom - kFramePx);   // left edge
    quad(right, top, right + kFramePx, bottom - kFramePx); // right edge
    quad(left, bottom, right, bottom - kFramePx);          // bottom edge
    const float g = front ? kFrontTitleGrey : kTitleGrey;
    glColor3f(g, g, g);
    quad(left - kFramePx, top + kTitleBarPx, right + kFramePx, top); // title bar
    glEnd();
    glColor3f(1, 1, 1);
    const float baseline = top + (kTitleBarPx - font::kLineHeightPx) / 2.0f + 2;
    font::drawLine(0, left + kTitleInsetPx, baseline, title.c_str(), static_cast<int>(title.size()));
}

} // namespace simhost::gfx
