#include "toolkit/Window.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "toolkit/Panel.h"
#include "utils/HV_LOGUtils.h"

namespace {

/// Height of the main window's title bar, pixels.
constexpr int kTitleBarHeight = 20;
/// Space Pack adds under the root panel for the title bar and frame, pixels.
constexpr int kPackFrameHeight = 22;
/// The screen Center() assumes, pixels.
constexpr int kCenterScreenWidth = 1024;
constexpr int kCenterScreenHeight = 768;

/// Messages whose param1 is the widget they concern, so that the widget's toolkit object can be
/// handed to the application; for the others param1 is a pointer or a number.
bool Param1IsWidget(long message) {
    switch (message) {
    case xpMsg_Reshape:
    case xpMsg_Shown:
    case xpMsg_Hidden:
    case xpMessage_CloseButtonPushed:
    case xpMsg_PushButtonPressed:
    case xpMsg_ButtonStateChanged:
    case xpMsg_TextFieldChanged:
    case xpMsg_ScrollBarSliderPositionChanged:
        return true;
    default:
        // The toolkit's own messages (12104 and the popup and array messages) carry a widget too.
        return message >= kHV_MsgChildBottomMoved && message < kHV_MsgChildBottomMoved + 16;
    }
}

/// Sets the main window's geometry with its widgets following the move. Hosts whose main window
/// moves its children on a reshape do it themselves; on the others the children are moved here,
/// as far as the probe (the root panel's widget, which every move must carry along) shows they were not.
void MoveWindowTo(HV_Window& window, int left, int top, int right, int bottom) {
    int oldLeft = 0, oldTop = 0;
    XPGetWidgetGeometry(window.widget, &oldLeft, &oldTop, nullptr, nullptr);
    XPWidgetID probe = window.rootPanel ? window.rootPanel->widget : nullptr;
    int probeLeft = 0, probeTop = 0;
    if (probe) XPGetWidgetGeometry(probe, &probeLeft, &probeTop, nullptr, nullptr);
    XPSetWidgetGeometry(window.widget, left, top, right, bottom);
    if (!probe) return;
    int movedLeft = 0, movedTop = 0;
    XPGetWidgetGeometry(probe, &movedLeft, &movedTop, nullptr, nullptr);
    const int dx = (left - oldLeft) - (movedLeft - probeLeft);
    const int dy = (top - oldTop) - (movedTop - probeTop);
    if (dx == 0 && dy == 0) return;
    const int count = XPCountChildWidgets(window.widget);
    for (int i = 0; i < count; ++i) {
        XPWidgetID child = XPGetNthChildWidget(window.widget, i);
        int l = 0, t = 0, r = 0, b = 0;
        XPGetWidgetGeometry(child, &l, &t, &r, &b);
        XPSetWidgetGeometry(child, l + dx, t + dy, r + dx, b + dy);
    }
}

void CloseWindow(HV_Window* window) {
    XPSetWidgetProperty(window->widget, xpProperty_Refcon, 0);
    delete window;
}

/// Every window alive now, oldest first.
std::vector<HV_Window*>& LiveWindows() {
    static std::vector<HV_Window*> windows;
    return windows;
}

} // namespace

HV_Window::HV_Window(void* userData_, HV_WindowHandler_f handler_, int width_, const char* title,
                     bool hasCloseBox, bool visible_)
    : width(width_), visible(visible_), handler(handler_), userData(userData_) {
    widget = XPCreateWidget(left, top, left + width, top - height, visible ? 1 : 0, title ? title : "", 1,
                            nullptr, xpWidgetClass_MainWindow);
    XPSetWidgetProperty(widget, xpProperty_MainWindowHasCloseBoxes, hasCloseBox ? 1 : 0);
    XPSetWidgetProperty(widget, xpProperty_Refcon, reinterpret_cast<intptr_t>(this));

    // fixedHeight -1: the root panel's height is set from outside (by Pack).
    rootPanel = new HV_Panel(kHV_NoStyle, -1, 0, nullptr, true, true);
    rootPanel->SetPosition(left, top - kTitleBarHeight);
    rootPanel->SetSize(width + left, top - height);
    rootPanel->SetMarge(1, 1);
    rootPanel->SetFrameVisible(false);
    rootPanel->SetFatherWidget(widget, widget);

    XPAddWidgetCallback(widget, HV_WindowHandler);
    LiveWindows().push_back(this);
}

HV_Window::~HV_Window() {
    std::vector<HV_Window*>& live = LiveWindows();
    live.erase(std::remove(live.begin(), live.end(), this), live.end());
    if (widget) XPSetWidgetProperty(widget, xpProperty_Refcon, 0);
    delete rootPanel;
    rootPanel = nullptr;
    if (widget) XPDestroyWidget(widget, 1);
    widget = nullptr;
}

