#include "toolkit/MeasureWindow.h"

#include "XPLMUtilities.h"
#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "toolkit/Controls.h"
#include "toolkit/PanelStyle.h"
#include "toolkit/Window.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr int kStartWidth = 300; // pixels: room for the position line
constexpr int kMinWidth = 120;   // pixels: room for the lines
constexpr int kMinHeight = 60;   // pixels
constexpr int kGripSize = 12;    // pixels: the bottom-right square that sizes the window
constexpr long kMsgClose = 1200;
constexpr int kLineBytes = 96;

HV_MeasureWindow* gMeasure = nullptr;

int MeasureWidget(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t /*param2*/) {
    try {
        HV_MeasureWindow* m = gMeasure;
        if (!m || !m->window || m->window->widget != widget) return 0;
        if (message == xpMsg_Draw || message == xpMsg_Reshape) {
            m->Refresh();
            return 0;
        }
        if (message != xpMsg_MouseDown && message != xpMsg_MouseDrag && message != xpMsg_MouseUp) return 0;
        const auto* mouse = reinterpret_cast<const XPMouseState_t*>(param1);
        int l = 0, t = 0, r = 0, b = 0;
        XPGetWidgetGeometry(widget, &l, &t, &r, &b);
        if (message == xpMsg_MouseDown) {
            m->resizing = mouse->x >= r - kGripSize && mouse->y <= b + kGripSize;
            m->gripDx = r - mouse->x;
            m->gripDy = b - mouse->y;
            return m->resizing ? 1 : 0;
        }
        if (!m->resizing) return 0;
        // The corner keeps its offset from the mouse as it was grabbed.
        const int right = std::max(mouse->x + m->gripDx, l + kMinWidth);
        const int bottom = std::min(mouse->y + m->gripDy, t - kMinHeight);
        m->window->SetPositionSize(l, t, right - l, t - bottom);
        m->Refresh();
        if (message == xpMsg_MouseUp) m->resizing = false;
        return 1;
    } catch (...) {
        XPLMDebugString("Kalvora measuring window failed\n");
    }
    return 0;
}

int MeasureWindowHandler(void* measure, long message, HV_Panel*, long, long) {
    if (message != kMsgClose) return 0;
    if (gMeasure == measure) gMeasure = nullptr;
    delete static_cast<HV_MeasureWindow*>(measure); // the toolkit deletes the window
    return kHV_CloseWindow;
}

} // namespace

HV_MeasureWindow::HV_MeasureWindow() {
    window = new HV_Window(this, MeasureWindowHandler, kStartWidth, "Measure", true, true);
    XPSetWidgetProperty(window->widget, xpProperty_MainWindowType, xpMainWindowStyle_Translucent);
    HV_Panel* panel = new HV_Panel(kHV_NoStyle, false, 0, nullptr, true, true);
    window->AddChild(panel);
    positionLine = new HV_CtrlText("", kAlignLeft, true);
    panel->AddChild(positionLine, 0);
    sizeLine = new HV_CtrlText("", kAlignLeft, true);
    panel->AddChild(sizeLine, 0);
    window->Pack();
    window->Center();
    XPAddWidgetCallback(window->widget, MeasureWidget);
    Refresh();
}

void HV_MeasureWindow::Refresh() {
    int l = 0, t = 0, r = 0, b = 0;
    XPGetWidgetGeometry(window->widget, &l, &t, &r, &b);
    if (l == lastLeft && t == lastTop && r == lastRight && b == lastBottom && positionLine->text[0]) return;
    lastLeft = l;
    lastTop = t;
    lastRight = r;
    lastBottom = b;
    positionLine->SetText(PositionText(l, t, r, b).c_str());
    sizeLine->SetText(SizeText(l, t, r, b).c_str());
}

std::string HV_MeasureWindow::PositionText(int left, int top, int right, int bottom) {
    char line[kLineBytes];
    std::snprintf(line, sizeof line, "left %d top %d right %d bottom %d", left, top, right, bottom);
    return line;
}

std::string HV_MeasureWindow::SizeText(int left, int top, int right, int bottom) {
    char line[kLineBytes];
    std::snprintf(line, sizeof line, "%d x %d pixels", right - left, top - bottom);
    return line;
}

HV_MeasureWindow* OpenMeasureWindow() {
    if (!gMeasure) gMeasure = new HV_MeasureWindow();
    return gMeasure;
}
