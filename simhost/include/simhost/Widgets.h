// simhost's widget control API: what a test or a script uses to find, read and
// operate the widgets a plug-in built, the way a user would: clicks, key
// presses and drags go through the host's mouse and keyboard, so the widgets'
// own message behaviour (and any plug-in callback on them) decides the outcome.
//
// Widget handles are the plug-in's XPWidgetID values, carried as void*.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace simhost {

class Host;

/// A widget as seen from outside (an XPWidgetID).
using WidgetHandle = void*;

/// What can be read about one widget.
struct WidgetInfo {
    WidgetHandle id = nullptr;
    WidgetHandle parent = nullptr;
    int widgetClass = 0; ///< xpWidgetClass_* (0 for custom widgets)
    std::string descriptor;
    int left = 0, top = 0, right = 0, bottom = 0; ///< global screen pixels, origin bottom-left
    bool visible = false;                         ///< its own flag
    bool shown = false;                           ///< visible through all its parents
    bool isRoot = false;
    int owner = 0; ///< plug-in ID that created it
};

/// Widgets without a parent (roots and loose widgets), oldest first.
std::vector<WidgetHandle> topLevelWidgets();
/// Reads a widget; false for a stale or unknown handle.
bool widgetInfo(WidgetHandle w, WidgetInfo& out);
/// Every widget (depth first, children in order) under `under` (itself included),
/// or under every top-level widget when `under` is null, that satisfies pred.
std::vector<WidgetHandle> findWidgets(const std::function<bool(const WidgetInfo&)>& pred,
                                      WidgetHandle under = nullptr);
/// The first widget with exactly this descriptor, or nullptr.
WidgetHandle findWidget(const std::string& descriptor, WidgetHandle under = nullptr);
/// The nth (0-based) widget of a class, or nullptr.
WidgetHandle findWidgetByClass(int widgetClass, WidgetHandle under = nullptr, int nth = 0);
/// A widget's descriptor ("" for a stale handle).
std::string widgetDescriptor(WidgetHandle w);
/// A widget property; 0 when unset (exists says which).
intptr_t widgetProperty(WidgetHandle w, int property, bool* exists = nullptr);
/// The widget that has keyboard focus, or nullptr.
WidgetHandle focusedWidget();
/// The widget tree as indented text: class, descriptor, geometry, visibility, key properties.
std::string widgetTree();

/// Clicks the centre of a widget (mouse down and up through the host). False when
/// the widget is not shown or no window took the click.
bool clickWidget(Host& host, WidgetHandle w);
/// Clicks a point given relative to a widget's bottom-left corner, pixels.
bool clickWidgetAt(Host& host, WidgetHandle w, int dx, int dy);
/// Clicks a main window's close box. False when it has none or is not shown.
bool clickCloseBox(Host& host, WidgetHandle mainWindow);
/// Gives a text field the keyboard (by clicking it at the end of its text) and
/// types the text key by key. False when the field would not take the focus.
bool typeInto(Host& host, WidgetHandle textField, const std::string& text);
/// Presses one key (down and up) into the widget with focus, focusing `w` first
/// by a click when it does not have it.
bool pressKeyInto(Host& host, WidgetHandle w, int virtualKey, char ch = 0, int flags = 0);
/// Drags a scroll bar's or slider's thumb to a value (then steps with the
/// arrows when pixels are too coarse). True when the bar ends at that value.
bool dragSliderTo(Host& host, WidgetHandle scrollBar, int value);
/// Renders a frame and writes the pixels of a widget's rectangle to a PNG.
bool screenshotWidget(Host& host, WidgetHandle w, const std::string& pngPath, std::string* why = nullptr);

} // namespace simhost
