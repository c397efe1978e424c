// XPLMMap.h: plug-in layers in the sim's maps. A map exists while the control
// API shows it (Host::showMap): the creation hooks hear of it when it opens,
// layers are created in it, and every frame each layer's callbacks run in
// the sim's order (fill layers before marking layers; the draw callback,
// then icons, then labels), with a projection. Icons and labels are recorded
// (Host::mapMarks), not drawn. Closing the map tells each layer it will be
// deleted.
//
// The projection is the flat one of the local frame: map units are metres
// east (x) and north (y) of the apron's reference point, north is up.
#include "HostInternal.h"
#include "WorldMath.h"

#include "XPLMMap.h"

#include <cmath>

namespace simhost::detail {
namespace {

constexpr float kMapHalfSizeM = 20000;   ///< the shown area: 40 km square around the apron
constexpr float kMapUnitsPerUiUnit = 50; ///< metres per boxel at the map's zoom
constexpr float kZoomRatio = 1;
constexpr double kMetresPerDegLat = kEarthRadiusM * kDegToRad;
/// The one projection every map uses; its address is the handle given to callbacks.
int gProjection = 0;

MapLayerRec* validLayer(void* handle) {
    HostCore* c = core();
    if (!c || !handle || !c->maps.layerHandles.count(handle)) return nullptr;
    auto* l = static_cast<MapLayerRec*>(handle);
    return l->alive ? l : nullptr;
}

bool validProjection(void* projection) {
    return projection == &gProjection && core();
}

double metresPerDegLon(const HostCore& c) {
    return kMetresPerDegLat * std::max(1e-6, std::cos(refLat(c) * kDegToRad));
}

/// Tells a layer it goes, then forgets it.
void deleteLayer(MapLayerRec& l, bool tell) {
    l.alive = false;
    if (!tell || !l.willBeDeleted || !pluginActive(l.owner)) return;
    auto fn = reinterpret_cast<XPLMMapWillBeDeletedCallback_f>(l.willBeDeleted);
    callInto(l.owner, "map layer deletion", [&] { fn(&l, l.refcon); });
}

void runLayer(HostCore& c, MapLayerRec& l) {
    const float bounds[4] = {-kMapHalfSizeM, kMapHalfSizeM, kMapHalfSizeM, -kMapHalfSizeM};
    if (!l.cachePrepared && l.prepCache) {
        auto fn = reinterpret_cast<XPLMMapPrepareCacheCallback_f>(l.prepCache);
        callInto(l.owner, "map cache", [&] { fn(&l, bounds, &gProjection, l.refcon); });
    }
    l.cachePrepared = true;
    // The draw, icon and label callbacks share one signature.
    for (void* cb : {l.draw, l.icon, l.label}) {
        if (!cb || !l.alive || !pluginActive(l.owner)) continue;
        auto fn = reinterpret_cast<XPLMMapDrawingCallback_f>(cb);
        c.maps.drawing = cb == l.draw ? nullptr : &l;
        callInto(l.owner, "map layer", [&] {
            fn(&l, bounds, kZoomRatio, kMapUnitsPerUiUnit, xplm_MapStyle_VFR_Sectional, &gProjection,
               l.refcon);
        });
        c.maps.drawing = nullptr;
    }
}

void mark(void* layer, const char* kind, const std::string& text, float x, float y, float rotationDeg) {
    HostCore* c = core();
    MapLayerRec* l = validLayer(layer);
    if (!c || !l) return;
    // Icons and labels can only be drawn from the layer's own icon and label callbacks.
    if (c->maps.drawing != l) {
        apiError(std::string("XPLMDrawMap") + (kind[0] == 'i' ? "IconFromSheet" : "Label") +
                 ": called outside the layer's icon or label callback");
        return;
    }
    c->maps.marks.push_back(MapMark{l->map, l->name, kind, text, x, y, rotationDeg});
}

} // namespace

void stepMaps(HostCore& c) {
    if (c.maps.shown.empty()) return;
    c.maps.marks.clear();
    for (int type : {xplm_MapLayer_Fill, xplm_MapLayer_Markings})
        for (size_t i = 0; i < c.maps.layers.size(); ++i) {
            MapLayerRec& l = c.maps.layers[i];
            if (l.alive && l.type == type && c.maps.shown.count(l.map) && pluginActive(l.owner))
                runLayer(c, l);
        }
}

void dropMaps(HostCore& c, int pluginId) {
    for (MapLayerRec& l : c.maps.layers)
        if (l.alive && l.owner == pluginId) deleteLayer(l, false);
    for (MapHookRec& h : c.maps.hooks)
        if (h.owner == pluginId) h.alive = false;
}

void listMaps(const HostCore& c, int pluginId, std::vector<std::string>& out) {
    for (const MapLayerRec& l : c.maps.layers)
        if (l.alive && l.owner == pluginId) out.push_back("map layer " + l.map + " " + l.name);
    // Creation hooks are not listed: the API has no call to remove one.
}

void showMap(HostCore& c, const std::string& mapId) {
    if (!c.maps.shown.insert(mapId).second) return;
    record("world", "map " + mapId + " shown");
    const size_t n = c.maps.hooks.size(); // a hook may register another: it hears of the next map
    for (size_t i = 0; i < n; ++i) {
        MapHookRec h = c.maps.hooks[i];
        if (!h.alive || !pluginActive(h.owner)) continue;
        auto fn = reinterpret_cast<XPLMMapCreatedCallback_f>(h.fn);
        callInto(h.owner, "map creation hook", [&] { fn(mapId.c_str(), h.refcon); });
    }
}

void hideMap(HostCore& c, const std::string& mapId) {
    if (!c.maps.shown.erase(mapId)) return;
    record("world", "map " + mapId + " hidden");
    for (MapLayerRec& l : c.maps.layers)
        if (l.alive && l.map == mapId) deleteLayer(l, true);
    c.maps.marks.clear();
}

} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

