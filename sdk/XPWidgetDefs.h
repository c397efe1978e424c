#ifndef XPWidgetDefs_h
#define XPWidgetDefs_h
/*
 * Widget library basics: widget handles, classes, properties, messages and
 * dispatch modes. Message parameters and property values are intptr_t
 * (64-bit on LP64 Linux, like the long of the oldest SDK).
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/// Opaque handle of a widget; 0 means "no widget".
typedef void* XPWidgetID;

/* Properties shared by every widget. 1 to 999 are the library's, 1000 to
   9999 the standard classes' (100 per class), 10000 on the plug-ins'. */
enum {
    xpProperty_Refcon = 0,   /* client data */
    xpProperty_Dragging = 1, /* used by XPUDragWidget */
    xpProperty_DragXOff = 2, /* used by XPUDragWidget */
    xpProperty_DragYOff = 3, /* used by XPUDragWidget */
    xpProperty_Hilited = 4,  /* highlighted */
    xpProperty_Object = 5,   /* attached C++ object */
    xpProperty_Clip = 6,     /* 1 = clip drawing to the exposed rectangle */
    xpProperty_Enabled = 7,  /* enabled state */
    xpProperty_UserStart = 10000
};
typedef int XPWidgetPropertyID;

/// Mouse state passed with mouse messages (16 bytes); for a wheel event button is the wheel axis.
typedef struct {
    int x;
    int y;
    int button; /* 0 = left */
#if defined(XPLM200)
    int delta; /* scroll clicks */
#endif
} XPMouseState_t;

/// Key state passed with xpMsg_KeyPress (12 bytes); key may be 0 for non-ASCII keys.
typedef struct {
    char key;           /* offset 0 */
    XPLMKeyFlags flags; /* offset 4 */
    char vkey;          /* offset 8 */
} XPKeyState_t;

/// Geometry change passed with xpMsg_Reshape; +dy = moved up.
typedef struct {
    int dx;
    int dy;
    int dwidth;
    int dheight;
} XPWidgetGeometryChange_t;

/* How XPSendMessageToWidget routes a message. Within one widget the callbacks
   are tried from the newest to the oldest (the class function last). */
enum {
    xpMode_Direct = 0,             /* the target only */
    xpMode_UpChain = 1,            /* target, then parents until handled or a root is passed */
    xpMode_Recursive = 2,          /* target, then all descendants depth-first */
    xpMode_DirectAllCallbacks = 3, /* target only, every callback even after one handles it */
    xpMode_Once = 4                /* only the target's newest callback */
};
typedef int XPDispatchMode;

/* A widget class; 0 = none (custom widgets). */
typedef int XPWidgetClass;
#define xpWidgetClass_None 0

/* Messages. The comments give the dispatch and the parameters. */
enum {
    xpMsg_None = 0,               /* never sent */
    xpMsg_Create = 1,             /* Direct; p1 = 1 when added as a subclass, 0 at creation */
    xpMsg_Destroy = 2,            /* Direct to all callbacks; p1 = 1 when deleted with its parent */
    xpMsg_Paint = 3,              /* Direct; draw self and children, else xpMsg_Draw follows */
    xpMsg_Draw = 4,               /* Direct; draw self, 2-D global screen coordinates */
    xpMsg_KeyPress = 5,           /* UpChain; p1 = XPKeyState_t* */
    xpMsg_KeyTakeFocus = 6,       /* Direct; p1 = 1 if a child gave focus up; handled = accepted */
    xpMsg_KeyLoseFocus = 7,       /* Direct; p1 = 1 if another widget takes focus */
    xpMsg_MouseDown = 8,          /* offered up the chain until accepted; p1 = XPMouseState_t* */
    xpMsg_MouseDrag = 9,          /* Direct to the acceptor of the down; p1 = XPMouseState_t* */
    xpMsg_MouseUp = 10,           /* Direct to the acceptor of the down; p1 = XPMouseState_t* */
    xpMsg_Reshape = 11,           /* UpChain; p1 = reshaped widget, p2 = XPWidgetGeometryChange_t* */
    xpMsg_ExposedChanged = 12,    /* Direct */
    xpMsg_AcceptChild = 13,       /* Direct; p1 = child being added */
    xpMsg_LoseChild = 14,         /* Direct; p1 = child being removed */
    xpMsg_AcceptParent = 15,      /* Direct; p1 = new parent, 0 = none */
    xpMsg_Shown = 16,             /* UpChain; p1 = the widget shown */
    xpMsg_Hidden = 17,            /* UpChain; p1 = the widget hidden */
    xpMsg_DescriptorChanged = 18, /* Direct */
    xpMsg_PropertyChanged = 19,   /* Direct; p1 = property, p2 = new value */
#if defined(XPLM200)
    xpMsg_MouseWheel = 20,   /* UpChain; p1 = XPMouseState_t*; return 1 to consume */
    xpMsg_CursorAdjust = 21, /* UpChain; p1 = XPMouseState_t*, p2 = XPLMCursorStatus* to set */
#endif
    xpMsg_UserStart = 10000
};
typedef int XPWidgetMessage;

/// A widget function: return 1 if it handled the message, 0 otherwise.
typedef int (*XPWidgetFunc_t)(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t inParam1,
                              intptr_t inParam2);

#ifdef __cplusplus
}
#endif

#endif /* XPWidgetDefs_h */
