#ifndef XPLMProcessing_h
#define XPLMProcessing_h
/*
 * Flight loops: callbacks the sim runs once per frame, or after a delay,
 * outside of drawing. Intervals and return values share one encoding:
 * > 0 seconds to wait, < 0 frames to wait (-1 = next frame), 0 = stop calling
 * (the callback stays registered but inactive).
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

#if defined(XPLM210)
/* When a created flight loop runs relative to the flight model. */
enum { xplm_FlightLoop_Phase_BeforeFlightModel = 0, xplm_FlightLoop_Phase_AfterFlightModel = 1 };
typedef int XPLMFlightLoopPhaseType;

/// Opaque handle of a flight loop made with XPLMCreateFlightLoop.
typedef void* XPLMFlightLoopID;
#endif

/// A flight-loop callback: seconds since this callback last ran, seconds since any flight
/// loop last ran, a counter bumped per dispatch, the refcon; returns the next interval.
typedef float (*XPLMFlightLoop_f)(float inElapsedSinceLastCall, float inElapsedTimeSinceLastFlightLoop,
                                  int inCounter, void* inRefcon);

#if defined(XPLM210)
/// Parameters of XPLMCreateFlightLoop; set structSize = sizeof.
typedef struct {
    int structSize;                /* offset 0 */
    XPLMFlightLoopPhaseType phase; /* offset 4 */
    XPLMFlightLoop_f callbackFunc; /* offset 8 */
    void* refcon;                  /* offset 16; size 24 on LP64 */
} XPLMCreateFlightLoop_t;
#endif

/// Wall-clock seconds since the sim started; keeps running while paused.
XPLM_API float XPLMGetElapsedTime(void);
/// A counter bumped once per sim cycle (frame).
XPLM_API int XPLMGetCycleNumber(void);
/// Registers a callback run before the flight model, first after inInterval (seconds, or frames if < 0).
XPLM_API void XPLMRegisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, float inInterval, void* inRefcon);
/// Removes the callback identified by (function, refcon); never from inside it.
XPLM_API void XPLMUnregisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, void* inRefcon);
/// Reschedules a callback, from now or from its last run; never from inside it.
XPLM_API void XPLMSetFlightLoopCallbackInterval(XPLMFlightLoop_f inFlightLoop, float inInterval,
                                                int inRelativeToNow, void* inRefcon);

#if defined(XPLM210)
/// Creates a flight loop, unscheduled.
XPLM_API XPLMFlightLoopID XPLMCreateFlightLoop(XPLMCreateFlightLoop_t* inParams);
/// Destroys a flight loop made with XPLMCreateFlightLoop.
XPLM_API void XPLMDestroyFlightLoop(XPLMFlightLoopID inFlightLoopID);
/// Schedules a created flight loop (same interval encoding).
XPLM_API void XPLMScheduleFlightLoop(XPLMFlightLoopID inFlightLoopID, float inInterval, int inRelativeToNow);
#endif

#ifdef __cplusplus
}
#endif

#endif /* XPLMProcessing_h */
