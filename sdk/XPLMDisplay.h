#ifndef XPLMDisplay_h
#define XPLMDisplay_h
/*
 * Drawing: draw callbacks per drawing phase, windows, key sniffers and hot
 * keys. Window coordinates: legacy windows in pixels from the bottom-left of
 * the sim's main window; modern windows (XPLMCreateWindowEx under XPLM300) in
 * global desktop "boxels". +x is right and +y is up in both.
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Drawing phases. The 3-D phases 0 to 30 are never called under Vulkan or
   Metal (X-Plane 11.50 on); 35 to 55 are the 2-D phases. */
#if defined(XPLM_DEPRECATED)
enum {
    xplm_Phase_FirstScene = 0,
    xplm_Phase_Terrain = 5,
    xplm_Phase_Airports = 10,
    xplm_Phase_Vectors = 15,
    xplm_Phase_Objects = 20,   /* 3-D objects */
    xplm_Phase_Airplanes = 25, /* the user's and AI aircraft */
    xplm_Phase_LastScene = 30
};
#endif
#if defined(XPLM302)
enum { xplm_Phase_Modern3D = 31 /* OpenGL and Vulkan only; costly */ };
#endif
enum {
    xplm_Phase_FirstCockpit = 35,
    xplm_Phase_Panel = 40,
    xplm_Phase_Gauges = 45,
    xplm_Phase_Window = 50, /* plug-in windows */
    xplm_Phase_LastCockpit = 55
};
#if defined(XPLM200) && !defined(XPLM300)
/* Map phases, removed once the map API arrived. */
enum { xplm_Phase_LocalMap3D = 100, xplm_Phase_LocalMap2D = 101, xplm_Phase_LocalMapProfile = 102 };
#endif
typedef int XPLMDrawingPhase;

/// A draw callback; before a phase, return 0 to suppress the sim's own drawing (ignored after).
typedef int (*XPLMDrawCallback_f)(XPLMDrawingPhase inPhase, int inIsBefore, void* inRefcon);

/// Registers a draw callback; 0 if this sim has no such phase.
XPLM_API int XPLMRegisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase,
                                      int inWantsBefore, void* inRefcon);
/// Unregisters a draw callback; 1 if it was found.
XPLM_API int XPLMUnregisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase,
                                        int inWantsBefore, void* inRefcon);

#if defined(XPLM400)
/* Cockpit devices: the sim's own glass screens (customised with draw and mouse
   callbacks) and, from XPLM 4.1, devices a plug-in creates. Coordinates are
   texels with the origin at the bottom left of the screen or the bezel. */
enum {
    xplm_device_GNS430_1 = 0,
    xplm_device_GNS430_2 = 1,
    xplm_device_GNS530_1 = 2,
    xplm_device_GNS530_2 = 3,
    xplm_device_CDU739_1 = 4,
    xplm_device_CDU739_2 = 5,
    xplm_device_G1000_PFD_1 = 6,
    xplm_device_G1000_MFD = 7,
    xplm_device_G1000_PFD_2 = 8,
    xplm_device_CDU815_1 = 9,
    xplm_device_CDU815_2 = 10,
    xplm_device_Primus_PFD_1 = 11,
    xplm_device_Primus_PFD_2 = 12,
    xplm_device_Primus_MFD_1 = 13,
    xplm_device_Primus_MFD_2 = 14,
    xplm_device_Primus_MFD_3 = 15,
    xplm_device_Primus_RMU_1 = 16,
    xplm_device_Primus_RMU_2 = 17,
    xplm_device_MCDU_1 = 18,
    xplm_device_MCDU_2 = 19
};
typedef int XPLMDeviceID;