XPLMMapLayerID XPLMCreateMapLayer(XPLMCreateMapLayer_t* inParams) {
    HostCore* c = core();
    if (!c) return nullptr;
    if (!inParams || inParams->structSize < static_cast<int>(sizeof(XPLMCreateMapLayer_t)) ||
        !inParams->mapToCreateLayerIn) {
        apiError("XPLMCreateMapLayer: missing parameters or a structSize below the XPLM300 layout");
        return nullptr;
    }
    if (!c->maps.shown.count(inParams->mapToCreateLayerIn)) return nullptr; // that map does not exist now
    c->maps.layers.emplace_back();
    MapLayerRec& l = c->maps.layers.back();
    l.owner = caller();
    l.map = inParams->mapToCreateLayerIn;
    l.name = inParams->layerName ? inParams->layerName : "";
    l.type = inParams->layerType == xplm_MapLayer_Fill ? xplm_MapLayer_Fill : xplm_MapLayer_Markings;
    l.willBeDeleted = reinterpret_cast<void*>(inParams->willBeDeletedCallback);
    l.prepCache = reinterpret_cast<void*>(inParams->prepCacheCallback);
    l.draw = reinterpret_cast<void*>(inParams->drawCallback);
    l.icon = reinterpret_cast<void*>(inParams->iconCallback);
    l.label = reinterpret_cast<void*>(inParams->labelCallback);
    l.refcon = inParams->refcon;
    c->maps.layerHandles.insert(&l);
    return &l;
}

int XPLMDestroyMapLayer(XPLMMapLayerID inLayer) {
    MapLayerRec* l = validLayer(inLayer);
    if (!l) return 0;
    deleteLayer(*l, true);
    return 1;
}

void XPLMRegisterMapCreationHook(XPLMMapCreatedCallback_f callback, void* refcon) {
    HostCore* c = core();
    if (!c || !callback) return;
    c->maps.hooks.push_back(MapHookRec{caller(), reinterpret_cast<void*>(callback), refcon, true});
}

int XPLMMapExists(const char* mapIdentifier) {
    HostCore* c = core();
    return c && mapIdentifier && c->maps.shown.count(mapIdentifier) ? 1 : 0;
}

void XPLMDrawMapIconFromSheet(XPLMMapLayerID layer, const char* inPngPath, int, int, int, int, float mapX,
                              float mapY, XPLMMapOrientation, float rotationDegrees, float) {
    mark(layer, "icon", inPngPath ? inPngPath : "", mapX, mapY, rotationDegrees);
}

void XPLMDrawMapLabel(XPLMMapLayerID layer, const char* inText, float mapX, float mapY, XPLMMapOrientation,
                      float rotationDegrees) {
    mark(layer, "label", inText ? inText : "", mapX, mapY, rotationDegrees);
}

void XPLMMapProject(XPLMMapProjectionID projection, double latitude, double longitude, float* outX,
                    float* outY) {
    HostCore* c = core();
    if (!validProjection(projection)) return;
    if (outX) *outX = static_cast<float>((longitude - refLon(*c)) * metresPerDegLon(*c));
    if (outY) *outY = static_cast<float>((latitude - refLat(*c)) * kMetresPerDegLat);
}

void XPLMMapUnproject(XPLMMapProjectionID projection, float mapX, float mapY, double* outLatitude,
                      double* outLongitude) {
    HostCore* c = core();
    if (!validProjection(projection)) return;
    if (outLatitude) *outLatitude = refLat(*c) + mapY / kMetresPerDegLat;
    if (outLongitude) *outLongitude = refLon(*c) + mapX / metresPerDegLon(*c);
}

float XPLMMapScaleMeter(XPLMMapProjectionID projection, float, float) {
    return validProjection(projection) ? 1.0f : 0.0f; // map units are metres
}

float XPLMMapGetNorthHeading(XPLMMapProjectionID projection, float, float) {
    (void)projection;
    return 0; // north is up everywhere on a flat map
}

} // extern "C"
