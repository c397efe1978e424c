#ifndef XPLMInstance_h
#define XPLMInstance_h
/*
 * Instances: objects the sim draws by itself every frame (X-Plane 11.10 on;
 * the way to show 3-D objects under Vulkan and Metal). The plug-in only moves
 * them, from flight loops or interface callbacks, never from draw callbacks.
 * An instance holds its own reference to its OBJ.
 */

#include "XPLMDefs.h"
#include "XPLMScenery.h"

#ifdef __cplusplus
extern "C" {
#endif

/// Opaque handle of an instance.
typedef void* XPLMInstanceRef;

#if defined(XPLM440)
/* The frame an instance is positioned in. */
enum {
    xplm_CoordSpace_World = 0,
    xplm_CoordSpace_AircraftInterior = 1,
    xplm_CoordSpace_AircraftExterior = 2,
    xplm_CoordSpace_Camera = 3
};
typedef int XPLMCoordinateSpace_t;

/// One object of a multi-object instance, with its offset (32 bytes).
typedef struct {
    XPLMObjectRef object; /* offset 0 */
    float x;              /* offset 8 */
    float y;              /* offset 12 */
    float z;              /* offset 16 */
    float pitch;          /* offset 20 */
    float heading;        /* offset 24 */
    float roll;           /* offset 28 */
} XPLMInstanceObject_t;

/// Parameters of XPLMCreateInstanceEx (48 bytes); set structSize = sizeof.
typedef struct {
    int structSize;                        /* offset 0 */
    const XPLMInstanceObject_t* objects;   /* offset 8 */
    int objectCount;                       /* offset 16 */
    const char** datarefs;                 /* offset 24, NULL-terminated */
    XPLMCoordinateSpace_t coordinateSpace; /* offset 32 */
    int aircraftIndex;                     /* offset 36 */
    int autoShift;                         /* offset 40 */
} XPLMCreateInstance_t;
#endif

/// Creates an instance of a loaded object. datarefs is a NULL-terminated list of the names
/// whose values each instance carries (pass {NULL} for none, never NULL itself).
XPLM_API XPLMInstanceRef XPLMCreateInstance(XPLMObjectRef obj, const char** datarefs);
/// Destroys an instance (its object stays loaded for other references).
XPLM_API void XPLMDestroyInstance(XPLMInstanceRef instance);
/// Moves an instance and sets its values: one float per listed dataref, in list order.
XPLM_API void XPLMInstanceSetPosition(XPLMInstanceRef instance, const XPLMDrawInfo_t* new_position,
                                      const float* data);
#if defined(XPLM420)
/// XPLMInstanceSetPosition in double precision (look it up with XPLMFindSymbol on older sims).
XPLM_API void XPLMInstanceSetPositionDouble(XPLMInstanceRef instance,
                                            const XPLMDrawInfoDouble_t* new_position, const float* data);
/// Lets the sim re-place the instance when the local origin moves.
XPLM_API void XPLMInstanceSetAutoShift(XPLMInstanceRef instance);
#endif
#if defined(XPLM440)
/// Creates a multi-object instance.
XPLM_API XPLMInstanceRef XPLMCreateInstanceEx(const XPLMCreateInstance_t* inParams);
/// Moves an instance into another frame (aircraft_index for the aircraft frames).
XPLM_API void XPLMInstanceSetCoordinateSpace(XPLMInstanceRef instance, XPLMCoordinateSpace_t space,
                                             int aircraft_index);
#endif

#ifdef __cplusplus
}
#endif

#endif /* XPLMInstance_h */
