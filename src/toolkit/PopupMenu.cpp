#include "toolkit/PopupMenu.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPUIGraphics.h"
#include "XPWidgets.h"
#include "toolkit/Colors.h"
#include "toolkit/OGLUtils.h"
#include "utils/HV_LOGUtils.h"

namespace {

/// Width of one character of the basic font, and the padding around a line's text, pixels.
constexpr int kCharWidth = 6;
constexpr int kTextPadding = 8;
/// Baseline of a line's text above the line's bottom edge, pixels.
constexpr int kTextBaseline = 4;
/// Width of the down arrow at the right of a popup button, pixels.
constexpr int kArrowWidth = 12;
/// Bytes of one descriptor read back from a popup button.
constexpr int kItemsBytes = 4096;

const float kListBack[3] = {0.93f, 0.93f, 0.93f};
const float kListText[3] = {0.0f, 0.0f, 0.0f};
const float kPickedBack[3] = {0.25f, 0.35f, 0.7f};
const float kPickedText[3] = {1.0f, 1.0f, 1.0f};

std::vector<std::string> SplitItems(const char* items) {
    std::vector<std::string> lines(1);
    for (const char* p = items ? items : ""; *p; ++p) {
        if (*p == ';') {
            if (static_cast<int>(lines.size()) >= kXSBMaxPopupItems) break;
            lines.emplace_back();
        } else {
            lines.back().push_back(*p);
        }
    }
    return lines;
}

/// The one popup menu: a screen-wide root widget drawing its list and catching every click.
struct PopupMenu {
    XPWidgetID widget = nullptr;
    bool open = false;
    bool dispatching = false; ///< inside the menu's own widget function
    std::vector<std::string> lines;
    int current = -1;
    int left = 0, top = 0, right = 0, bottom = 0; ///< the list, screen pixels
    XSBPopupPick_f pick = nullptr;
    void* refcon = nullptr;
};
PopupMenu gMenu;

void CloseMenu() {
    gMenu.open = false;
    gMenu.pick = nullptr;
    gMenu.refcon = nullptr;
    if (gMenu.widget) XPHideWidget(gMenu.widget);
}

void DrawMenu() {
    HV_OGLUtils::DrawFillRect(gMenu.left, gMenu.top, gMenu.right, gMenu.bottom, kListBack, 1.0f);
    HV_OGLUtils::DrawRect(gMenu.left, gMenu.top, gMenu.right, gMenu.bottom, HV_OGLUtils_ColorGray, 1.0f,
                          1.0f);
    for (size_t i = 0; i < gMenu.lines.size(); ++i) {
        const int lineTop = gMenu.top - static_cast<int>(i) * kXSBPopupLineHeight;
        const int lineBottom = lineTop - kXSBPopupLineHeight;
        const bool picked = static_cast<int>(i) == gMenu.current;
        if (picked)
            HV_OGLUtils::DrawFillRect(gMenu.left + 1, lineTop - 1, gMenu.right - 1, lineBottom, kPickedBack,
                                      1.0f);
        XPLMDrawString(const_cast<float*>(picked ? kPickedText : kListText), gMenu.left + kTextPadding / 2,
                       lineBottom + kTextBaseline, const_cast<char*>(gMenu.lines[i].c_str()), nullptr,
                       xplmFont_Basic); // mutable text for SDK headers before 4.2; only read
    }
}

int MenuFunction(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t) {
    if (widget != gMenu.widget) return 0;
    try {
        if (message == xpMsg_Draw) {
            if (gMenu.open) DrawMenu();
            return 1;
        }
        if (message == xpMsg_MouseDown && param1 != 0) {
            const auto* mouse = reinterpret_cast<const XPMouseState_t*>(param1);
            const XSBPopupPick_f pick = gMenu.pick;
            void* refcon = gMenu.refcon;
            int line = -1;
            if (mouse->x >= gMenu.left && mouse->x < gMenu.right && mouse->y <= gMenu.top &&
                mouse->y > gMenu.bottom)
                line = (gMenu.top - mouse->y) / kXSBPopupLineHeight;
            CloseMenu();
            if (pick && line >= 0 && line < static_cast<int>(gMenu.lines.size())) {
                gMenu.dispatching = true;
                pick(line, refcon);
                gMenu.dispatching = false;
            }
            return 1;
        }
    } catch (...) {
        gMenu.dispatching = false;
        HV_LOGUtils::Add2Log("popup menu: a pick failed", HV_LOGUtils::kHV_LOG_ALERT);
    }
    return 0;
}

// ---------------------------------------------------------------- popup button

int ReadCurrent(XPWidgetID button) {
    return static_cast<int>(XPGetWidgetProperty(button, kXSBProperty_PopupCurrentItem, nullptr));
}

std::string ReadItems(XPWidgetID button) {
    std::vector<char> items(kItemsBytes, '\0');
    XPGetWidgetDescriptor(button, items.data(), kItemsBytes - 1);
    return std::string(items.data());
}

void PickedFromButton(int line, void* refcon) {
    auto button = static_cast<XPWidgetID>(refcon);
    XPSetWidgetProperty(button, kXSBProperty_PopupCurrentItem, line);
    XPSendMessageToWidget(button, kXSBMsg_PopupItemPicked, xpMode_UpChain, reinterpret_cast<intptr_t>(button),
                          line);
}

void DrawButton(XPWidgetID button) {
    int l = 0, t = 0, r = 0, b = 0;
    XPGetWidgetGeometry(button, &l, &t, &r, &b);
    const bool enabled = XPGetWidgetProperty(button, xpProperty_Enabled, nullptr) != 0;
    XPDrawElement(l, b, r, t, xpElement_PushButton, 0);
    XPDrawElement(r - kArrowWidth, b, r, t, xpElement_LittleDownArrow, 0);
    char line[kItemsBytes];
    const std::string items = ReadItems(button);
    if (!XSBGetPopupItem(items.c_str(), ReadCurrent(button), line, sizeof line)) line[0] = '\0';
    // Only what fits left of the arrow.
    const int fits = std::max(0, (r - l - kArrowWidth - kTextPadding) / kCharWidth);
    if (static_cast<int>(std::strlen(line)) > fits) line[fits] = '\0';
    const float* color = enabled ? kListText : HV_OGLUtils_ColorGray;
    XPLMDrawString(const_cast<float*>(color), l + kTextPadding / 2, b + (t - b) / 2 - kTextBaseline, line,
                   nullptr, xplmFont_Basic);
}

int PopupButtonFunction(XPWidgetMessage message, XPWidgetID button, intptr_t param1, intptr_t) {
    try {
        switch (message) {
        case xpMsg_Draw:
            DrawButton(button);
            return 1;
        case xpMsg_MouseDown:
            return 1; // the menu opens on the release, once the host has finished raising the window
        case xpMsg_MouseUp: {
            if (XPGetWidgetProperty(button, xpProperty_Enabled, nullptr) == 0 || param1 == 0) return 1;
            const auto* mouse = reinterpret_cast<const XPMouseState_t*>(param1);
            int l = 0, t = 0, r = 0, b = 0;
            XPGetWidgetGeometry(button, &l, &t, &r, &b);
            if (mouse->x < l || mouse->x >= r || mouse->y > t || mouse->y <= b)
                return 1; // released elsewhere
            const std::string items = ReadItems(button);
            XSBPickPopup(l, b, items.c_str(), ReadCurrent(button), PickedFromButton, button);
            return 1;
        }
        case xpMsg_Destroy:
            if (gMenu.refcon == button) CloseMenu();
            return 0;
        default:
            return 0;
        }
    } catch (...) {
        HV_LOGUtils::Add2Log("popup button: message failed", HV_LOGUtils::kHV_LOG_ALERT);
        return 0;
    }
}

} // namespace

