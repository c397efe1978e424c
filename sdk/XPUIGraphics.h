#ifndef XPUIGraphics_h
#define XPUIGraphics_h
/*
 * Drawing the sim's interface elements: window backgrounds, elements
 * (buttons, check boxes, map symbols...) and tracks (scroll bars, sliders,
 * progress bars).
 */

#include "XPWidgetDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Window backgrounds. */
enum {
    xpWindow_Help = 0,
    xpWindow_MainWindow = 1,
    xpWindow_SubWindow = 2,
    xpWindow_Screen = 4,
    xpWindow_ListView = 5
};
typedef int XPWindowStyle;

/* Interface elements. */
enum {
    xpElement_TextField = 6,
    xpElement_CheckBox = 9,
    xpElement_CheckBoxLit = 10,
    xpElement_WindowCloseBox = 14,
    xpElement_WindowCloseBoxPressed = 15,
    xpElement_PushButton = 16,
    xpElement_PushButtonLit = 17,
    xpElement_OilPlatform = 24,
    xpElement_OilPlatformSmall = 25,
    xpElement_Ship = 26,
    xpElement_ILSGlideScope = 27,
    xpElement_MarkerLeft = 28,
    xpElement_Airport = 29,
    xpElement_Waypoint = 30,
    xpElement_NDB = 31,
    xpElement_VOR = 32,
    xpElement_RadioTower = 33,
    xpElement_AircraftCarrier = 34,
    xpElement_Fire = 35,
    xpElement_MarkerRight = 36,
    xpElement_CustomObject = 37,
    xpElement_CoolingTower = 38,
    xpElement_SmokeStack = 39,
    xpElement_Building = 40,
    xpElement_PowerLine = 41,
    xpElement_CopyButtons = 45,
    xpElement_CopyButtonsWithEditingGrid = 46,
    xpElement_EditingGrid = 47,
    xpElement_ScrollBar = 48,
    xpElement_VORWithCompassRose = 49,
    xpElement_Zoomer = 51,
    xpElement_TextFieldMiddle = 52,
    xpElement_LittleDownArrow = 53,
    xpElement_LittleUpArrow = 54,
    xpElement_WindowDragBar = 61,
    xpElement_WindowDragBarSmooth = 62
};
typedef int XPElementStyle;

/* Tracks. */
enum { xpTrack_ScrollBar = 0, xpTrack_Slider = 1, xpTrack_Progress = 2 };
typedef int XPTrackStyle;

/// Draws a window background between two corners (left, bottom, right, top).
WIDGET_API void XPDrawWindow(int inX1, int inY1, int inX2, int inY2, XPWindowStyle inStyle);
/// Minimum or fixed size of a window style; pointers may be NULL.
WIDGET_API void XPGetWindowDefaultDimensions(XPWindowStyle inStyle, int* outWidth, int* outHeight);
/// Draws an element; inLit is ignored by elements that cannot be lit.
WIDGET_API void XPDrawElement(int inX1, int inY1, int inX2, int inY2, XPElementStyle inStyle, int inLit);
/// Default size of an element and whether it can be lit.
WIDGET_API void XPGetElementDefaultDimensions(XPElementStyle inStyle, int* outWidth, int* outHeight,
                                              int* outCanBeLit);
/// Draws a track; its orientation follows the longer side.
WIDGET_API void XPDrawTrack(int inX1, int inY1, int inX2, int inY2, int inMin, int inMax, int inValue,
                            XPTrackStyle inTrackStyle, int inLit);
/// Default thickness of a track and whether it can be lit.
WIDGET_API void XPGetTrackDefaultDimensions(XPTrackStyle inStyle, int* outWidth, int* outCanBeLit);
/// Sizes of a track's parts along its length.
WIDGET_API void XPGetTrackMetrics(int inX1, int inY1, int inX2, int inY2, int inMin, int inMax, int inValue,
                                  XPTrackStyle inTrackStyle, int* outIsVertical, int* outDownBtnSize,
                                  int* outDownPageSize, int* outThumbSize, int* outUpPageSize,
                                  int* outUpBtnSize);

#ifdef __cplusplus
}
#endif

#endif /* XPUIGraphics_h */
