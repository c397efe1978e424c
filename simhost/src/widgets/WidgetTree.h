// simhost's widget library: the widget records behind XPWidgetID handles.
//
// A widget is a rectangle in global screen pixels (origin bottom-left, +y up)
// with a descriptor, properties, a parent, children (drawn in order, so the
// last child is on top) and a stack of widget functions. The class function is
// the oldest entry; XPAddWidgetCallback pushes newer ones, which see messages
// first. A root widget owns an XPLM window whose callbacks drive drawing,
// mouse and keyboard dispatch for its whole tree.
//
// Handles are pointers to records. A destroyed record is unlinked at once but
// freed only when no dispatch is running, so a callback that destroys its own
// widget (a dialog's OK button) never returns into freed memory; every handle
// a plug-in passes in is checked against the live set first.
#pragma once

#include "XPLMDisplay.h"
#include "XPWidgetDefs.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace simhost::widgets {

/// One widget.
struct Widget {
    int left = 0, top = 0, right = 0, bottom = 0; ///< global screen pixels
    bool visible = false;                         ///< its own flag; parents may still hide it
    bool isRoot = false;
    std::string descriptor;
    XPWidgetClass widgetClass = xpWidgetClass_None; ///< 0 for custom widgets
    Widget* parent = nullptr;
    std::vector<Widget*> children;         ///< drawing order: the last is on top
    std::vector<XPWidgetFunc_t> callbacks; ///< oldest (class function) first
    std::map<XPWidgetPropertyID, intptr_t> properties;
    XPLMWindowID window = nullptr; ///< root widgets only
    int owner = 0;                 ///< plug-in that created it
    bool alive = true;
};

/// The live widget behind a handle, or nullptr for 0, stale or foreign handles.
Widget* find(XPWidgetID id);
/// A widget's handle.
inline XPWidgetID idOf(const Widget* w) {
    return const_cast<Widget*>(w);
}
/// Every live widget without a parent (roots and loose widgets), in creation order.
std::vector<Widget*> topLevel();
/// The widget function of a standard class, or nullptr.
XPWidgetFunc_t classFunction(XPWidgetClass widgetClass);
/// Sends a message (the XPSendMessageToWidget dispatch) and says whether it was handled.
int dispatch(Widget* w, XPWidgetMessage msg, XPDispatchMode mode, intptr_t p1, intptr_t p2);
/// True when the widget and every parent are visible.
bool visibleThroughParents(const Widget* w);
/// The root of a widget's tree, or nullptr when it is not in a rooted tree.
Widget* rootOf(Widget* w);
/// Destroys every widget a plug-in created (on unload), without calling it.
void dropWidgets(int pluginId);
/// Appends "widget <descriptor>" for every live widget a plug-in created.
void listWidgets(int pluginId, std::vector<std::string>& out);
/// The widget that has keyboard focus, or nullptr.
Widget* focused();
/// Centre of a main window's close box, screen pixels; false when it has none.
bool closeBoxCentre(XPWidgetID mainWindow, int& x, int& y);
/// Moves a widget and all its descendants by (dx, dy) pixels (+y up).
void moveTree(Widget* w, int dx, int dy);

} // namespace simhost::widgets