void HV_Window::SetWindowName(const char* title) {
    XPSetWidgetDescriptor(widget, title ? title : "");
}

void HV_Window::SetPosition(int left_, int top_) {
    int l = 0, t = 0, r = 0, b = 0;
    XPGetWidgetGeometry(widget, &l, &t, &r, &b);
    left = left_;
    top = top_;
    MoveWindowTo(*this, left, top, left + (r - l), top - (t - b));
}

void HV_Window::GetPosition(int& left_, int& top_) {
    XPGetWidgetGeometry(widget, &left, &top, nullptr, nullptr);
    left_ = left;
    top_ = top;
}

void HV_Window::SetPositionSize(int left_, int top_, int width_, int height_) {
    left = left_;
    top = top_;
    width = width_;
    height = height_;
    MoveWindowTo(*this, left, top, left + width, top - height);
}

void HV_Window::SetSize(int width_, int height_) {
    width = width_;
    height = height_;
    XPSetWidgetGeometry(widget, left, top, left + width, top - height);
}

void HV_Window::SetVisible(bool visible_) {
    visible = visible_;
    HV_Panel::SetFrameVisible(widget, visible);
}

void HV_Window::Center() {
    int l = 0, t = 0, r = 0, b = 0;
    XPGetWidgetGeometry(widget, &l, &t, &r, &b);
    const int w = r - l, h = t - b;
    const int midX = kCenterScreenWidth / 2, midY = kCenterScreenHeight / 2;
    left = midX - w / 2;
    top = midY + h / 2;
    MoveWindowTo(*this, left, top, midX + w / 2, midY - h / 2);
}

void HV_Window::Pack() {
    rootPanel->Pack();
    int l = 0, t = 0, r = 0, b = 0;
    XPGetWidgetGeometry(widget, &l, &t, &r, &b);
    // Resizing from the bottom must not move the children: the reshape is swallowed meanwhile.
    packing = true;
    XPSetWidgetGeometry(widget, l, t, r,
                        t - std::abs(rootPanel->bottom) - std::abs(2 * rootPanel->margeY) - kPackFrameHeight);
    packing = false;
}

bool HV_Window::AddChild(HV_Panel* child) {
    return rootPanel->AddChild(child, 0);
}

HV_Window* HV_Window::GetHV_WindowClass(void* widget_) {
    if (!widget_) return nullptr;
    return reinterpret_cast<HV_Window*>(XPGetWidgetProperty(widget_, xpProperty_Refcon, nullptr));
}

void HV_Window::CloseAll() {
    while (!LiveWindows().empty()) {
        HV_Window* window = LiveWindows().back(); // newest first: a dialog before the window it came from
        int result = kHV_CloseWindow;
        if (window->handler) {
            try {
                result = window->handler(window->userData, xpMessage_CloseButtonPushed, nullptr,
                                         static_cast<long>(reinterpret_cast<intptr_t>(window->widget)), 0);
            } catch (...) {
                HV_LOGUtils::Add2Log("HV_Window::CloseAll: a handler failed", HV_LOGUtils::kHV_LOG_ALERT);
            }
        }
        // A handler that keeps its window open loses it all the same; what it owns is its own affair.
        if (std::find(LiveWindows().begin(), LiveWindows().end(), window) != LiveWindows().end()) {
            if (result != kHV_CloseWindow)
                HV_LOGUtils::Add2Log("HV_Window::CloseAll: a window refused to close",
                                     HV_LOGUtils::kHV_LOG_WARNING);
            CloseWindow(window);
        }
    }
}

int HV_Window::HV_WindowHandler(XPWidgetMessage message, XPWidgetID widget_, intptr_t param1,
                                intptr_t param2) {
    try {
        HV_Window* window = GetHV_WindowClass(widget_);
        if (!window) return 0;
        if (message == xpMsg_Reshape && window->packing) return 1;

        if (window->handler) {
            HV_Panel* source = nullptr;
            if (Param1IsWidget(message) && param1 != 0 && reinterpret_cast<void*>(param1) != window->widget)
                source = HV_Panel::FromWidget(reinterpret_cast<void*>(param1));
            const int result = window->handler(window->userData, message, source, param1, param2);
            if (result == kHV_CloseWindow) {
                CloseWindow(window);
                return kHV_CloseWindow;
            }
            if (result != 0) return result;
        }

        const int result = window->rootPanel ? window->rootPanel->Event(message, widget_, param1, param2) : 0;
        if (result == kHV_CloseWindow) {
            CloseWindow(window);
            return kHV_CloseWindow;
        }
        return result;
    } catch (...) {
        HV_LOGUtils::Add2Log("HV_WindowHandler: a handler failed; message ignored",
                             HV_LOGUtils::kHV_LOG_ALERT);
        return 0;
    }
}
