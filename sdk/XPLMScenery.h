#ifndef XPLMScenery_h
#define XPLMScenery_h
/*
 * Scenery: terrain probes, magnetic variation, loading OBJ files and looking
 * up library paths. Positions are local OpenGL metres (+X east, +Y up,
 * +Z south); angles are degrees.
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

#if defined(XPLM200)
/* Kinds of terrain probe. */
enum { xplm_ProbeY = 0 /* vertical probe */ };
typedef int XPLMProbeType;

/* Outcome of a probe. */
enum {
    xplm_ProbeHitTerrain = 0, /* found terrain; the info is filled in */
    xplm_ProbeError = 1,      /* bad probe, type or struct size */
    xplm_ProbeMissed = 2      /* no terrain under the point */
};
typedef int XPLMProbeResult;

/// Opaque handle of a terrain probe.
typedef void* XPLMProbeRef;

/// What a probe found (44 bytes); set structSize = sizeof before the call.
typedef struct {
    int structSize;  /* offset 0 */
    float locationX; /* offset 4, local OpenGL metres */
    float locationY; /* offset 8 */
    float locationZ; /* offset 12 */
    float normalX;   /* offset 16, terrain normal */
    float normalY;   /* offset 20 */
    float normalZ;   /* offset 24 */
    float velocityX; /* offset 28, metres per second (moving decks) */
    float velocityY; /* offset 32 */
    float velocityZ; /* offset 36 */
    int is_wet;      /* offset 40, non-zero over water */
} XPLMProbeInfo_t;

/// Creates a terrain probe.
XPLM_API XPLMProbeRef XPLMCreateProbe(XPLMProbeType inProbeType);
/// Destroys a terrain probe.
XPLM_API void XPLMDestroyProbe(XPLMProbeRef inProbe);
/// Finds the tallest physical scenery on the vertical through (x, z); fills outInfo on a hit only.
XPLM_API XPLMProbeResult XPLMProbeTerrainXYZ(XPLMProbeRef inProbe, float inX, float inY, float inZ,
                                             XPLMProbeInfo_t* outInfo);
#endif

#if defined(XPLM300)
/// Magnetic declination at a position, in degrees.
XPLM_API float XPLMGetMagneticVariation(double latitude, double longitude);
/// A true heading turned into a magnetic one at the user's position.
XPLM_API float XPLMDegTrueToDegMagnetic(float headingDegreesTrue);
/// A magnetic heading turned into a true one at the user's position.
XPLM_API float XPLMDegMagneticToDegTrue(float headingDegreesMagnetic);
#endif

#if defined(XPLM200)
/// Opaque handle of a loaded OBJ.
typedef void* XPLMObjectRef;

/// Where to draw an object (28 bytes); set structSize = sizeof.
typedef struct {
    int structSize; /* offset 0 */
    float x;        /* offset 4, local OpenGL metres */
    float y;        /* offset 8 */
    float z;        /* offset 12 */
    float pitch;    /* offset 16, degrees, + nose up */
    float heading;  /* offset 20, degrees clockwise, in local coordinates */
    float roll;     /* offset 24, degrees */
} XPLMDrawInfo_t;
#endif

#if defined(XPLM420)
/// XPLMDrawInfo_t in double precision (56 bytes).
typedef struct {
    int structSize; /* offset 0 */
    double x;       /* offset 8 */
    double y;       /* offset 16 */
    double z;       /* offset 24 */
    double pitch;   /* offset 32 */
    double heading; /* offset 40 */
    double roll;    /* offset 48 */
} XPLMDrawInfoDouble_t;
#endif

#if defined(XPLM210)
/// Called once when an asynchronous load ends, with the object or NULL on failure.
typedef void (*XPLMObjectLoaded_f)(XPLMObjectRef inObject, void* inRefcon);
#endif

#if defined(XPLM200)
/// Called once per file a library path resolves to (path relative to the X-Plane folder).
typedef void (*XPLMLibraryEnumerator_f)(const char* inFilePath, void* inRef);

/// Loads an OBJ (path relative to the X-Plane folder); NULL if missing or malformed.
/// Reference counted: balance every success with XPLMUnloadObject.
XPLM_API XPLMObjectRef XPLMLoadObject(const char* inPath);
#endif
#if defined(XPLM210)
/// Loads an OBJ in the background; inCallback fires exactly once.
XPLM_API void XPLMLoadObjectAsync(const char* inPath, XPLMObjectLoaded_f inCallback, void* inRefcon);
#endif
#if defined(XPLM_DEPRECATED)
/// Draws instances of an object from a 3-D draw callback (no effect under Vulkan/Metal).
XPLM_API void XPLMDrawObjects(XPLMObjectRef inObject, int inCount, XPLMDrawInfo_t* inLocations, int lighting,
                              int earth_relative);
#endif
#if defined(XPLM200)
/// Drops one reference to an object.
XPLM_API void XPLMUnloadObject(XPLMObjectRef inObject);
/// Resolves a library path, calling enumerator once per match; returns the number of matches.
XPLM_API int XPLMLookupObjects(const char* inPath, float inLatitude, float inLongitude,
                               XPLMLibraryEnumerator_f enumerator, void* ref);
#endif

#ifdef __cplusplus
}
#endif

#endif /* XPLMScenery_h */
