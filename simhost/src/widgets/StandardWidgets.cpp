// The standard widget classes: main window, sub-window, button, text field,
// scroll bar, caption, general graphics and progress indicator, each a widget
// function that draws the widget and turns mouse and keys into the class's
// notifications. A notification goes to the widget itself and travels up the
// chain (xpMode_UpChain) with the widget's ID in param1.
#include "XPStandardWidgets.h"

#include "XPLMGraphics.h"
#include "XPUIGraphics.h"
#include "XPWidgets.h"
#include "widgets/WidgetTree.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace simhost::widgets {
namespace {

constexpr int kTitleBarPx = 18;     // main window title strip height
constexpr int kCloseBoxPx = 14;     // side of a close box
constexpr int kCloseBoxInsetPx = 2; // close box distance from the window's top-right corner
constexpr int kCheckBoxPx = 12;     // side of a check box
constexpr int kTextInsetPx = 3;     // text field padding, pixels
constexpr int kCaptionGapPx = 4;    // gap between a check box and its caption

// Keys a text field understands (the API's XPLM_VK_* codes).
constexpr unsigned char kVkBack = 0x08;
constexpr unsigned char kVkEnd = 0x23;
constexpr unsigned char kVkHome = 0x24;
constexpr unsigned char kVkLeft = 0x25;
constexpr unsigned char kVkRight = 0x27;
constexpr unsigned char kVkDelete = 0x2E;

float kTextDark[3] = {0.05f, 0.05f, 0.08f};
float kTextLight[3] = {1.0f, 1.0f, 1.0f};
float kTextLit[3] = {0.45f, 1.0f, 0.45f};
float kTextGrey[3] = {0.45f, 0.45f, 0.48f};

struct Rect {
    int l, t, r, b;
    bool contains(int x, int y) const { return x >= l && x <= r && y >= b && y <= t; }
};

Rect rectOf(XPWidgetID w) {
    Rect r{};
    XPGetWidgetGeometry(w, &r.l, &r.t, &r.r, &r.b);
    return r;
}

intptr_t prop(XPWidgetID w, XPWidgetPropertyID id) {
    return XPGetWidgetProperty(w, id, nullptr);
}

bool enabled(XPWidgetID w) {
    int exists = 0;
    intptr_t value = XPGetWidgetProperty(w, xpProperty_Enabled, &exists);
    return !exists || value != 0;
}

std::string descriptorOf(XPWidgetID w) {
    Widget* rec = find(w);
    return rec ? rec->descriptor : std::string();
}

const XPMouseState_t* mouseOf(intptr_t p1) {
    return reinterpret_cast<const XPMouseState_t*>(p1);
}

int fontHeight() {
    int h = 0;
    XPLMGetFontDimensions(xplmFont_Basic, nullptr, &h, nullptr);
    return h;
}

/// Baseline that centres one line of text vertically in [bottom, top].
int centredBaseline(int bottom, int top) {
    const int descent = 2; // pixels below the baseline
    return bottom + (top - bottom - fontHeight()) / 2 + descent;
}

int textWidth(const std::string& s) {
    return static_cast<int>(XPLMMeasureString(xplmFont_Basic, s.c_str(), static_cast<int>(s.size())));
}

void drawText(float* colour, int x, int y, const std::string& s) {
    XPLMDrawString(colour, x, y, s.c_str(), nullptr, xplmFont_Basic);
}

void notify(XPWidgetID w, XPWidgetMessage msg, intptr_t p2 = 0) {
    XPSendMessageToWidget(w, msg, xpMode_UpChain, reinterpret_cast<intptr_t>(w), p2);
}

// ------------------------------------------------------------------ main window

Rect closeBoxOf(const Rect& window) {
    return {window.r - kCloseBoxInsetPx - kCloseBoxPx, window.t - kCloseBoxInsetPx,
            window.r - kCloseBoxInsetPx, window.t - kCloseBoxInsetPx - kCloseBoxPx};
}

/// Internal: 1 while the mouse went down on the close box and is still over it.
constexpr XPWidgetPropertyID kPropClosePressed = 901;
/// Internal: 1 while the mouse went down on the close box.
constexpr XPWidgetPropertyID kPropCloseTracking = 902;

int mainWindowFunc(XPWidgetMessage msg, XPWidgetID w, intptr_t p1, intptr_t) {
    Rect r = rectOf(w);
    bool closeBoxes = prop(w, xpProperty_MainWindowHasCloseBoxes) != 0;
    switch (msg) {
    case xpMsg_Draw: {
        bool translucent = prop(w, xpProperty_MainWindowType) == xpMainWindowStyle_Translucent;
        if (translucent) {
            XPLMDrawTranslucentDarkBox(r.l, r.t, r.r, r.b);
        } else {
            XPDrawWindow(r.l, r.b, r.r, r.t, xpWindow_MainWindow);
            XPDrawElement(r.l + 2, r.t - kTitleBarPx, r.r - 2, r.t - 2, xpElement_WindowDragBar, 0);
        }
        drawText(kTextLight, r.l + 6, centredBaseline(r.t - kTitleBarPx, r.t), descriptorOf(w));
        if (closeBoxes) {
            Rect c = closeBoxOf(r);
            XPDrawElement(c.l, c.b, c.r, c.t, xpElement_WindowCloseBox, prop(w, kPropClosePressed) ? 1 : 0);
        }
        return 1;
    }
    case xpMsg_MouseDown: {
        const XPMouseState_t* m = mouseOf(p1);
        if (closeBoxes && closeBoxOf(r).contains(m->x, m->y)) {
            XPSetWidgetProperty(w, kPropCloseTracking, 1);
            XPSetWidgetProperty(w, kPropClosePressed, 1);
            return 1;
        }
        XPBringRootWidgetToFront(w);
        if (m->y >= r.t - kTitleBarPx) { // the title strip drags the window
            XPSetWidgetProperty(w, xpProperty_Dragging, 1);
            XPSetWidgetProperty(w, xpProperty_DragXOff, m->x - r.l);
            XPSetWidgetProperty(w, xpProperty_DragYOff, m->y - r.t);
        }
        return 1;
    }
    case xpMsg_MouseDrag: {
        const XPMouseState_t* m = mouseOf(p1);
        if (prop(w, kPropCloseTracking)) {
            XPSetWidgetProperty(w, kPropClosePressed, closeBoxOf(r).contains(m->x, m->y) ? 1 : 0);
        } else if (prop(w, xpProperty_Dragging)) {
            int dx = m->x - static_cast<int>(prop(w, xpProperty_DragXOff)) - r.l;
            int dy = m->y - static_cast<int>(prop(w, xpProperty_DragYOff)) - r.t;
            if (dx || dy) moveTree(find(w), dx, dy);
        }
        return 1;
    }
    case xpMsg_MouseUp: {
        const XPMouseState_t* m = mouseOf(p1);
        XPSetWidgetProperty(w, xpProperty_Dragging, 0);
        if (prop(w, kPropCloseTracking)) {
            XPSetWidgetProperty(w, kPropCloseTracking, 0);
            XPSetWidgetProperty(w, kPropClosePressed, 0);
            // The window stays; its owner decides whether to hide or destroy it.
            if (closeBoxOf(r).contains(m->x, m->y)) notify(w, xpMessage_CloseButtonPushed);
        }
        return 1;
    }
    default:
        return 0;
    }
}

// ------------------------------------------------------------------ sub-window

int subWindowFunc(XPWidgetMessage msg, XPWidgetID w, intptr_t, intptr_t) {
    if (msg != xpMsg_Draw) return 0;
    Rect r = rectOf(w);
    XPWindowStyle style = xpWindow_SubWindow;
    switch (prop(w, xpProperty_SubWindowType)) {
    case xpSubWindowStyle_Screen:
        style = xpWindow_Screen;
        break;
    case xpSubWindowStyle_ListView:
        style = xpWindow_ListView;
        break;
    default:
        break;
    }
    XPDrawWindow(r.l, r.b, r.r, r.t, style);
    return 1;
}

// ------------------------------------------------------------------ button

void drawButton(XPWidgetID w) {
    Rect r = rectOf(w);
    std::string caption = descriptorOf(w);
    bool lit = prop(w, xpProperty_Hilited) != 0;
    float* textColour = enabled(w) ? kTextDark : kTextGrey;
    switch (prop(w, xpProperty_ButtonType)) {
    case xpRadioButton: {
        int mid = (r.t + r.b) / 2;
        XPDrawElement(r.l, mid - kCheckBoxPx / 2, r.l + kCheckBoxPx, mid + kCheckBoxPx / 2,
                      xpElement_CheckBox, prop(w, xpProperty_ButtonState) ? 1 : 0);
        drawText(textColour, r.l + kCheckBoxPx + kCaptionGapPx, centredBaseline(r.b, r.t), caption);
        break;
    }
    case xpWindowCloseBox:
        XPDrawElement(r.l, r.b, r.r, r.t, xpElement_WindowCloseBox, lit ? 1 : 0);
        break;
    case xpLittleDownArrow:
        XPDrawElement(r.l, r.b, r.r, r.t, xpElement_LittleDownArrow, lit ? 1 : 0);
        break;
    case xpLittleUpArrow:
        XPDrawElement(r.l, r.b, r.r, r.t, xpElement_LittleUpArrow, lit ? 1 : 0);
        break;
    case xpPushButton:
    default:
        XPDrawElement(r.l, r.b, r.r, r.t, xpElement_PushButton, lit ? 1 : 0);
        drawText(textColour, (r.l + r.r - textWidth(caption)) / 2, centredBaseline(r.b, r.t), caption);
        break;
    }
}

int buttonFunc(XPWidgetMessage msg, XPWidgetID w, intptr_t p1, intptr_t) {
    switch (msg) {
    case xpMsg_Create:
        if (p1 == 0) XPSetWidgetProperty(w, xpProperty_Enabled, 1);
        return 1;
    case xpMsg_Draw:
        drawButton(w);
        return 1;
    case xpMsg_MouseDown: {
        if (!enabled(w)) return 1; // a disabled button swallows the click
        switch (prop(w, xpProperty_ButtonBehavior)) {
        case xpButtonBehaviorCheckBox: {
            intptr_t state = prop(w, xpProperty_ButtonState) ? 0 : 1;
            XPSetWidgetProperty(w, xpProperty_ButtonState, state);
            notify(w, xpMsg_ButtonStateChanged, state);
            return 1;
        }
        case xpButtonBehaviorRadioButton:
            // A radio button only ever sets itself; clearing the others is its owner's job.
            if (prop(w, xpProperty_ButtonState) != 1) {
                XPSetWidgetProperty(w, xpProperty_ButtonState, 1);
                notify(w, xpMsg_ButtonStateChanged, 1);
            }
            return 1;
        default:
            XPSetWidgetProperty(w, xpProperty_Hilited, 1);
            return 1;
        }
    }
    case xpMsg_MouseDrag:
        if (prop(w, xpProperty_ButtonBehavior) == xpButtonBehaviorPushButton && enabled(w)) {
            const XPMouseState_t* m = mouseOf(p1);
            intptr_t inside = rectOf(w).contains(m->x, m->y) ? 1 : 0;
            if (prop(w, xpProperty_Hilited) != inside) XPSetWidgetProperty(w, xpProperty_Hilited, inside);
        }
        return 1;
    case xpMsg_MouseUp:
        if (prop(w, xpProperty_ButtonBehavior) == xpButtonBehaviorPushButton && enabled(w)) {
            const XPMouseState_t* m = mouseOf(p1);
            XPSetWidgetProperty(w, xpProperty_Hilited, 0);
            if (rectOf(w).contains(m->x, m->y)) notify(w, xpMsg_PushButtonPressed, 0);
        }
        return 1;
    default:
        return 0;
    }
}

// ------------------------------------------------------------------ text field

/// What the field shows: the text, or stars in password mode.
std::string shownText(XPWidgetID w) {
    std::string text = descriptorOf(w);
    if (prop(w, xpProperty_PasswordMode)) text.assign(text.size(), '*');
    return text;
}

int clampIndex(intptr_t v, int length) {
    return static_cast<int>(std::clamp<intptr_t>(v, 0, length));
}

/// Scrolls so that the caret (SelEnd) is inside the field.
void keepCaretVisible(XPWidgetID w) {
    Rect r = rectOf(w);
    std::string text = shownText(w);
    int length = static_cast<int>(text.size());
    int caret = clampIndex(prop(w, xpProperty_EditFieldSelEnd), length);
    int scroll = clampIndex(prop(w, xpProperty_ScrollPosition), length);
    int room = std::max(1, r.r - r.l - 2 * kTextInsetPx);
    if (caret < scroll) scroll = caret;
    while (scroll < caret && textWidth(text.substr(scroll, caret - scroll)) > room)
        ++scroll;
    if (scroll != prop(w, xpProperty_ScrollPosition))
        XPSetWidgetProperty(w, xpProperty_ScrollPosition, scroll);
}

void setSelection(XPWidgetID w, int start, int end) {
    XPSetWidgetProperty(w, xpProperty_EditFieldSelStart, start);
    XPSetWidgetProperty(w, xpProperty_EditFieldSelEnd, end);
    keepCaretVisible(w);
}

/// The character index under a screen x.
int indexAt(XPWidgetID w, int x) {
    Rect r = rectOf(w);
    std::string text = shownText(w);
    int scroll = clampIndex(prop(w, xpProperty_ScrollPosition), static_cast<int>(text.size()));
    int pen = r.l + kTextInsetPx;
    for (int i = scroll; i < static_cast<int>(text.size()); ++i) {
        int advance = textWidth(text.substr(i, 1));
        if (x < pen + advance / 2) return i;
        pen += advance;
    }
    return static_cast<int>(text.size());
}

void drawTextField(XPWidgetID w) {
    Rect r = rectOf(w);
    intptr_t type = prop(w, xpProperty_TextFieldType);
    if (type == xpTextTranslucent)
        XPLMDrawTranslucentDarkBox(r.l, r.t, r.r, r.b);
    else if (type != xpTextTransparent)
        XPDrawElement(r.l, r.b, r.r, r.t, xpElement_TextField, 0);
    std::string text = shownText(w);
    int length = static_cast<int>(text.size());
    int scroll = clampIndex(prop(w, xpProperty_ScrollPosition), length);
    int selA = clampIndex(prop(w, xpProperty_EditFieldSelStart), length);
    int selB = clampIndex(prop(w, xpProperty_EditFieldSelEnd), length);
    if (selA > selB) std::swap(selA, selB);
    int baseline = centredBaseline(r.b, r.t);
    int x0 = r.l + kTextInsetPx;
    bool focusedHere = XPGetWidgetWithFocus() == w;
    auto xOf = [&](int index) { return x0 + textWidth(text.substr(scroll, std::max(0, index - scroll))); };
    if (focusedHere && selA != selB)
        XPLMDrawTranslucentDarkBox(xOf(std::max(selA, scroll)), r.t - 3, xOf(selB), r.b + 3);
    // Only the characters that fit are drawn.
    int room = r.r - r.l - 2 * kTextInsetPx;
    int count = 0;
    while (scroll + count < length && textWidth(text.substr(scroll, count + 1)) <= room)
        ++count;
    float* colour = type == xpTextEntryField ? (enabled(w) ? kTextDark : kTextGrey) : kTextLight;
    drawText(colour, x0, baseline, text.substr(scroll, count));
    if (focusedHere) {
        int caretX = xOf(selB);
        XPLMDrawString(colour, caretX - 3, baseline, "|", nullptr, xplmFont_Basic);
    }
}

/// Applies one key press; true when the field used it.
bool editKey(XPWidgetID w, const XPKeyState_t& key) {
    if (key.flags & xplm_UpFlag) return false; // acts on press and repeat
    std::string text = descriptorOf(w);
    int length = static_cast<int>(text.size());
    int a = clampIndex(prop(w, xpProperty_EditFieldSelStart), length);
    int b = clampIndex(prop(w, xpProperty_EditFieldSelEnd), length);
    if (a > b) std::swap(a, b);
    unsigned char vkey = static_cast<unsigned char>(key.vkey);
    unsigned char ch = static_cast<unsigned char>(key.key);
    bool changed = false;
    int caret = b;
    if (vkey == kVkBack || ch == kVkBack) {
        if (a != b) {
            text.erase(a, b - a);
            caret = a;
            changed = true;
        } else if (a > 0) {
            text.erase(a - 1, 1);
            caret = a - 1;
            changed = true;
        } else {
            caret = 0;
        }
    } else if (vkey == kVkDelete) {
        if (a != b) {
            text.erase(a, b - a);
            changed = true;
        } else if (a < length) {
            text.erase(a, 1);
            changed = true;
        }
        caret = a;
    } else if (vkey == kVkLeft) {
        caret = a != b ? a : std::max(0, a - 1);
    } else if (vkey == kVkRight) {
        caret = a != b ? b : std::min(length, b + 1);
    } else if (vkey == kVkHome) {
        caret = 0;
    } else if (vkey == kVkEnd) {
        caret = length;
    } else if (ch >= 32 && ch < 127 && !(key.flags & (xplm_ControlFlag | xplm_OptionAltFlag))) {
        intptr_t maxChars = prop(w, xpProperty_MaxCharacters);
        if (maxChars > 0 && length - (b - a) >= maxChars) return true; // full: eaten, nothing changes
        text.replace(a, b - a, 1, static_cast<char>(ch));
        caret = a + 1;
        changed = true;
    } else {
        return false; // return, escape, tab... go on up the chain
    }
    if (changed) XPSetWidgetDescriptor(w, text.c_str());
    setSelection(w, caret, caret);
    if (changed) notify(w, xpMsg_TextFieldChanged);
    return true;
}

int textFieldFunc(XPWidgetMessage msg, XPWidgetID w, intptr_t p1, intptr_t) {
    switch (msg) {
    case xpMsg_Create:
        if (p1 == 0) {
            XPSetWidgetProperty(w, xpProperty_Enabled, 1);
            XPSetWidgetProperty(w, xpProperty_EditFieldSelDragStart, -1);
        }
        return 1;
    case xpMsg_Draw:
        drawTextField(w);
        return 1;
    case xpMsg_KeyTakeFocus:
        if (!enabled(w) || prop(w, xpProperty_TextFieldType) == xpTextTransparent) return 0;
        if (p1 == 0) {
            // Focus set from code: the caret goes to the end of the text.
            int length = static_cast<int>(descriptorOf(w).size());
            setSelection(w, length, length);
        }
        return 1;
    case xpMsg_KeyLoseFocus:
        return 1;
    case xpMsg_KeyPress:
        return XPGetWidgetWithFocus() == w && editKey(w, *reinterpret_cast<XPKeyState_t*>(p1)) ? 1 : 0;
    case xpMsg_MouseDown: {
        if (!enabled(w)) return 0;
        const XPMouseState_t* m = mouseOf(p1);
        if (XPSetKeyboardFocus(w) != w) return 0;
        int index = indexAt(w, m->x);
        XPSetWidgetProperty(w, xpProperty_EditFieldSelDragStart, index);
        setSelection(w, index, index);
        return 1;
    }
    case xpMsg_MouseDrag: {
        intptr_t anchor = prop(w, xpProperty_EditFieldSelDragStart);
        if (anchor < 0) return 1;
        int index = indexAt(w, mouseOf(p1)->x);
        setSelection(w, static_cast<int>(std::min<intptr_t>(anchor, index)),
                     static_cast<int>(std::max<intptr_t>(anchor, index)));
        return 1;
    }
    case xpMsg_MouseUp:
        XPSetWidgetProperty(w, xpProperty_EditFieldSelDragStart, -1);
        return 1;
    default:
        return 0;
    }
}

// ------------------------------------------------------------------ scroll bar

struct TrackLayout {
    bool vertical;
    int origin; ///< screen coordinate where the track starts (left or bottom)
    int down, downPage, thumb, upPage, up;
};

/// A scroll bar value property, kept to half the int range so that differences never overflow.
int trackProp(XPWidgetID w, XPWidgetPropertyID id) {
    constexpr intptr_t kLimit = std::numeric_limits<int>::max() / 2;
    return static_cast<int>(std::clamp(prop(w, id), -kLimit, kLimit));
}

XPTrackStyle trackStyleOf(XPWidgetID w) {
    return prop(w, xpProperty_ScrollBarType) == xpScrollBarTypeSlider ? xpTrack_Slider : xpTrack_ScrollBar;
}

TrackLayout layoutOf(XPWidgetID w) {
    Rect r = rectOf(w);
    TrackLayout t{};
    int vertical = 0;
    XPGetTrackMetrics(r.l, r.b, r.r, r.t, trackProp(w, xpProperty_ScrollBarMin),
                      trackProp(w, xpProperty_ScrollBarMax), trackProp(w, xpProperty_ScrollBarSliderPosition),
                      trackStyleOf(w), &vertical, &t.down, &t.downPage, &t.thumb, &t.upPage, &t.up);
    t.vertical = vertical != 0;
    t.origin = t.vertical ? std::min(r.b, r.t) : std::min(r.l, r.r);
    return t;
}

/// Moves the thumb to a value (clamped) and tells the chain when it changed.
void moveSlider(XPWidgetID w, intptr_t value) {
    intptr_t lo = trackProp(w, xpProperty_ScrollBarMin), hi = trackProp(w, xpProperty_ScrollBarMax);
    if (lo > hi) std::swap(lo, hi);
    value = std::clamp(value, lo, hi);
    if (value == prop(w, xpProperty_ScrollBarSliderPosition)) return;
    XPSetWidgetProperty(w, xpProperty_ScrollBarSliderPosition, value);
    notify(w, xpMsg_ScrollBarSliderPositionChanged);
}

/// Steps towards max (+1) or min (-1) by an amount.
void stepSlider(XPWidgetID w, int direction, intptr_t amount) {
    intptr_t lo = trackProp(w, xpProperty_ScrollBarMin), hi = trackProp(w, xpProperty_ScrollBarMax);
    intptr_t towardsMax = hi >= lo ? 1 : -1;
    intptr_t span = hi > lo ? hi - lo : lo - hi; // a step never needs to exceed the range
    amount = std::clamp<intptr_t>(amount, -span, span);
    moveSlider(w, trackProp(w, xpProperty_ScrollBarSliderPosition) + direction * towardsMax * amount);
}

int scrollBarFunc(XPWidgetMessage msg, XPWidgetID w, intptr_t p1, intptr_t) {
    switch (msg) {
    case xpMsg_Create:
        if (p1 == 0) XPSetWidgetProperty(w, xpProperty_Enabled, 1);
        return 1;
    case xpMsg_Draw: {
        Rect r = rectOf(w);
        XPDrawTrack(r.l, r.b, r.r, r.t, trackProp(w, xpProperty_ScrollBarMin),
                    trackProp(w, xpProperty_ScrollBarMax), trackProp(w, xpProperty_ScrollBarSliderPosition),
                    trackStyleOf(w), prop(w, xpProperty_Hilited) ? 1 : 0);
        return 1;
    }
    case xpMsg_MouseDown: {
        if (!enabled(w)) return 1;
        const XPMouseState_t* m = mouseOf(p1);
        TrackLayout t = layoutOf(w);
        int along = (t.vertical ? m->y : m->x) - t.origin;
        int thumbStart = t.down + t.downPage;
        if (along < t.down) {
            stepSlider(w, -1, 1);
        } else if (along < thumbStart) {
            stepSlider(w, -1, prop(w, xpProperty_ScrollBarPageAmount));
        } else if (along < thumbStart + t.thumb) {
            XPSetWidgetProperty(w, xpProperty_ScrollBarSlop, along - thumbStart);
            XPSetWidgetProperty(w, xpProperty_Dragging, 1);
            XPSetWidgetProperty(w, xpProperty_Hilited, 1);
        } else if (along < thumbStart + t.thumb + t.upPage) {
            stepSlider(w, +1, prop(w, xpProperty_ScrollBarPageAmount));
        } else {
            stepSlider(w, +1, 1);
        }
        return 1;
    }
    case xpMsg_MouseDrag: {
        if (!prop(w, xpProperty_Dragging)) return 1;
        const XPMouseState_t* m = mouseOf(p1);
        TrackLayout t = layoutOf(w);
        int travel = t.downPage + t.upPage;
        if (travel <= 0) return 1;
        int along = (t.vertical ? m->y : m->x) - t.origin;
        double fraction = double(along - prop(w, xpProperty_ScrollBarSlop) - t.down) / travel;
        fraction = std::clamp(fraction, 0.0, 1.0);
        intptr_t lo = trackProp(w, xpProperty_ScrollBarMin), hi = trackProp(w, xpProperty_ScrollBarMax);
        moveSlider(w, lo + static_cast<intptr_t>(std::lround(fraction * double(hi - lo))));
        return 1;
    }
    case xpMsg_MouseUp:
        XPSetWidgetProperty(w, xpProperty_Dragging, 0);
        XPSetWidgetProperty(w, xpProperty_Hilited, 0);
        return 1;
    case xpMsg_MouseWheel: {
        const XPMouseState_t* m = mouseOf(p1);
        if (!enabled(w) || m->delta == 0) return 0;
        stepSlider(w, m->delta > 0 ? +1 : -1, std::abs(m->delta));
        return 1;
    }
    default:
        return 0;
    }
}

// ------------------------------------------------------------------ caption, graphics, progress

int captionFunc(XPWidgetMessage msg, XPWidgetID w, intptr_t, intptr_t) {
    if (msg != xpMsg_Draw) return 0;
    Rect r = rectOf(w);
    float* colour = prop(w, xpProperty_CaptionLit) ? kTextLit : kTextDark;
    drawText(colour, r.l, centredBaseline(r.b, r.t), descriptorOf(w));
    return 1;
}

int generalGraphicsFunc(XPWidgetMessage msg, XPWidgetID w, intptr_t, intptr_t) {
    if (msg != xpMsg_Draw) return 0;
    Rect r = rectOf(w);
    // Graphic types 4..23 name the same symbols as elements 26..; anything else draws as a generic tile.
    intptr_t type = prop(w, xpProperty_GeneralGraphicsType);
    XPElementStyle style = xpElement_CustomObject;
    switch (type) {
    case xpShip:
        style = xpElement_Ship;
        break;
    case xpILSGlideScope:
        style = xpElement_ILSGlideScope;
        break;
    case xpMarkerLeft:
        style = xpElement_MarkerLeft;
        break;
    case xp_Airport:
        style = xpElement_Airport;
        break;
    case xpNDB:
        style = xpElement_NDB;
        break;
    case xpVOR:
        style = xpElement_VOR;
        break;
    case xpRadioTower:
        style = xpElement_RadioTower;
        break;
    case xpAircraftCarrier:
        style = xpElement_AircraftCarrier;
        break;
    case xpFire:
        style = xpElement_Fire;
        break;
    case xpMarkerRight:
        style = xpElement_MarkerRight;
        break;
    case xpCoolingTower:
        style = xpElement_CoolingTower;
        break;
    case xpSmokeStack:
        style = xpElement_SmokeStack;
        break;
    case xpBuilding:
        style = xpElement_Building;
        break;
    case xpPowerLine:
        style = xpElement_PowerLine;
        break;
    case xpVORWithCompassRose:
        style = xpElement_VORWithCompassRose;
        break;
    case xpOilPlatform:
        style = xpElement_OilPlatform;
        break;
    case xpOilPlatformSmall:
        style = xpElement_OilPlatformSmall;
        break;
    case xpWayPoint:
        style = xpElement_Waypoint;
        break;
    default:
        break;
    }
    XPDrawElement(r.l, r.b, r.r, r.t, style, 0);
    return 1;
}

int progressFunc(XPWidgetMessage msg, XPWidgetID w, intptr_t, intptr_t) {
    if (msg != xpMsg_Draw) return 0;
    Rect r = rectOf(w);
    XPDrawTrack(r.l, r.b, r.r, r.t, static_cast<int>(prop(w, xpProperty_ProgressMin)),
                static_cast<int>(prop(w, xpProperty_ProgressMax)),
                static_cast<int>(prop(w, xpProperty_ProgressPosition)), xpTrack_Progress, 0);
    return 1;
}

} // namespace

bool closeBoxCentre(XPWidgetID mainWindow, int& x, int& y) {
    Widget* w = find(mainWindow);
    if (!w || w->widgetClass != xpWidgetClass_MainWindow ||
        !prop(mainWindow, xpProperty_MainWindowHasCloseBoxes))
        return false;
    Rect c = closeBoxOf(rectOf(mainWindow));
    x = (c.l + c.r) / 2;
    y = (c.t + c.b) / 2;
    return true;
}

XPWidgetFunc_t classFunction(XPWidgetClass widgetClass) {
    switch (widgetClass) {
    case xpWidgetClass_MainWindow:
        return mainWindowFunc;
    case xpWidgetClass_SubWindow:
        return subWindowFunc;
    case xpWidgetClass_Button:
        return buttonFunc;
    case xpWidgetClass_TextField:
        return textFieldFunc;
    case xpWidgetClass_ScrollBar:
        return scrollBarFunc;
    case xpWidgetClass_Caption:
        return captionFunc;
    case xpWidgetClass_GeneralGraphics:
        return generalGraphicsFunc;
    case xpWidgetClass_Progress:
        return progressFunc;
    default:
        return nullptr;
    }
}

} // namespace simhost::widgets
