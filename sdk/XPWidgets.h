#ifndef XPWidgets_h
#define XPWidgets_h
/*
 * The widget library: creating widgets, arranging them in trees, sending
 * them messages, and their geometry, descriptors, properties and keyboard
 * focus. Coordinates are global screen coordinates, (0,0) bottom-left, +y up.
 */

#include "XPWidgetDefs.h"
#include "XPLMDisplay.h"

#ifdef __cplusplus
extern "C" {
#endif

/// Creates a widget of a class; roots (container 0) are backed by a window. NULL on a bad class.
WIDGET_API XPWidgetID XPCreateWidget(int inLeft, int inTop, int inRight, int inBottom, int inVisible,
                                     const char* inDescriptor, int inIsRoot, XPWidgetID inContainer,
                                     XPWidgetClass inClass);
/// Creates a widget whose behaviour is a widget function instead of a class.
WIDGET_API XPWidgetID XPCreateCustomWidget(int inLeft, int inTop, int inRight, int inBottom, int inVisible,
                                           const char* inDescriptor, int inIsRoot, XPWidgetID inContainer,
                                           XPWidgetFunc_t inCallback);
/// Destroys a widget; children are destroyed first (1) or orphaned (0).
WIDGET_API void XPDestroyWidget(XPWidgetID inWidget, int inDestroyChildren);
/// Sends a message; 1 if some callback handled it.
WIDGET_API int XPSendMessageToWidget(XPWidgetID inWidget, XPWidgetMessage inMessage, XPDispatchMode inMode,
                                     intptr_t inParam1, intptr_t inParam2);
/// Makes a widget the last child of inContainer (0 = detach); not for roots; coordinates unchanged.
WIDGET_API void XPPlaceWidgetWithin(XPWidgetID inSubWidget, XPWidgetID inContainer);
/// Number of children.
WIDGET_API int XPCountChildWidgets(XPWidgetID inWidget);
/// Child at inIndex, 0 for a bad index.
WIDGET_API XPWidgetID XPGetNthChildWidget(XPWidgetID inWidget, int inIndex);
/// Parent, 0 for roots.
WIDGET_API XPWidgetID XPGetParentWidget(XPWidgetID inWidget);
/// Shows a widget.
WIDGET_API void XPShowWidget(XPWidgetID inWidget);
/// Hides a widget.
WIDGET_API void XPHideWidget(XPWidgetID inWidget);
/// 1 if the widget and all its parents are visible.
WIDGET_API int XPIsWidgetVisible(XPWidgetID inWidget);
/// Root of the widget's tree; NULL if the tree has no root.
WIDGET_API XPWidgetID XPFindRootWidget(XPWidgetID inWidget);
/// Brings the widget's root to the front.
WIDGET_API void XPBringRootWidgetToFront(XPWidgetID inWidget);
/// 1 if the widget's root is in front.
WIDGET_API int XPIsWidgetInFront(XPWidgetID inWidget);
/// A widget's bounds; any pointer may be NULL.
WIDGET_API void XPGetWidgetGeometry(XPWidgetID inWidget, int* outLeft, int* outTop, int* outRight,
                                    int* outBottom);
/// Moves and resizes a widget.
WIDGET_API void XPSetWidgetGeometry(XPWidgetID inWidget, int inLeft, int inTop, int inRight, int inBottom);
/// The child (or deeper descendant if inRecursive) under a point, optionally visible ones only.
WIDGET_API XPWidgetID XPGetWidgetForLocation(XPWidgetID inContainer, int inXOffset, int inYOffset,
                                             int inRecursive, int inVisibleOnly);
/// The part of a widget inside all of its parents.
WIDGET_API void XPGetWidgetExposedGeometry(XPWidgetID inWidgetID, int* outLeft, int* outTop, int* outRight,
                                           int* outBottom);
/// Replaces a widget's descriptor (its text).
WIDGET_API void XPSetWidgetDescriptor(XPWidgetID inWidget, const char* inDescriptor);
/// Copies the descriptor (strncpy: not terminated if cut); returns its full length. NULL = length only.
WIDGET_API int XPGetWidgetDescriptor(XPWidgetID inWidget, char* outDescriptor, int inMaxDescLength);
/// The window behind a root widget. Not in the 2.1 SDK.
WIDGET_API XPLMWindowID XPGetWidgetUnderlyingWindow(XPWidgetID inWidget);
/// Sets a property, adding it on first use.
WIDGET_API void XPSetWidgetProperty(XPWidgetID inWidget, XPWidgetPropertyID inProperty, intptr_t inValue);
/// A property's value, 0 if never set; *inExists (optional) gets 0 or 1.
WIDGET_API intptr_t XPGetWidgetProperty(XPWidgetID inWidget, XPWidgetPropertyID inProperty, int* inExists);
/// Gives a widget the keyboard focus; returns the widget that has it (0 = the sim).
WIDGET_API XPWidgetID XPSetKeyboardFocus(XPWidgetID inWidget);
/// Gives the focus up to the nearest accepting ancestor.
WIDGET_API void XPLoseKeyboardFocus(XPWidgetID inWidget);
/// The widget with the keyboard focus, 0 if the sim or a non-widget window has it.
WIDGET_API XPWidgetID XPGetWidgetWithFocus(void);
/// Adds a callback that sees messages before the existing ones (gets xpMsg_Create with p1 = 1).
WIDGET_API void XPAddWidgetCallback(XPWidgetID inWidget, XPWidgetFunc_t inNewCallback);
/// The widget function of a class.
WIDGET_API XPWidgetFunc_t XPGetWidgetClassFunc(XPWidgetClass inWidgetClass);

#ifdef __cplusplus
}
#endif

#endif /* XPWidgets_h */
