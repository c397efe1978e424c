// The widget control API (simhost/Widgets.h): reading the widget tree and
// operating widgets through the host's mouse and keyboard.
#include "simhost/Widgets.h"

#include "XPStandardWidgets.h"
#include "XPUIGraphics.h"
#include "XPWidgets.h"
#include "graphics/GraphicsHooks.h"
#include "simhost/Simhost.h"
#include "widgets/WidgetTree.h"

#include <cctype>
#include <cstdlib>
#include <sstream>

namespace simhost {
namespace {

using widgets::Widget;

constexpr int kMaxArrowSteps = 10000; // arrow clicks a slider drag may finish with

WidgetInfo infoOf(const Widget* w) {
    WidgetInfo i;
    i.id = widgets::idOf(w);
    i.parent = w->parent ? widgets::idOf(w->parent) : nullptr;
    i.widgetClass = w->widgetClass;
    i.descriptor = w->descriptor;
    i.left = w->left;
    i.top = w->top;
    i.right = w->right;
    i.bottom = w->bottom;
    i.visible = w->visible;
    i.shown = widgets::visibleThroughParents(w);
    i.isRoot = w->isRoot;
    i.owner = w->owner;
    return i;
}

void collect(Widget* w, const std::function<bool(const WidgetInfo&)>& pred, std::vector<WidgetHandle>& out) {
    if (pred(infoOf(w))) out.push_back(widgets::idOf(w));
    for (Widget* k : w->children)
        collect(k, pred, out);
}

const char* className(int widgetClass) {
    switch (widgetClass) {
    case xpWidgetClass_MainWindow:
        return "MainWindow";
    case xpWidgetClass_SubWindow:
        return "SubWindow";
    case xpWidgetClass_Button:
        return "Button";
    case xpWidgetClass_TextField:
        return "TextField";
    case xpWidgetClass_ScrollBar:
        return "ScrollBar";
    case xpWidgetClass_Caption:
        return "Caption";
    case xpWidgetClass_GeneralGraphics:
        return "GeneralGraphics";
    case xpWidgetClass_Progress:
        return "Progress";
    default:
        return "Custom";
    }
}

/// The properties worth showing in the tree for a class.
std::string keyProperties(const Widget* w) {
    auto p = [&](XPWidgetPropertyID id) {
        auto it = w->properties.find(id);
        return it == w->properties.end() ? intptr_t(0) : it->second;
    };
    std::ostringstream s;
    switch (w->widgetClass) {
    case xpWidgetClass_Button:
        s << " type=" << p(xpProperty_ButtonType) << " behavior=" << p(xpProperty_ButtonBehavior)
          << " state=" << p(xpProperty_ButtonState);
        break;
    case xpWidgetClass_ScrollBar:
        s << " value=" << p(xpProperty_ScrollBarSliderPosition) << " min=" << p(xpProperty_ScrollBarMin)
          << " max=" << p(xpProperty_ScrollBarMax);
        break;
    case xpWidgetClass_TextField:
        s << " sel=" << p(xpProperty_EditFieldSelStart) << ".." << p(xpProperty_EditFieldSelEnd);
        break;
    case xpWidgetClass_Progress:
        s << " value=" << p(xpProperty_ProgressPosition);
        break;
    default:
        break;
    }
    auto enabled = w->properties.find(xpProperty_Enabled);
    if (enabled != w->properties.end() && enabled->second == 0) s << " disabled";
    return s.str();
}

void printTree(const Widget* w, int depth, std::ostringstream& out) {
    out << std::string(static_cast<size_t>(depth) * 2, ' ') << className(w->widgetClass) << " \""
        << w->descriptor << "\" (" << w->left << "," << w->top << ")-(" << w->right << "," << w->bottom << ")"
        << (w->visible ? "" : " hidden") << (w->isRoot ? " root" : "") << keyProperties(w) << "\n";
    for (const Widget* k : w->children)
        printTree(k, depth + 1, out);
}

/// The virtual key and shift state that type a character on a US keyboard.
void keyFor(char c, int& vk, int& flags) {
    flags = 0;
    unsigned char u = static_cast<unsigned char>(c);
    if (std::islower(u)) {
        vk = std::toupper(u);
    } else if (std::isupper(u)) {
        vk = u;
        flags = xplm_ShiftFlag;
    } else if (std::isdigit(u) || u == ' ') {
        vk = u;
    } else {
        switch (c) {
        case '.':
            vk = XPLM_VK_PERIOD;
            break;
        case ',':
            vk = XPLM_VK_COMMA;
            break;
        case '-':
            vk = XPLM_VK_MINUS;
            break;
        case '=':
            vk = XPLM_VK_EQUAL;
            break;
        case '/':
            vk = XPLM_VK_SLASH;
            break;
        case ';':
            vk = XPLM_VK_SEMICOLON;
            break;
        default:
            vk = 0;
            break; // no key of its own: the character alone is sent
        }
    }
}

bool shownAndRooted(const Widget* w) {
    return w && widgets::visibleThroughParents(w) && widgets::rootOf(const_cast<Widget*>(w));
}

} // namespace

std::vector<WidgetHandle> topLevelWidgets() {
    std::vector<WidgetHandle> out;
    for (Widget* w : widgets::topLevel())
        out.push_back(widgets::idOf(w));
    return out;
}

bool widgetInfo(WidgetHandle w, WidgetInfo& out) {
    Widget* rec = widgets::find(w);
    if (!rec) return false;
    out = infoOf(rec);
    return true;
}

std::vector<WidgetHandle> findWidgets(const std::function<bool(const WidgetInfo&)>& pred,
                                      WidgetHandle under) {
    std::vector<WidgetHandle> out;
    if (under) {
        if (Widget* w = widgets::find(under)) collect(w, pred, out);
        return out;
    }
    for (Widget* w : widgets::topLevel())
        collect(w, pred, out);
    return out;
}

WidgetHandle findWidget(const std::string& descriptor, WidgetHandle under) {
    auto found = findWidgets([&](const WidgetInfo& i) { return i.descriptor == descriptor; }, under);
    return found.empty() ? nullptr : found.front();
}

WidgetHandle findWidgetByClass(int widgetClass, WidgetHandle under, int nth) {
    auto found = findWidgets([&](const WidgetInfo& i) { return i.widgetClass == widgetClass; }, under);
    return (nth >= 0 && nth < static_cast<int>(found.size())) ? found[nth] : nullptr;
}

std::string widgetDescriptor(WidgetHandle w) {
    Widget* rec = widgets::find(w);
    return rec ? rec->descriptor : std::string();
}

intptr_t widgetProperty(WidgetHandle w, int property, bool* exists) {
    int there = 0;
    intptr_t value = XPGetWidgetProperty(w, property, &there);
    if (exists) *exists = there != 0;
    return value;
}

WidgetHandle focusedWidget() {
    Widget* w = widgets::focused();
    return w ? widgets::idOf(w) : nullptr;
}

std::string widgetTree() {
    std::ostringstream out;
    for (const Widget* w : widgets::topLevel())
        printTree(w, 0, out);
    return out.str();
}

bool clickWidgetAt(Host& host, WidgetHandle w, int dx, int dy) {
    Widget* rec = widgets::find(w);
    if (!shownAndRooted(rec)) return false;
    return host.click(rec->left + dx, rec->bottom + dy);
}

bool clickWidget(Host& host, WidgetHandle w) {
    Widget* rec = widgets::find(w);
    if (!rec) return false;
    return clickWidgetAt(host, w, (rec->right - rec->left) / 2, (rec->top - rec->bottom) / 2);
}

bool clickCloseBox(Host& host, WidgetHandle mainWindow) {
    int x = 0, y = 0;
    if (!shownAndRooted(widgets::find(mainWindow)) || !widgets::closeBoxCentre(mainWindow, x, y))
        return false;
    return host.click(x, y);
}

bool pressKeyInto(Host& host, WidgetHandle w, int virtualKey, char ch, int flags) {
    Widget* rec = widgets::find(w);
    if (!rec) return false;
    if (focusedWidget() != w) {
        // A click near the right end puts the caret after the text.
        clickWidgetAt(host, w, std::max(0, rec->right - rec->left - 2), (rec->top - rec->bottom) / 2);
        if (focusedWidget() != w) return false;
    }
    host.pressKey(virtualKey, flags, ch);
    return true;
}

bool typeInto(Host& host, WidgetHandle textField, const std::string& text) {
    if (!pressKeyInto(host, textField, XPLM_VK_END, 0, 0)) return false;
    for (char c : text) {
        int vk = 0, flags = 0;
        keyFor(c, vk, flags);
        host.pressKey(vk, flags, c);
    }
    return true;
}

bool dragSliderTo(Host& host, WidgetHandle scrollBar, int value) {
    Widget* rec = widgets::find(scrollBar);
    if (!shownAndRooted(rec) || rec->widgetClass != xpWidgetClass_ScrollBar) return false;
    auto prop = [&](int id) { return static_cast<int>(XPGetWidgetProperty(scrollBar, id, nullptr)); };
    int lo = prop(xpProperty_ScrollBarMin), hi = prop(xpProperty_ScrollBarMax);
    XPTrackStyle style =
        prop(xpProperty_ScrollBarType) == xpScrollBarTypeSlider ? xpTrack_Slider : xpTrack_ScrollBar;
    int vertical = 0, down = 0, downPage = 0, thumb = 0, upPage = 0, up = 0;
    XPGetTrackMetrics(rec->left, rec->bottom, rec->right, rec->top, lo, hi,
                      prop(xpProperty_ScrollBarSliderPosition), style, &vertical, &down, &downPage, &thumb,
                      &upPage, &up);
    int travel = downPage + upPage;
    int origin = vertical ? rec->bottom : rec->left;
    int across = vertical ? (rec->left + rec->right) / 2 : (rec->bottom + rec->top) / 2;
    if (thumb > 0 && travel > 0 && hi != lo) {
        int from = origin + down + downPage + thumb / 2;
        double fraction = (double(value) - lo) / (double(hi) - lo);
        fraction = fraction < 0 ? 0 : (fraction > 1 ? 1 : fraction);
        int to = origin + down + static_cast<int>(fraction * travel + 0.5) + thumb / 2;
        if (vertical) {
            host.mouseDown(across, from);
            host.mouseDrag(across, to);
            host.mouseUp(across, to);
        } else {
            host.mouseDown(from, across);
            host.mouseDrag(to, across);
            host.mouseUp(to, across);
        }
    }
    // Pixels may be coarser than values: finish with the arrows when there are any.
    for (int i = 0; i < kMaxArrowSteps && down > 0; ++i) {
        int now = prop(xpProperty_ScrollBarSliderPosition);
        if (now == value) break;
        bool towardsMax = (value > now) == (hi >= lo);
        int arrowAlong = towardsMax
                             ? origin + (vertical ? rec->top - rec->bottom : rec->right - rec->left) - up / 2
                             : origin + down / 2;
        bool took = vertical ? host.click(across, arrowAlong) : host.click(arrowAlong, across);
        if (!took || prop(xpProperty_ScrollBarSliderPosition) == now) break; // stuck at an end
    }
    return prop(xpProperty_ScrollBarSliderPosition) == value;
}

bool screenshotWidget(Host& host, WidgetHandle w, const std::string& pngPath, std::string* why) {
    Widget* rec = widgets::find(w);
    if (!rec) {
        if (why) *why = "no such widget";
        return false;
    }
    if (!host.renderingAvailable()) {
        if (why) *why = "rendering is not available: " + gfx::unavailableReason();
        return false;
    }
    host.runFrames(1);
    gfx::Image image;
    if (!gfx::readPixels(rec->left, rec->top, rec->right, rec->bottom, image)) {
        if (why) *why = "the widget lies outside the screen";
        return false;
    }
    return gfx::writePng(image, pngPath, why);
}

} // namespace simhost
