#ifndef XPWidgetUtils_h
#define XPWidgetUtils_h
/*
 * Widget utilities: creating a whole dialog from a table, and ready-made
 * widget behaviours (fixed layout, select on click, defocus, drag).
 */

#include "XPWidgetDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/// One widget of a table for XPUCreateWidgets (48 bytes on LP64).
typedef struct {
    int left;                  /* offset 0 */
    int top;                   /* offset 4 */
    int right;                 /* offset 8 */
    int bottom;                /* offset 12 */
    int visible;               /* offset 16 */
    const char* descriptor;    /* offset 24 */
    int isRoot;                /* offset 32 */
    int containerIndex;        /* offset 36: index in the same table, NO_PARENT or PARAM_PARENT */
    XPWidgetClass widgetClass; /* offset 40 */
} XPWidgetCreate_t;

#define NO_PARENT -1    /* containerIndex: no parent */
#define PARAM_PARENT -2 /* containerIndex: the inParamParent of XPUCreateWidgets */

/* Number of entries of a widget table. */
#define WIDGET_COUNT(x) ((int)(sizeof(x) / sizeof(XPWidgetCreate_t)))

/* Fields of the structures that message parameters point to. */
#define MOUSE_X(param) (((XPMouseState_t*)(param))->x)
#define MOUSE_Y(param) (((XPMouseState_t*)(param))->y)
#define DELTA_X(param) (((XPWidgetGeometryChange_t*)(param))->dx)
#define DELTA_Y(param) (((XPWidgetGeometryChange_t*)(param))->dy)
#define DELTA_W(param) (((XPWidgetGeometryChange_t*)(param))->dwidth)
#define DELTA_H(param) (((XPWidgetGeometryChange_t*)(param))->dheight)
#define KEY_CHAR(param) (((XPKeyState_t*)(param))->key)
#define KEY_FLAGS(param) (((XPKeyState_t*)(param))->flags)
#define KEY_VKEY(param) (((XPKeyState_t*)(param))->vkey)

/* Whether (x, y) lies in the rectangle, edges included (+y up). */
#define IN_RECT(x, y, l, t, r, b) (((x) >= (l)) && ((x) <= (r)) && ((y) >= (b)) && ((y) <= (t)))

/// Creates the widgets of a table in order, storing their IDs in ioWidgets; parents come first.
WIDGET_API void XPUCreateWidgets(const XPWidgetCreate_t* inWidgetDefs, int inCount, XPWidgetID inParamParent,
                                 XPWidgetID* ioWidgets);
/// Moves a widget (and its children) without resizing; +x right, +y up.
WIDGET_API void XPUMoveWidgetBy(XPWidgetID inWidget, int inDeltaX, int inDeltaY);
/// Widget function keeping the children at fixed offsets when the widget is reshaped.
WIDGET_API int XPUFixedLayout(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t inParam1,
                              intptr_t inParam2);
/// Brings the window to the front on a click; inEatClick consumes that click.
WIDGET_API int XPUSelectIfNeeded(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t inParam1,
                                 intptr_t inParam2, int inEatClick);
/// Gives the keyboard focus back to the sim on a click.
WIDGET_API int XPUDefocusKeyboard(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t inParam1,
                                  intptr_t inParam2, int inEatClick);
/// Drags the widget when the mouse goes down in the given global rectangle (e.g. a title bar).
WIDGET_API int XPUDragWidget(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t inParam1,
                             intptr_t inParam2, int inLeft, int inTop, int inRight, int inBottom);

#ifdef __cplusplus
}
#endif

#endif /* XPWidgetUtils_h */