/// Draws over a built-in device before or after the sim; before, return 0 to stop the sim drawing it.
typedef int (*XPLMAvionicsCallback_f)(XPLMDeviceID inDeviceID, int inIsBefore, void* inRefcon);
#if defined(XPLM410)
/// A click on a device's screen or bezel; return 1 to consume it.
typedef int (*XPLMAvionicsMouse_f)(int x, int y, XPLMMouseStatus inMouse, void* inRefcon);
/// The wheel over a device (wheel 0 vertical, 1 horizontal); return 1 to consume it.
typedef int (*XPLMAvionicsMouseWheel_f)(int x, int y, int wheel, int clicks, void* inRefcon);
/// The cursor over a device; xplm_CursorDefault lets the sim choose.
typedef XPLMCursorStatus (*XPLMAvionicsCursor_f)(int x, int y, void* inRefcon);
/// A key for a popped-up device holding the keyboard; return 1 to consume it.
typedef int (*XPLMAvionicsKeyboard_f)(char inKey, XPLMKeyFlags inFlags, char inVirtualKey, void* inRefCon,
                                      int losingFocus);
#endif

/// Opaque handle of a customised or created device.
typedef void* XPLMAvionicsID;

/// Parameters of XPLMRegisterAvionicsCallbacksEx; set structSize = sizeof.
typedef struct {
    int structSize;
    XPLMDeviceID deviceId;
    XPLMAvionicsCallback_f drawCallbackBefore;
    XPLMAvionicsCallback_f drawCallbackAfter;
#if defined(XPLM410)
    XPLMAvionicsMouse_f bezelClickCallback;
    XPLMAvionicsMouse_f bezelRightClickCallback;
    XPLMAvionicsMouseWheel_f bezelScrollCallback;
    XPLMAvionicsCursor_f bezelCursorCallback;
    XPLMAvionicsMouse_f screenTouchCallback;
    XPLMAvionicsMouse_f screenRightTouchCallback;
    XPLMAvionicsMouseWheel_f screenScrollCallback;
    XPLMAvionicsCursor_f screenCursorCallback;
    XPLMAvionicsKeyboard_f keyboardCallback;
#endif
    void* refcon;
} XPLMCustomizeAvionics_t;

/// Customises a built-in device; NULL when the struct is not understood.
XPLM_API XPLMAvionicsID XPLMRegisterAvionicsCallbacksEx(XPLMCustomizeAvionics_t* inParams);
/// A handle on a built-in device without callbacks (to steer its pop-up).
XPLM_API XPLMAvionicsID XPLMGetAvionicsHandle(XPLMDeviceID inDeviceID);
/// Removes the callbacks of XPLMRegisterAvionicsCallbacksEx.
XPLM_API void XPLMUnregisterAvionicsCallbacks(XPLMAvionicsID inAvionicsId);

#if defined(XPLM410)
/// Draws a created device's screen (not cleared between calls).
typedef void (*XPLMAvionicsScreenCallback_f)(void* inRefcon);
/// Draws a created device's pop-up bezel, tinted by the ambient light colour.
typedef void (*XPLMAvionicsBezelCallback_f)(float inAmbiantR, float inAmbiantG, float inAmbiantB,
                                            void* inRefcon);
/// The screen's brightness ratio from the rheostat, the ambient brightness and the bus volts ratio (-1:
/// unbound).
typedef float (*XPLMAvionicsBrightness_f)(float inRheoValue, float inAmbiantBrightness, float inBusVoltsRatio,
                                          void* inRefcon);

