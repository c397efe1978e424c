// A navigation plug-in: it finds the nearest airport and the radio aids around
// it, programs the FMS (airport, VOR, fix, a lat/lon point, back to the
// airport), walks the plan into Log.txt, logs the airport's METAR, and marks
// the navaids on the map with a layer of its own. A command flies to the next
// waypoint.
// Published: nav/gps_destination (navaid ref), nav/layers_deleted.
#include "PluginSupport.h"

#include "XPLMDataAccess.h"
#include "XPLMMap.h"
#include "XPLMNavigation.h"
#include "XPLMPlugin.h"
#include "XPLMWeather.h"

#include <cstring>

using namespace plugin_support;

namespace {

constexpr int kCruiseFt = 5000;
int gGpsDestination = XPLM_NAV_NOT_FOUND, gLayersDeleted = 0;
XPLMCommandRef gNext = nullptr;
XPLMMapLayerID gLayer = nullptr;

const char* kindName(XPLMNavType t) {
    return t == xplm_Nav_Airport ? "airport"
           : t == xplm_Nav_VOR   ? "VOR"
           : t == xplm_Nav_Fix   ? "fix"
                                 : "lat/lon";
}

void walkPlan() {
    for (int i = 0; i < XPLMCountFMSEntries(); ++i) {
        XPLMNavType type = xplm_Nav_Unknown;
        char id[32] = {};
        XPLMNavRef ref = XPLM_NAV_NOT_FOUND;
        int altitude = 0;
        float lat = 0, lon = 0;
        XPLMGetFMSEntryInfo(i, &type, id, &ref, &altitude, &lat, &lon);
        logLine("Navigation: FMS %d: %s %s %d ft%s", i, kindName(type), id, altitude,
                i == XPLMGetDestinationFMSEntry() ? " (destination)" : "");
    }
    gGpsDestination = XPLMGetGPSDestination();
}

void program() {
    float lat = static_cast<float>(XPLMGetDatad(XPLMFindDataRef("sim/flightmodel/position/latitude")));
    float lon = static_cast<float>(XPLMGetDatad(XPLMFindDataRef("sim/flightmodel/position/longitude")));
    const XPLMNavRef airport = XPLMFindNavAid(nullptr, nullptr, &lat, &lon, nullptr, xplm_Nav_Airport);
    const XPLMNavRef vor = XPLMFindNavAid(nullptr, "SIM", &lat, &lon, nullptr, xplm_Nav_VOR);
    int ndbKhz = 385;
    const XPLMNavRef ndb = XPLMFindNavAid(nullptr, nullptr, &lat, &lon, &ndbKhz, xplm_Nav_NDB);
    const XPLMNavRef fix = XPLMFindNavAid("ALPHA", nullptr, nullptr, nullptr, nullptr, xplm_Nav_Fix);
    char airportId[32] = {}, vorName[256] = {};
    float airportLat = 0, airportLon = 0;
    XPLMGetNavAidInfo(airport, nullptr, &airportLat, &airportLon, nullptr, nullptr, nullptr, airportId,
                      nullptr, nullptr);
    int vorFreq = 0;
    XPLMGetNavAidInfo(vor, nullptr, nullptr, nullptr, nullptr, &vorFreq, nullptr, nullptr, vorName, nullptr);
    logLine("Navigation: nearest airport %s, VOR %s on %d.%02d MHz, NDB on %d kHz is %d", airportId, vorName,
            vorFreq / 100, vorFreq % 100, ndbKhz, ndb);

    XPLMSetFMSEntryInfo(0, airport, 0);
    XPLMSetFMSEntryInfo(1, vor, kCruiseFt);
    XPLMSetFMSEntryInfo(2, fix, kCruiseFt);
    XPLMSetFMSEntryLatLon(3, airportLat + 0.1f, airportLon, kCruiseFt);
    XPLMSetFMSEntryInfo(4, airport, 0);
    XPLMSetDestinationFMSEntry(1);
    walkPlan();

    XPLMFixedString150_t metar{};
    XPLMGetMETARForAirport(airportId, &metar);
    logLine("Navigation: METAR %s", metar.buffer);
}

int next(XPLMCommandRef, XPLMCommandPhase phase, void*) {
    if (phase == xplm_CommandBegin && XPLMGetDestinationFMSEntry() + 1 < XPLMCountFMSEntries()) {
        XPLMSetDestinationFMSEntry(XPLMGetDestinationFMSEntry() + 1);
        walkPlan();
    }
    return 0;
}

// ---- the map layer: the ID of every navaid of the database
void drawLabels(XPLMMapLayerID layer, const float*, float, float, XPLMMapStyle,
                XPLMMapProjectionID projection, void*) {
    for (XPLMNavRef r = XPLMGetFirstNavAid(); r != XPLM_NAV_NOT_FOUND; r = XPLMGetNextNavAid(r)) {
        float lat = 0, lon = 0, x = 0, y = 0;
        char id[32] = {};
        XPLMGetNavAidInfo(r, nullptr, &lat, &lon, nullptr, nullptr, nullptr, id, nullptr, nullptr);
        XPLMMapProject(projection, lat, lon, &x, &y);
        if (id[0]) XPLMDrawMapLabel(layer, id, x, y, xplm_MapOrientation_UI, 0);
    }
}

void layerDeleted(XPLMMapLayerID, void*) {
    ++gLayersDeleted;
    gLayer = nullptr;
}

void mapCreated(const char* mapId, void*) {
    if (std::strcmp(mapId, XPLM_MAP_USER_INTERFACE) != 0) return;
    XPLMCreateMapLayer_t p{};
    p.structSize = sizeof p;
    p.mapToCreateLayerIn = XPLM_MAP_USER_INTERFACE;
    p.layerType = xplm_MapLayer_Markings;
    p.willBeDeletedCallback = layerDeleted;
    p.labelCallback = drawLabels;
    p.layerName = "Navaids";
    gLayer = XPLMCreateMapLayer(&p);
}

} // namespace

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    std::strcpy(outName, "Navigation");
    std::strcpy(outSig, "anyplugin.test.navigation");
    std::strcpy(outDesc, "programs and walks the FMS, and marks navaids on the map");
    publishInt("nav/gps_destination", &gGpsDestination);
    publishInt("nav/layers_deleted", &gLayersDeleted);
    gNext = XPLMCreateCommand("navigation/next_waypoint", "Flies to the next FMS waypoint");
    XPLMRegisterCommandHandler(gNext, next, 1, nullptr);
    XPLMRegisterMapCreationHook(mapCreated, nullptr);
    if (XPLMMapExists(XPLM_MAP_USER_INTERFACE)) mapCreated(XPLM_MAP_USER_INTERFACE, nullptr);
    return 1;
}

PLUGIN_API void XPluginStop(void) {
    if (gLayer) XPLMDestroyMapLayer(gLayer);
    XPLMUnregisterCommandHandler(gNext, next, 1, nullptr);
    unpublishAll();
}

PLUGIN_API int XPluginEnable(void) {
    program();
    return 1;
}
PLUGIN_API void XPluginDisable(void) {}
PLUGIN_API void XPluginReceiveMessage(XPLMPluginID, int, void*) {}
