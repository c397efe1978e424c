// The XPUIGraphics.h functions: window backgrounds, elements and tracks drawn
// as plain, clearly outlined boxes (simhost has no interface bitmaps).
#include "XPUIGraphics.h"

#include "XPLMGraphics.h"
#include "graphics/GraphicsHooks.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

namespace {

struct Rgb {
    float r, g, b;
};

// The palette of simhost's interface.
constexpr Rgb kBorder{0.15f, 0.15f, 0.18f};
constexpr Rgb kMainWindow{0.78f, 0.79f, 0.82f};
constexpr Rgb kSubWindow{0.68f, 0.69f, 0.72f};
constexpr Rgb kScreen{0.08f, 0.16f, 0.10f};
constexpr Rgb kListView{0.97f, 0.97f, 0.97f};
constexpr Rgb kHelp{0.98f, 0.95f, 0.70f};
constexpr Rgb kButton{0.90f, 0.90f, 0.92f};
constexpr Rgb kButtonLit{0.55f, 0.68f, 0.92f};
constexpr Rgb kField{1.0f, 1.0f, 1.0f};
constexpr Rgb kMark{0.05f, 0.30f, 0.10f};
constexpr Rgb kTrack{0.55f, 0.56f, 0.60f};
constexpr Rgb kThumb{0.30f, 0.40f, 0.62f};
constexpr Rgb kProgress{0.20f, 0.62f, 0.30f};
constexpr Rgb kIcon{0.35f, 0.45f, 0.70f};
constexpr Rgb kCloseBox{0.80f, 0.25f, 0.22f};

constexpr int kDefaultTrackThicknessPx = 16; // scroll bars and sliders
constexpr int kMinThumbPx = 6;               // a thumb is never thinner than this
constexpr int kElementIconPx = 16;           // map symbols and little arrows

/// Corners in any order to left/bottom/right/top.
struct Box {
    int l, b, r, t;
    Box(int x1, int y1, int x2, int y2)
        : l(std::min(x1, x2)), b(std::min(y1, y2)), r(std::max(x1, x2)), t(std::max(y1, y2)) {}
    int w() const { return r - l; }
    int h() const { return t - b; }
};

/// GL state for flat 2-D drawing, restored afterwards.
struct FlatState {
    FlatState() {
        glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LINE_BIT | GL_TEXTURE_BIT);
        glDisable(GL_TEXTURE_2D);
        glDisable(GL_LIGHTING);
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_BLEND);
        glDisable(GL_CULL_FACE); // boxes show whichever way the caller left culling
    }
    ~FlatState() { glPopAttrib(); }
    FlatState(const FlatState&) = delete;
    FlatState& operator=(const FlatState&) = delete;
};

void fill(const Box& x, Rgb c) {
    glColor3f(c.r, c.g, c.b);
    glBegin(GL_QUADS);
    glVertex2i(x.l, x.b);
    glVertex2i(x.r, x.b);
    glVertex2i(x.r, x.t);
    glVertex2i(x.l, x.t);
    glEnd();
}

/// A one-pixel outline just inside the box.
void outline(const Box& x, Rgb c) {
    glColor3f(c.r, c.g, c.b);
    glLineWidth(1);
    glBegin(GL_LINE_LOOP);
    glVertex2f(x.l + 0.5f, x.b + 0.5f);
    glVertex2f(x.r - 0.5f, x.b + 0.5f);
    glVertex2f(x.r - 0.5f, x.t - 0.5f);
    glVertex2f(x.l + 0.5f, x.t - 0.5f);
    glEnd();
}

void line(float x1, float y1, float x2, float y2, Rgb c, float width) {
    glColor3f(c.r, c.g, c.b);
    glLineWidth(width);
    glBegin(GL_LINES);
    glVertex2f(x1, y1);
    glVertex2f(x2, y2);
    glEnd();
}

enum class Pointing { Up, Down, Left, Right };

/// A solid arrow head inside a box.
void triangle(const Box& x, Pointing dir, Rgb c) {
    float inset = std::max(2.0f, std::min(x.w(), x.h()) / 4.0f);
    float cx = (x.l + x.r) / 2.0f, cy = (x.b + x.t) / 2.0f;
    float l = x.l + inset, r = x.r - inset, b = x.b + inset, t = x.t - inset;
    glColor3f(c.r, c.g, c.b);
    glBegin(GL_TRIANGLES);
    switch (dir) {
    case Pointing::Up:
        glVertex2f(l, b), glVertex2f(r, b), glVertex2f(cx, t);
        break;
    case Pointing::Down:
        glVertex2f(l, t), glVertex2f(r, t), glVertex2f(cx, b);
        break;
    case Pointing::Left:
        glVertex2f(r, b), glVertex2f(r, t), glVertex2f(l, cy);
        break;
    case Pointing::Right:
        glVertex2f(l, b), glVertex2f(l, t), glVertex2f(r, cy);
        break;
    }
    glEnd();
}