/// Parameters of XPLMCreateAvionicsEx; set structSize = sizeof. Sizes in pixels.
typedef struct {
    int structSize;
    int screenWidth;
    int screenHeight;
    int bezelWidth;
    int bezelHeight;
    int screenOffsetX; /* the screen's place inside the bezel */
    int screenOffsetY;
    int drawOnDemand; /* 1: the screen is drawn only after XPLMAvionicsNeedsDrawing */
    XPLMAvionicsBezelCallback_f bezelDrawCallback;
    XPLMAvionicsScreenCallback_f drawCallback;
    XPLMAvionicsMouse_f bezelClickCallback;
    XPLMAvionicsMouse_f bezelRightClickCallback;
    XPLMAvionicsMouseWheel_f bezelScrollCallback;
    XPLMAvionicsCursor_f bezelCursorCallback;
    XPLMAvionicsMouse_f screenTouchCallback;
    XPLMAvionicsMouse_f screenRightTouchCallback;
    XPLMAvionicsMouseWheel_f screenScrollCallback;
    XPLMAvionicsCursor_f screenCursorCallback;
    XPLMAvionicsKeyboard_f keyboardCallback;
    XPLMAvionicsBrightness_f brightnessCallback;
    char* deviceID;   /* unique, no spaces, at most 64 characters; copied */
    char* deviceName; /* shown to the user */
    void* refcon;
} XPLMCreateAvionics_t;

/// Creates a cockpit device; NULL when the struct is not understood or the ID is taken.
XPLM_API XPLMAvionicsID XPLMCreateAvionicsEx(XPLMCreateAvionics_t* inParams);
XPLM_API void XPLMDestroyAvionics(XPLMAvionicsID inHandle);
/// 1 when the user aircraft shows the device on a panel.
XPLM_API int XPLMIsAvionicsBound(XPLMAvionicsID inHandle);
/// The rheostat the device is bound to, ratio 0..1.
XPLM_API void XPLMSetAvionicsBrightnessRheo(XPLMAvionicsID inHandle, float brightness);
XPLM_API float XPLMGetAvionicsBrightnessRheo(XPLMAvionicsID inHandle);
/// Bus volts over nominal volts for the device's bus; -1 when unbound.
XPLM_API float XPLMGetAvionicsBusVoltsRatio(XPLMAvionicsID inHandle);
/// 1 when the cursor is over the device's screen, with its position there in texels.
XPLM_API int XPLMIsCursorOverAvionics(XPLMAvionicsID inHandle, int* outX, int* outY);
/// Asks for one redraw of an on-demand screen before the next frame.
XPLM_API void XPLMAvionicsNeedsDrawing(XPLMAvionicsID inHandle);
XPLM_API void XPLMSetAvionicsPopupVisible(XPLMAvionicsID inHandle, int inVisible);
XPLM_API int XPLMIsAvionicsPopupVisible(XPLMAvionicsID inHandle);
XPLM_API void XPLMPopOutAvionics(XPLMAvionicsID inHandle);
XPLM_API int XPLMIsAvionicsPoppedOut(XPLMAvionicsID inHandle);
XPLM_API void XPLMTakeAvionicsKeyboardFocus(XPLMAvionicsID inHandle);
XPLM_API int XPLMHasAvionicsKeyboardFocus(XPLMAvionicsID inHandle);
/// The pop-up's bounds in boxels.
XPLM_API void XPLMGetAvionicsGeometry(XPLMAvionicsID inHandle, int* outLeft, int* outTop, int* outRight,
                                      int* outBottom);
XPLM_API void XPLMSetAvionicsGeometry(XPLMAvionicsID inHandle, int inLeft, int inTop, int inRight,
                                      int inBottom);
/// The popped-out window's bounds in OS pixels.
XPLM_API void XPLMGetAvionicsGeometryOS(XPLMAvionicsID inHandle, int* outLeft, int* outTop, int* outRight,
                                        int* outBottom);
XPLM_API void XPLMSetAvionicsGeometryOS(XPLMAvionicsID inHandle, int inLeft, int inTop, int inRight,
                                        int inBottom);
#endif /* XPLM410 */
#endif /* XPLM400 */

/// Opaque handle of a window; NULL means "none".
typedef void* XPLMWindowID;

/// Draws a window's contents.
typedef void (*XPLMDrawWindow_f)(XPLMWindowID inWindowID, void* inRefcon);
/// A key for the focused window, or losingFocus = 1 when it loses the keyboard focus.
typedef void (*XPLMHandleKey_f)(XPLMWindowID inWindowID, char inKey, XPLMKeyFlags inFlags, char inVirtualKey,
                                void* inRefcon, int losingFocus);
