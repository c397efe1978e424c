// The XPWidgetUtils.h functions: building widgets from a table, moving them,
// and the ready-made behaviours a plug-in calls from its own widget function.
#include "XPWidgetUtils.h"

#include "XPWidgets.h"
#include "graphics/ApiFirewall.h"
#include "widgets/WidgetTree.h"

#include <vector>

using namespace simhost::widgets;

extern "C" {

void XPUCreateWidgets(const XPWidgetCreate_t* inWidgetDefs, int inCount, XPWidgetID inParamParent,
                      XPWidgetID* ioWidgets) {
    simhost::detail::firewall("XPUCreateWidgets", [&] {
        if (!inWidgetDefs || !ioWidgets || inCount <= 0) return;
        for (int i = 0; i < inCount; ++i) {
            const XPWidgetCreate_t& d = inWidgetDefs[i];
            XPWidgetID container = nullptr;
            if (d.containerIndex == PARAM_PARENT)
                container = inParamParent;
            else if (d.containerIndex >= 0 && d.containerIndex < i) // a parent comes earlier in the table
                container = ioWidgets[d.containerIndex];
            ioWidgets[i] = XPCreateWidget(d.left, d.top, d.right, d.bottom, d.visible, d.descriptor, d.isRoot,
                                          container, d.widgetClass);
        }
    });
}

void XPUMoveWidgetBy(XPWidgetID inWidget, int inDeltaX, int inDeltaY) {
    int l = 0, t = 0, r = 0, b = 0;
    if (!find(inWidget)) return;
    XPGetWidgetGeometry(inWidget, &l, &t, &r, &b);
    XPSetWidgetGeometry(inWidget, l + inDeltaX, t + inDeltaY, r + inDeltaX, b + inDeltaY);
}

int XPUFixedLayout(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t inParam1, intptr_t inParam2) {
    if (inMessage != xpMsg_Reshape || inParam1 != reinterpret_cast<intptr_t>(inWidget) || !inParam2) return 0;
    Widget* w = find(inWidget);
    if (!w) return 0;
    const auto* change = reinterpret_cast<const XPWidgetGeometryChange_t*>(inParam2);
    // The children keep their offsets from the widget's top-left corner.
    for (Widget* k : std::vector<Widget*>(w->children))
        moveTree(k, change->dx, change->dy);
    return 1;
}

int XPUSelectIfNeeded(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t, intptr_t, int inEatClick) {
    if (inMessage != xpMsg_MouseDown || !find(inWidget)) return 0;
    if (XPIsWidgetInFront(inWidget)) return 0;
    XPBringRootWidgetToFront(inWidget);
    return inEatClick ? 1 : 0;
}

int XPUDefocusKeyboard(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t, intptr_t, int inEatClick) {
    if (inMessage != xpMsg_MouseDown || !find(inWidget)) return 0;
    XPSetKeyboardFocus(nullptr);
    return inEatClick ? 1 : 0;
}

int XPUDragWidget(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t inParam1, intptr_t, int inLeft,
                  int inTop, int inRight, int inBottom) {
    Widget* w = find(inWidget);
    if (!w || !inParam1) return 0;
    const auto* mouse = reinterpret_cast<const XPMouseState_t*>(inParam1);
    switch (inMessage) {
    case xpMsg_MouseDown:
        if (!IN_RECT(mouse->x, mouse->y, inLeft, inTop, inRight, inBottom)) return 0;
        XPSetWidgetProperty(inWidget, xpProperty_Dragging, 1);
        XPSetWidgetProperty(inWidget, xpProperty_DragXOff, mouse->x - w->left);
        XPSetWidgetProperty(inWidget, xpProperty_DragYOff, mouse->y - w->top);
        return 1;
    case xpMsg_MouseDrag: {
        if (!XPGetWidgetProperty(inWidget, xpProperty_Dragging, nullptr)) return 0;
        int dx = mouse->x - static_cast<int>(XPGetWidgetProperty(inWidget, xpProperty_DragXOff, nullptr)) -
                 w->left;
        int dy =
            mouse->y - static_cast<int>(XPGetWidgetProperty(inWidget, xpProperty_DragYOff, nullptr)) - w->top;
        // The whole tree moves with the widget, as a window does.
        if (dx || dy) moveTree(w, dx, dy);
        return 1;
    }
    case xpMsg_MouseUp:
        if (!XPGetWidgetProperty(inWidget, xpProperty_Dragging, nullptr)) return 0;
        XPSetWidgetProperty(inWidget, xpProperty_Dragging, 0);
        return 1;
    default:
        return 0;
    }
}

} // extern "C"