/// A box with an outline, the common look of buttons, fields and icons.
void panel(const Box& x, Rgb body) {
    fill(x, body);
    outline(x, kBorder);
}

} // namespace

extern "C" {

void XPDrawWindow(int inX1, int inY1, int inX2, int inY2, XPWindowStyle inStyle) {
    if (!simhost::gfx::available()) return;
    FlatState state;
    Box box(inX1, inY1, inX2, inY2);
    switch (inStyle) {
    case xpWindow_Help:
        panel(box, kHelp);
        break;
    case xpWindow_SubWindow:
        panel(box, kSubWindow);
        break;
    case xpWindow_Screen:
        panel(box, kScreen);
        break;
    case xpWindow_ListView:
        panel(box, kListView);
        break;
    case xpWindow_MainWindow:
    default:
        panel(box, kMainWindow);
        outline(Box(box.l + 1, box.b + 1, box.r - 1, box.t - 1), kBorder);
        break;
    }
}

void XPGetWindowDefaultDimensions(XPWindowStyle inStyle, int* outWidth, int* outHeight) {
    // Every style stretches; these are the smallest sizes that still look like the style.
    int size = inStyle == xpWindow_MainWindow ? 64 : 16;
    if (outWidth) *outWidth = size;
    if (outHeight) *outHeight = size;
}

void XPDrawElement(int inX1, int inY1, int inX2, int inY2, XPElementStyle inStyle, int inLit) {
    if (!simhost::gfx::available()) return;
    FlatState state;
    Box box(inX1, inY1, inX2, inY2);
    switch (inStyle) {
    case xpElement_TextField:
    case xpElement_TextFieldMiddle:
        panel(box, kField);
        break;
    case xpElement_CheckBox:
    case xpElement_CheckBoxLit:
        panel(box, kField);
        if (inLit || inStyle == xpElement_CheckBoxLit) { // a tick
            line(box.l + box.w() * 0.2f, box.b + box.h() * 0.5f, box.l + box.w() * 0.42f,
                 box.b + box.h() * 0.2f, kMark, 2);
            line(box.l + box.w() * 0.42f, box.b + box.h() * 0.2f, box.r - box.w() * 0.15f,
                 box.t - box.h() * 0.15f, kMark, 2);
        }
        break;
    case xpElement_WindowCloseBox:
    case xpElement_WindowCloseBoxPressed: {
        bool pressed = inLit || inStyle == xpElement_WindowCloseBoxPressed;
        panel(box, pressed ? kButtonLit : kCloseBox);
        float inset = std::max(2.0f, box.w() / 4.0f);
        line(box.l + inset, box.b + inset, box.r - inset, box.t - inset, kField, 2);
        line(box.l + inset, box.t - inset, box.r - inset, box.b + inset, kField, 2);
        break;
    }
    case xpElement_PushButton:
    case xpElement_PushButtonLit:
        panel(box, (inLit || inStyle == xpElement_PushButtonLit) ? kButtonLit : kButton);
        break;
    case xpElement_LittleDownArrow:
    case xpElement_LittleUpArrow:
        panel(box, inLit ? kButtonLit : kButton);
        triangle(box, inStyle == xpElement_LittleUpArrow ? Pointing::Up : Pointing::Down, kBorder);
        break;
    case xpElement_WindowDragBar:
    case xpElement_WindowDragBarSmooth:
        panel(box, kThumb);
        break;
    case xpElement_ScrollBar:
        panel(box, kTrack);
        break;
    default: // map symbols and the rest: a marked tile
        panel(box, inLit ? kButtonLit : kIcon);
        line(box.l, box.b, box.r, box.t, kBorder, 1);
        line(box.l, box.t, box.r, box.b, kBorder, 1);
        break;
    }
}

void XPGetElementDefaultDimensions(XPElementStyle inStyle, int* outWidth, int* outHeight, int* outCanBeLit) {
    int w = kElementIconPx, h = kElementIconPx, lit = 0;
    switch (inStyle) {
    case xpElement_CheckBox:
    case xpElement_CheckBoxLit:
        w = h = 12;
        lit = 1;
        break;
    case xpElement_WindowCloseBox:
    case xpElement_WindowCloseBoxPressed:
        w = h = 14;
        lit = 1;
        break;
    case xpElement_PushButton:
    case xpElement_PushButtonLit:
        w = 0; // stretches to any width
        h = 20;
        lit = 1;
        break;
    case xpElement_TextField:
    case xpElement_TextFieldMiddle:
        w = 0;
        h = 20;
        break;
    case xpElement_LittleDownArrow:
    case xpElement_LittleUpArrow:
        w = h = 12;
        lit = 1;
        break;
    default:
        break;
    }
    if (outWidth) *outWidth = w;
    if (outHeight) *outHeight = h;
    if (outCanBeLit) *outCanBeLit = lit;
}

void XPGetTrackMetrics(int inX1, int inY1, int inX2, int inY2, int inMin, int inMax, int inValue,
                       XPTrackStyle inTrackStyle, int* outIsVertical, int* outDownBtnSize,
                       int* outDownPageSize, int* outThumbSize, int* outUpPageSize, int* outUpBtnSize) {
    Box box(inX1, inY1, inX2, inY2);
    bool vertical = box.h() > box.w();
    int length = vertical ? box.h() : box.w();
    int thickness = vertical ? box.w() : box.h();
    int button = inTrackStyle == xpTrack_ScrollBar ? std::min(thickness, length / 3) : 0;
    int thumb = 0;
    if (inTrackStyle != xpTrack_Progress)
        thumb =
            std::clamp(thickness, std::min(kMinThumbPx, length / 2), std::max(0, (length - 2 * button) / 2));
    int travel = std::max(0, length - 2 * button - thumb);
    // The thumb's share of the travel: min at the left/bottom, max at the right/top.
    double fraction = 0;
    if (inMax != inMin) fraction = std::clamp((double(inValue) - inMin) / (double(inMax) - inMin), 0.0, 1.0);
    int downPage = static_cast<int>(std::lround(fraction * travel));
    if (outIsVertical) *outIsVertical = vertical ? 1 : 0;
    if (outDownBtnSize) *outDownBtnSize = button;
    if (outDownPageSize) *outDownPageSize = downPage;
    if (outThumbSize) *outThumbSize = thumb;
    if (outUpPageSize) *outUpPageSize = travel - downPage;
    if (outUpBtnSize) *outUpBtnSize = button;
}

void XPDrawTrack(int inX1, int inY1, int inX2, int inY2, int inMin, int inMax, int inValue,
                 XPTrackStyle inTrackStyle, int inLit) {
    if (!simhost::gfx::available()) return;
    FlatState state;
    Box box(inX1, inY1, inX2, inY2);
    int vertical = 0, down = 0, downPage = 0, thumb = 0, upPage = 0, up = 0;
    XPGetTrackMetrics(inX1, inY1, inX2, inY2, inMin, inMax, inValue, inTrackStyle, &vertical, &down,
                      &downPage, &thumb, &upPage, &up);
    // A piece of the track from offset a to b along its length.
    auto piece = [&](int a, int b) {
        return vertical ? Box(box.l, box.b + a, box.r, box.b + b) : Box(box.l + a, box.b, box.l + b, box.t);
    };
    if (inTrackStyle == xpTrack_Progress) {
        panel(box, kField);
        if (downPage > 0) fill(piece(1, downPage), kProgress);
        outline(box, kBorder);
        return;
    }
    if (inTrackStyle == xpTrack_Slider) {
        // A thin groove with the thumb on it.
        Box groove = vertical ? Box(box.l + box.w() / 2 - 2, box.b, box.l + box.w() / 2 + 2, box.t)
                              : Box(box.l, box.b + box.h() / 2 - 2, box.r, box.b + box.h() / 2 + 2);
        panel(groove, kTrack);
    } else {
        panel(box, kTrack);
        if (down > 0) { // arrow buttons at both ends, pointing away from the track
            Box downBox = piece(0, down);
            Box upBox = piece(down + downPage + thumb + upPage, down + downPage + thumb + upPage + up);
            panel(downBox, kButton);
            panel(upBox, kButton);
            triangle(downBox, vertical ? Pointing::Down : Pointing::Left, kBorder);
            triangle(upBox, vertical ? Pointing::Up : Pointing::Right, kBorder);
        }
    }
    panel(piece(down + downPage, down + downPage + thumb), inLit ? kButtonLit : kThumb);
}

void XPGetTrackDefaultDimensions(XPTrackStyle inStyle, int* outWidth, int* outCanBeLit) {
    if (outWidth) *outWidth = kDefaultTrackThicknessPx;
    if (outCanBeLit) *outCanBeLit = inStyle == xpTrack_Progress ? 0 : 1;
}

} // extern "C"