/// A mouse event; return 1 to consume it.
typedef int (*XPLMHandleMouseClick_f)(XPLMWindowID inWindowID, int x, int y, XPLMMouseStatus inMouse,
                                      void* inRefcon);
#if defined(XPLM200)
/// The cursor over the window; xplm_CursorDefault defers to what is below.
typedef XPLMCursorStatus (*XPLMHandleCursor_f)(XPLMWindowID inWindowID, int x, int y, void* inRefcon);
/// Mouse wheel: wheel 0 vertical, 1 horizontal; clicks since the last call; return 1 to consume.
typedef int (*XPLMHandleMouseWheel_f)(XPLMWindowID inWindowID, int x, int y, int wheel, int clicks,
                                      void* inRefcon);
#endif

#if defined(XPLM301)
/* How the sim frames a modern window. */
enum {
    xplm_WindowDecorationNone = 0,
    xplm_WindowDecorationRoundRectangle = 1,
    xplm_WindowDecorationSelfDecorated = 2,
    xplm_WindowDecorationSelfDecoratedResizable = 3
};
typedef int XPLMWindowDecoration;
#endif

#if defined(XPLM300)
/* The layer a modern window lives in. */
enum {
    xplm_WindowLayerFlightOverlay = 0,
    xplm_WindowLayerFloatingWindows = 1,
    xplm_WindowLayerModal = 2,
    xplm_WindowLayerGrowlNotifications = 3
};
typedef int XPLMWindowLayer;
#endif

#if defined(XPLM200)
/// Parameters of XPLMCreateWindowEx; set structSize = sizeof (72 bytes up to XPLM210, 88 from
/// XPLM300 with XPLM301). The XPLM300 fields follow the XPLM301 one, so define both together.
typedef struct {
    int structSize;                              /* offset 0 */
    int left;                                    /* offset 4 */
    int top;                                     /* offset 8 */
    int right;                                   /* offset 12 */
    int bottom;                                  /* offset 16 */
    int visible;                                 /* offset 20 */
    XPLMDrawWindow_f drawWindowFunc;             /* offset 24 */
    XPLMHandleMouseClick_f handleMouseClickFunc; /* offset 32 */
    XPLMHandleKey_f handleKeyFunc;               /* offset 40 */
    XPLMHandleCursor_f handleCursorFunc;         /* offset 48 */
    XPLMHandleMouseWheel_f handleMouseWheelFunc; /* offset 56 */
    void* refcon;                                /* offset 64 */
#if defined(XPLM301)
    XPLMWindowDecoration decorateAsFloatingWindow; /* offset 72 */
#endif
#if defined(XPLM300)
    XPLMWindowLayer layer;                       /* offset 76 */
    XPLMHandleMouseClick_f handleRightClickFunc; /* offset 80 */
#endif
} XPLMCreateWindow_t;
#endif

#if defined(XPLM300)
/* Where and how a modern window is placed. */
enum {
    xplm_WindowPositionFree = 0,
    xplm_WindowCenterOnMonitor = 1,
    xplm_WindowFullScreenOnMonitor = 2,
    xplm_WindowFullScreenOnAllMonitors = 3,
    xplm_WindowPopOut = 4
};
#if defined(XPLM301)
enum { xplm_WindowVR = 5 };
#endif
typedef int XPLMWindowPositioningMode;
#endif

/// Creates a legacy window (no frame: the plug-in draws its own background).
XPLM_API XPLMWindowID XPLMCreateWindow(int inLeft, int inTop, int inRight, int inBottom, int inIsVisible,
                                       XPLMDrawWindow_f inDrawCallback, XPLMHandleKey_f inKeyCallback,
                                       XPLMHandleMouseClick_f inMouseCallback, void* inRefcon);
