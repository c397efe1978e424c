// A simulator main window hosting one root HV_Panel, with one application
// handler that receives every widget message of the window together with the
// toolkit object (control or panel) the message came from.
//
// A handler returns 0 to let the message go on to the panels, another value to
// stop it there, and 2 to close the window: the window then deletes itself
// (inside its own callback), so the application must drop its pointer to it.
#pragma once

#include <cstdint>

#include "XPWidgetDefs.h"

class HV_Panel;

/// Application handler of a window: (user data, message, source control or null, param1, param2).
typedef int (*HV_WindowHandler_f)(void* userData, long message, HV_Panel* source, long param1, long param2);

/// Handler result that closes and deletes the window.
constexpr int kHV_CloseWindow = 2;

/// A main window and its root panel.
class HV_Window {
public:
    int left = 50;                 ///< window pixels
    int top = 768;                 ///< window pixels
    int width;                     ///< pixels
    int height = 400;              ///< pixels
    bool visible;                  ///< shown
    HV_Panel* rootPanel = nullptr; ///< owned: column 0 holds the window's panels
    void* widget = nullptr;        ///< the simulator main-window widget
    HV_WindowHandler_f handler;    ///< application handler, may be null
    void* userData;                ///< first argument of the handler
    bool packing = false;          ///< set while Pack reshapes the window

    /// Creates the main window (title copied) at (50, 768) of `width` x 400 pixels and its root panel.
    HV_Window(void* userData, HV_WindowHandler_f handler, int width, const char* title, bool hasCloseBox,
              bool visible);
    /// Deletes the root panel (every panel and control) and destroys the widgets.
    ~HV_Window();
    HV_Window(const HV_Window&) = delete;
    HV_Window& operator=(const HV_Window&) = delete;

    /// Sets the title.
    void SetWindowName(const char* title);
    /// Moves the window's top-left corner, keeping its size.
    void SetPosition(int left, int top);
    /// The window's top-left corner as the widget has it now.
    void GetPosition(int& left, int& top);
    /// Moves and sizes the window (pixels).
    void SetPositionSize(int left, int top, int width, int height);
    /// Sizes the window, keeping its stored top-left corner.
    void SetSize(int width, int height);
    /// Shows or hides the window.
    void SetVisible(bool visible);
    /// Centres the window on a 1024 x 768 screen (the real screen size is not consulted).
    void Center();
    /// Packs the root panel and fits the window's height to it.
    void Pack();
    /// Adds a panel or control to column 0 of the root panel; false when refused (caller keeps it).
    bool AddChild(HV_Panel* child);

    /// Closes every window of the toolkit, newest first, as its close box would: each handler hears the
    /// close message (1200) and frees what it owns; the windows are then deleted (plug-in stop).
    static void CloseAll();
    /// The window stored in a main-window widget's property 0 (null for none).
    static HV_Window* GetHV_WindowClass(void* widget);
    /// Widget function added to the main window: routes messages to the handler and the panels.
    static int HV_WindowHandler(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t param2);
};
