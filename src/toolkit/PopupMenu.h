// The toolkit's popup menu and popup button.
//
// A popup button is a custom widget showing the selected line of its item list
// (lines separated by ";", kept in the widget's descriptor). A click opens the
// popup menu under it: a list of the lines in a screen-wide root widget, so
// that a click anywhere is seen. A click on a line selects it, closes the menu
// and sends kXSBMsg_PopupItemPicked up the button's widget chain (param1 the
// button, param2 the line); a click outside closes the menu without change.
#pragma once

#include "XPWidgetDefs.h"

/// Message a popup button sends up its chain when a line is picked: param1 the button, param2 the line.
constexpr XPWidgetMessage kXSBMsg_PopupItemPicked = 12105;
/// Property of a popup button: the selected line, 0-based.
constexpr XPWidgetPropertyID kXSBProperty_PopupCurrentItem = 12105;
/// Most lines a popup list holds; later ones are ignored.
constexpr int kXSBMaxPopupItems = 200;
/// Height of one line of the popup menu, pixels.
constexpr int kXSBPopupLineHeight = 16;

/// Receives the line (0-based) the user picked in an open popup menu.
typedef void (*XSBPopupPick_f)(int line, void* refcon);

/// Opens the popup menu with its top-left corner at (left, top) (screen pixels), listing the
/// ";"-separated items with `currentLine` highlighted. A pick calls `pick`; a click outside the
/// list closes it without a call. An open menu is closed first.
void XSBPickPopup(int left, int top, const char* items, int currentLine, XSBPopupPick_f pick, void* refcon);
/// Creates a popup button widget inside `container` showing the line `selected` of `items`.
XPWidgetID XSBCreatePopup(int left, int top, int right, int bottom, int visible, const char* items,
                          int selected, XPWidgetID container);
/// Whether the popup menu is open.
bool XSBPopupIsOpen();
/// Screen rectangle of the open menu's list (pixels); false when closed.
bool XSBPopupListGeometry(int* left, int* top, int* right, int* bottom);
/// Destroys the popup menu's widget (call when the plug-in stops).
void XSBPopupCleanup();

/// Number of lines of a ";"-separated list (an empty list has one empty line), at most kXSBMaxPopupItems.
int XSBCountPopupItems(const char* items);
/// Copies line `line` of a ";"-separated list into out (always terminated); false when there is no such line.
bool XSBGetPopupItem(const char* items, int line, char* out, int size);