#if defined(XPLM200)
/// Creates a window from a parameter block.
XPLM_API XPLMWindowID XPLMCreateWindowEx(XPLMCreateWindow_t* inParams);
#endif
/// Destroys a window (its keyboard focus is removed first; no callbacks afterwards).
XPLM_API void XPLMDestroyWindow(XPLMWindowID inWindowID);
/// Size of the sim's main window in pixels; either pointer may be NULL.
XPLM_API void XPLMGetScreenSize(int* outWidth, int* outHeight);
/// A window's bounds; any pointer may be NULL.
XPLM_API void XPLMGetWindowGeometry(XPLMWindowID inWindowID, int* outLeft, int* outTop, int* outRight,
                                    int* outBottom);
/// Moves and resizes a window.
XPLM_API void XPLMSetWindowGeometry(XPLMWindowID inWindowID, int inLeft, int inTop, int inRight,
                                    int inBottom);
/// 1 if the window is visible.
XPLM_API int XPLMGetWindowIsVisible(XPLMWindowID inWindowID);
/// Shows (1) or hides (0) a window.
XPLM_API void XPLMSetWindowIsVisible(XPLMWindowID inWindowID, int inIsVisible);
/// The window's refcon.
XPLM_API void* XPLMGetWindowRefCon(XPLMWindowID inWindowID);
/// Replaces the window's refcon.
XPLM_API void XPLMSetWindowRefCon(XPLMWindowID inWindowID, void* inRefcon);
/// Gives the keyboard focus to a window (0 = back to the sim).
XPLM_API void XPLMTakeKeyboardFocus(XPLMWindowID inWindow);
/// 1 if the window has the keyboard focus (0 asks whether the sim has it). Not in the 2.1 SDK.
XPLM_API int XPLMHasKeyboardFocus(XPLMWindowID inWindow);
/// Brings a window to the front of its layer.
XPLM_API void XPLMBringWindowToFront(XPLMWindowID inWindow);
/// 1 if the window is in front within its layer.
XPLM_API int XPLMIsWindowInFront(XPLMWindowID inWindow);
/// Mouse position in legacy pixels.
XPLM_API void XPLMGetMouseLocation(int* outX, int* outY);

#if defined(XPLM300)
/// Bounds of the whole desktop in boxels.
XPLM_API void XPLMGetScreenBoundsGlobal(int* outLeft, int* outTop, int* outRight, int* outBottom);
/// Mouse position in global boxels.
XPLM_API void XPLMGetMouseLocationGlobal(int* outX, int* outY);
/// Bounds of a popped-out window in OS pixels.
XPLM_API void XPLMGetWindowGeometryOS(XPLMWindowID inWindowID, int* outLeft, int* outTop, int* outRight,
                                      int* outBottom);
/// Moves and resizes a popped-out window in OS pixels.
XPLM_API void XPLMSetWindowGeometryOS(XPLMWindowID inWindowID, int inLeft, int inTop, int inRight,
                                      int inBottom);
/// 1 if the window is popped out into its own OS window.
XPLM_API int XPLMWindowIsPoppedOut(XPLMWindowID inWindowID);
/// How each edge follows a resize of the main window (0 = left/bottom, 1 = right/top).
XPLM_API void XPLMSetWindowGravity(XPLMWindowID inWindowID, float inLeftGravity, float inTopGravity,
                                   float inRightGravity, float inBottomGravity);
/// Minimum and maximum size the user may give the window, in boxels.
XPLM_API void XPLMSetWindowResizingLimits(XPLMWindowID inWindowID, int inMinWidthBoxels,
                                          int inMinHeightBoxels, int inMaxWidthBoxels, int inMaxHeightBoxels);
/// Places the window by mode on a monitor (-1 = the main one).
XPLM_API void XPLMSetWindowPositioningMode(XPLMWindowID inWindowID,
                                           XPLMWindowPositioningMode inPositioningMode, int inMonitorIndex);