int XSBCountPopupItems(const char* items) {
    return static_cast<int>(SplitItems(items).size());
}

bool XSBGetPopupItem(const char* items, int line, char* out, int size) {
    if (!out || size <= 0) return false;
    out[0] = '\0';
    const std::vector<std::string> lines = SplitItems(items);
    if (line < 0 || line >= static_cast<int>(lines.size())) return false;
    std::strncpy(out, lines[line].c_str(), size - 1);
    out[size - 1] = '\0';
    return true;
}

void XSBPickPopup(int left, int top, const char* items, int currentLine, XSBPopupPick_f pick, void* refcon) {
    CloseMenu();
    gMenu.lines = SplitItems(items);
    gMenu.current = currentLine;
    gMenu.pick = pick;
    gMenu.refcon = refcon;

    size_t longest = 0;
    for (const std::string& line : gMenu.lines)
        longest = std::max(longest, line.size());
    int screenWidth = 0, screenHeight = 0;
    XPLMGetScreenSize(&screenWidth, &screenHeight);
    const int width = kCharWidth * static_cast<int>(longest) + 2 * kTextPadding;
    const int height = kXSBPopupLineHeight * static_cast<int>(gMenu.lines.size());
    // Under the given corner; flipped above it when the screen ends first, kept inside horizontally.
    gMenu.left = std::max(0, std::min(left, screenWidth - width));
    gMenu.top = top - height >= 0 ? top : std::min(screenHeight, top + height + kXSBPopupLineHeight);
    gMenu.right = gMenu.left + width;
    gMenu.bottom = gMenu.top - height;

    if (!gMenu.widget)
        gMenu.widget = XPCreateCustomWidget(0, screenHeight, screenWidth, 0, 0, "", 1, nullptr, MenuFunction);
    else
        XPSetWidgetGeometry(gMenu.widget, 0, screenHeight, screenWidth, 0);
    gMenu.open = true;
    XPShowWidget(gMenu.widget);
    XPBringRootWidgetToFront(gMenu.widget);
}

XPWidgetID XSBCreatePopup(int left, int top, int right, int bottom, int visible, const char* items,
                          int selected, XPWidgetID container) {
    XPWidgetID button = XPCreateCustomWidget(left, top, right, bottom, visible, items ? items : "", 0,
                                             container, PopupButtonFunction);
    XPSetWidgetProperty(button, kXSBProperty_PopupCurrentItem, selected);
    XPSetWidgetProperty(button, xpProperty_Enabled, 1);
    return button;
}

bool XSBPopupIsOpen() {
    return gMenu.open;
}

bool XSBPopupListGeometry(int* left, int* top, int* right, int* bottom) {
    if (!gMenu.open) return false;
    if (left) *left = gMenu.left;
    if (top) *top = gMenu.top;
    if (right) *right = gMenu.right;
    if (bottom) *bottom = gMenu.bottom;
    return true;
}

void XSBPopupCleanup() {
    CloseMenu();
    if (gMenu.widget && !gMenu.dispatching) {
        XPDestroyWidget(gMenu.widget, 1);
        gMenu.widget = nullptr;
    }
}
