#ifndef XPLMCamera_h
#define XPLMCamera_h
/*
 * Camera control: a plug-in may position the sim's camera every frame.
 * Angles are degrees from a camera facing level toward -Z (north).
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/* How long a plug-in keeps the camera. */
enum {
    xplm_ControlCameraUntilViewChanges = 1,
    xplm_ControlCameraForever = 2 /* until disabled or another plug-in takes control */
};
typedef int XPLMCameraControlDuration;

/// A camera position (28 bytes).
typedef struct {
    float x;       /* local OpenGL metres */
    float y;       /* local OpenGL metres */
    float z;       /* local OpenGL metres */
    float pitch;   /* degrees, + nose up */
    float heading; /* degrees, + clockwise */
    float roll;    /* degrees, + roll right */
    float zoom;    /* 1 = normal, 2 = 2x magnification */
} XPLMCameraPosition_t;

/// Called every draw cycle while the plug-in has the camera: fill the position and return 1,
/// or return 0 to give control up. When control is taken away it is called once with a NULL
/// position and inIsLosingControl = 1.
typedef int (*XPLMCameraControl_f)(XPLMCameraPosition_t* outCameraPosition, int inIsLosingControl,
                                   void* inRefcon);

/// Takes the camera from the next draw cycle on; inControlFunc must be non-NULL.
XPLM_API void XPLMControlCamera(XPLMCameraControlDuration inHowLong, XPLMCameraControl_f inControlFunc,
                                void* inRefcon);
/// Releases the camera (the control function is not called with the losing flag).
XPLM_API void XPLMDontControlCamera(void);
/// 1 if a plug-in controls the camera; the duration pointer may be NULL.
XPLM_API int XPLMIsCameraBeingControlled(XPLMCameraControlDuration* outCameraControlDuration);
/// The current camera position.
XPLM_API void XPLMReadCameraPosition(XPLMCameraPosition_t* outCameraPosition);

#ifdef __cplusplus
}
#endif

#endif /* XPLMCamera_h */