/// Sets the title shown in the window's frame.
XPLM_API void XPLMSetWindowTitle(XPLMWindowID inWindowID, const char* inWindowTitle);
/// Told the bounds of one full-screen monitor in global boxels.
typedef void (*XPLMReceiveMonitorBoundsGlobal_f)(int inMonitorIndex, int inLeftBx, int inTopBx, int inRightBx,
                                                 int inBottomBx, void* inRefcon);
/// Calls back at once with each monitor the sim covers full screen.
XPLM_API void XPLMGetAllMonitorBoundsGlobal(XPLMReceiveMonitorBoundsGlobal_f inMonitorBoundsCallback,
                                            void* inRefcon);
/// Told the bounds of one monitor in the OS desktop's pixels.
typedef void (*XPLMReceiveMonitorBoundsOS_f)(int inMonitorIndex, int inLeftPx, int inTopPx, int inRightPx,
                                             int inBottomPx, void* inRefcon);
/// Calls back at once with every monitor of the OS desktop.
XPLM_API void XPLMGetAllMonitorBoundsOS(XPLMReceiveMonitorBoundsOS_f inMonitorBoundsCallback, void* inRefcon);
#endif
#if defined(XPLM301)
/// Size of a window shown in VR, in boxels.
XPLM_API void XPLMGetWindowGeometryVR(XPLMWindowID inWindowID, int* outWidthBoxels, int* outHeightBoxels);
/// Resizes a window shown in VR, in boxels.
XPLM_API void XPLMSetWindowGeometryVR(XPLMWindowID inWindowID, int widthBoxels, int heightBoxels);
/// 1 if the window is shown in VR.
XPLM_API int XPLMWindowIsInVR(XPLMWindowID inWindowID);
#endif

/// A key sniffer: return 1 to pass the key on, 0 to consume it.
typedef int (*XPLMKeySniffer_f)(char inChar, XPLMKeyFlags inFlags, char inVirtualKey, void* inRefcon);
/// Registers a sniffer before (1) or after (0) the windows; 1 on success.
XPLM_API int XPLMRegisterKeySniffer(XPLMKeySniffer_f inCallback, int inBeforeWindows, void* inRefcon);
/// Unregisters a sniffer (same three arguments); 1 on success.
XPLM_API int XPLMUnregisterKeySniffer(XPLMKeySniffer_f inCallback, int inBeforeWindows, void* inRefcon);

/// Called when a hot key is pressed.
typedef void (*XPLMHotKey_f)(void* inRefcon);
/// Opaque handle of a hot key.
typedef void* XPLMHotKeyID;
/// Registers a hot key: a virtual key code plus flags (usually including xplm_DownFlag).
XPLM_API XPLMHotKeyID XPLMRegisterHotKey(char inVirtualKey, XPLMKeyFlags inFlags, const char* inDescription,
                                         XPLMHotKey_f inCallback, void* inRefcon);
/// Unregisters one of the calling plug-in's hot keys.
XPLM_API void XPLMUnregisterHotKey(XPLMHotKeyID inHotKey);
/// Number of hot keys of all plug-ins.
XPLM_API int XPLMCountHotKeys(void);
/// The hot key at inIndex.
XPLM_API XPLMHotKeyID XPLMGetNthHotKey(int inIndex);
/// A hot key's combination, description (buffer >= 512 bytes) and owner; any pointer may be NULL.
XPLM_API void XPLMGetHotKeyInfo(XPLMHotKeyID inHotKey, char* outVirtualKey, XPLMKeyFlags* outFlags,
                                char* outDescription, XPLMPluginID* outPlugin);
/// Remaps a hot key to another combination.
XPLM_API void XPLMSetHotKeyCombination(XPLMHotKeyID inHotKey, char inVirtualKey, XPLMKeyFlags inFlags);

#ifdef __cplusplus
}
#endif

#endif /* XPLMDisplay_h */
