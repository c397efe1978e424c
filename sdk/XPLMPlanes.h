#ifndef XPLMPlanes_h
#define XPLMPlanes_h
/*
 * Aircraft: the user's aircraft and the AI aircraft, their models and who
 * controls them.
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Index of the user's aircraft. */
#define XPLM_USER_AIRCRAFT 0

/// Called when aircraft requested with XPLMAcquirePlanes become available.
typedef void (*XPLMPlanesAvailable_f)(void* inRefcon);

/// Loads another aircraft (path of its .acf) as the user's.
XPLM_API void XPLMSetUsersAircraft(const char* inAircraftPath);
/// Places the user at an airport given by its code.
XPLM_API void XPLMPlaceUserAtAirport(const char* inAirportCode);
#if defined(XPLM300)
/// Places the user at a position: degrees, metres MSL, degrees true, metres per second.
XPLM_API void XPLMPlaceUserAtLocation(double latitudeDegrees, double longitudeDegrees,
                                      float elevationMetersMSL, float headingDegreesTrue,
                                      float speedMetersPerSecond);
#endif
/// Number of aircraft, active aircraft, and the plug-in controlling them.
XPLM_API void XPLMCountAircraft(int* outTotalAircraft, int* outActiveAircraft, XPLMPluginID* outController);
/// File name (buffer >= 256 bytes) and path (buffer >= 512 bytes) of aircraft inIndex; 0 = the user's.
XPLM_API void XPLMGetNthAircraftModel(int inIndex, char* outFileName, char* outPath);
/// Asks for exclusive control of the AI aircraft; 1 if granted now, else inCallback fires later.
XPLM_API int XPLMAcquirePlanes(char** inAircraft, XPLMPlanesAvailable_f inCallback, void* inRefcon);
/// Gives control of the AI aircraft back.
XPLM_API void XPLMReleasePlanes(void);
/// Sets the number of active aircraft (controlling plug-in only).
XPLM_API void XPLMSetActiveAircraftCount(int inCount);
/// Loads a model into AI aircraft slot inIndex.
XPLM_API void XPLMSetAircraftModel(int inIndex, const char* inAircraftPath);
/// Turns the sim's AI off for one aircraft.
XPLM_API void XPLMDisableAIForPlane(int inPlaneIndex);

#if defined(XPLM_DEPRECATED)
/// Control positions for XPLMDrawAircraft.
typedef struct {
    int structSize;
    float gearPosition;
    float flapRatio;
    float spoilerRatio;
    float speedBrakeRatio;
    float slatRatio;
    float wingSweep;
    float thrust;
    float yokePitch;
    float yokeHeading;
    float yokeRoll;
} XPLMPlaneDrawState_t;
/// Draws an aircraft model at a position (3-D draw callbacks only; no effect under Vulkan/Metal).
XPLM_API void XPLMDrawAircraft(int inPlaneIndex, float inX, float inY, float inZ, float inPitch, float inRoll,
                               float inYaw, int inFullDraw, XPLMPlaneDrawState_t* inDrawStateInfo);
/// Reinitialises the user's aircraft.
XPLM_API void XPLMReinitUsersPlane(void);
#endif

#ifdef __cplusplus
}
#endif

#endif /* XPLMPlanes_h */
