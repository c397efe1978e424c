#ifndef XPLMMap_h
#define XPLMMap_h
/*
 * The sim's moving maps (X-Plane 11.10 on): plug-ins add layers that draw
 * fills, icons and labels in map coordinates, and convert between map
 * coordinates and latitude/longitude through the map's projection.
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

#if defined(XPLM300)
/// Opaque handle of a map layer.
typedef void* XPLMMapLayerID;
/// Opaque handle of a map's projection, valid during a callback only.
typedef void* XPLMMapProjectionID;

/* The map's look. */
enum { xplm_MapStyle_VFR_Sectional = 0, xplm_MapStyle_IFR_LowEnroute = 1, xplm_MapStyle_IFR_HighEnroute = 2 };
typedef int XPLMMapStyle;

/* Where a layer sits: fills below markings. */
enum { xplm_MapLayer_Fill = 0, xplm_MapLayer_Markings = 1 };
typedef int XPLMMapLayerType;

/* Whether an icon or label turns with the map or stays upright on screen. */
enum { xplm_MapOrientation_Map = 0, xplm_MapOrientation_UI = 1 };
typedef int XPLMMapOrientation;

/* Identifiers of the sim's maps. */
#define XPLM_MAP_USER_INTERFACE "XPLM_MAP_USER_INTERFACE"
#define XPLM_MAP_IOS "XPLM_MAP_IOS"

/// Draws a layer's fill or markings; bounds are left, top, right, bottom in map units.
typedef void (*XPLMMapDrawingCallback_f)(XPLMMapLayerID inLayer, const float* inMapBoundsLeftTopRightBottom,
                                         float zoomRatio, float mapUnitsPerUserInterfaceUnit,
                                         XPLMMapStyle mapStyle, XPLMMapProjectionID projection,
                                         void* inRefcon);
/// Draws a layer's icons (with XPLMDrawMapIconFromSheet).
typedef void (*XPLMMapIconDrawingCallback_f)(XPLMMapLayerID inLayer,
                                             const float* inMapBoundsLeftTopRightBottom, float zoomRatio,
                                             float mapUnitsPerUserInterfaceUnit, XPLMMapStyle mapStyle,
                                             XPLMMapProjectionID projection, void* inRefcon);
/// Draws a layer's labels (with XPLMDrawMapLabel).
typedef void (*XPLMMapLabelDrawingCallback_f)(XPLMMapLayerID inLayer,
                                              const float* inMapBoundsLeftTopRightBottom, float zoomRatio,
                                              float mapUnitsPerUserInterfaceUnit, XPLMMapStyle mapStyle,
                                              XPLMMapProjectionID projection, void* inRefcon);
/// Lets a layer cache what it draws when the map's total bounds change.
typedef void (*XPLMMapPrepareCacheCallback_f)(XPLMMapLayerID inLayer,
                                              const float* inTotalMapBoundsLeftTopRightBottom,
                                              XPLMMapProjectionID projection, void* inRefcon);
/// Called before the sim deletes a layer (e.g. when its map closes).
typedef void (*XPLMMapWillBeDeletedCallback_f)(XPLMMapLayerID inLayer, void* inRefcon);
/// Called when a map is created.
typedef void (*XPLMMapCreatedCallback_f)(const char* mapIdentifier, void* refcon);

/// Parameters of XPLMCreateMapLayer; set structSize = sizeof.
typedef struct {
    int structSize;
    const char* mapToCreateLayerIn;
    XPLMMapLayerType layerType;
    XPLMMapWillBeDeletedCallback_f willBeDeletedCallback;
    XPLMMapPrepareCacheCallback_f prepCacheCallback;
    XPLMMapDrawingCallback_f drawCallback;
    XPLMMapIconDrawingCallback_f iconCallback;
    XPLMMapLabelDrawingCallback_f labelCallback;
    int showUiToggle;
    const char* layerName;
    void* refcon;
} XPLMCreateMapLayer_t;

/// Adds a layer to an existing map; NULL if that map does not exist.
XPLM_API XPLMMapLayerID XPLMCreateMapLayer(XPLMCreateMapLayer_t* inParams);
/// Removes a layer; 1 on success.
XPLM_API int XPLMDestroyMapLayer(XPLMMapLayerID inLayer);
/// Asks to be told whenever a map is created.
XPLM_API void XPLMRegisterMapCreationHook(XPLMMapCreatedCallback_f callback, void* refcon);
/// 1 if the map exists now.
XPLM_API int XPLMMapExists(const char* mapIdentifier);
/// Draws icon (s, t) of a sheet of ds x dt icons in a PNG, centred at a map position.
XPLM_API void XPLMDrawMapIconFromSheet(XPLMMapLayerID layer, const char* inPngPath, int s, int t, int ds,
                                       int dt, float mapX, float mapY, XPLMMapOrientation orientation,
                                       float rotationDegrees, float mapWidth);
/// Draws a text label at a map position.
XPLM_API void XPLMDrawMapLabel(XPLMMapLayerID layer, const char* inText, float mapX, float mapY,
                               XPLMMapOrientation orientation, float rotationDegrees);
/// Latitude and longitude (degrees) to map coordinates.
XPLM_API void XPLMMapProject(XPLMMapProjectionID projection, double latitude, double longitude, float* outX,
                             float* outY);
/// Map coordinates to latitude and longitude (degrees).
XPLM_API void XPLMMapUnproject(XPLMMapProjectionID projection, float mapX, float mapY, double* outLatitude,
                               double* outLongitude);
/// Map units per metre at a map position.
XPLM_API float XPLMMapScaleMeter(XPLMMapProjectionID projection, float mapX, float mapY);
/// Heading of north on the map at a map position, in degrees.
XPLM_API float XPLMMapGetNorthHeading(XPLMMapProjectionID projection, float mapX, float mapY);
#endif

#ifdef __cplusplus
}
#endif

#endif /* XPLMMap_h */
