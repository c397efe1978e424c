// A TCAS-style plug-in: it takes the AI aircraft (XPLMAcquirePlanes, waiting
// for them when another plug-in holds them), flies them in a circle around the
// user, and probes the terrain under each one to know its height above ground.
// Published: traffic/acquired (0/1), traffic/planes (active aircraft, the
// user's included), traffic/lowest_agl (metres above the probed ground of the
// lowest AI aircraft).
#include "PluginSupport.h"

#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMScenery.h"

#include <cmath>
#include <cstring>

using namespace plugin_support;

namespace {

constexpr float kCircleRadiusM = 2000;
constexpr float kBaseHeightM = 300; ///< the first AI aircraft's height above the user's, metres
constexpr float kHeightStepM = 150; ///< each next one flies this much higher
constexpr float kRadPerSecond = 0.05f;

int gAcquired = 0, gPlanes = 0;
float gLowestAgl = -1;
float gClock = 0; ///< seconds since the planes were taken
XPLMProbeRef gProbe = nullptr;
XPLMDataRef gUserX = nullptr, gUserY = nullptr, gUserZ = nullptr;
XPLMDataRef gPublished[3] = {};

void available(void*);

void take() {
    if (XPLMAcquirePlanes(nullptr, available, nullptr)) {
        gAcquired = 1;
        int total = 0, active = 0;
        XPLMPluginID controller = XPLM_NO_PLUGIN_ID;
        XPLMCountAircraft(&total, &active, &controller);
        XPLMSetActiveAircraftCount(total);
        XPLMCountAircraft(&total, &active, &controller);
        gPlanes = active;
        logLine("Traffic: got %d aircraft (controller %d is me: %d)", active, controller,
                controller == XPLMGetMyID());
    } else {
        logLine("Traffic: the aircraft are taken, waiting");
    }
}

void available(void*) {
    logLine("Traffic: the aircraft are free again");
    take();
}

/// Moves each AI aircraft on its circle and probes the ground beneath it.
float fly(float elapsed, float, int, void*) {
    if (!gAcquired) return 1;
    gClock += elapsed;
    const double ux = XPLMGetDatad(gUserX), uy = XPLMGetDatad(gUserY), uz = XPLMGetDatad(gUserZ);
    float lowest = -1;
    for (int i = 1; i < gPlanes; ++i) {
        const float a = gClock * kRadPerSecond + i;
        const float x = static_cast<float>(ux) + kCircleRadiusM * std::cos(a);
        const float z = static_cast<float>(uz) + kCircleRadiusM * std::sin(a);
        const float y = static_cast<float>(uy) + kBaseHeightM + kHeightStepM * (i - 1);
        XPLMProbeInfo_t info{};
        info.structSize = sizeof info;
        if (XPLMProbeTerrainXYZ(gProbe, x, y, z, &info) != xplm_ProbeHitTerrain) continue;
        const float agl = y - info.locationY;
        if (lowest < 0 || agl < lowest) lowest = agl;
    }
    gLowestAgl = lowest;
    return -1;
}

} // namespace

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    std::strcpy(outName, "Traffic");
    std::strcpy(outSig, "anyplugin.test.traffic");
    std::strcpy(outDesc, "takes the AI aircraft and watches their height above the ground");
    gUserX = XPLMFindDataRef("sim/flightmodel/position/local_x");
    gUserY = XPLMFindDataRef("sim/flightmodel/position/local_y");
    gUserZ = XPLMFindDataRef("sim/flightmodel/position/local_z");
    gPublished[0] = publishInt("traffic/acquired", &gAcquired);
    gPublished[1] = publishInt("traffic/planes", &gPlanes);
    gPublished[2] = publishFloat("traffic/lowest_agl", &gLowestAgl);
    gProbe = XPLMCreateProbe(xplm_ProbeY);
    XPLMRegisterFlightLoopCallback(fly, -1, nullptr);
    return gUserX && gUserY && gUserZ ? 1 : 0;
}

PLUGIN_API void XPluginStop(void) {
    XPLMUnregisterFlightLoopCallback(fly, nullptr);
    XPLMDestroyProbe(gProbe);
    for (XPLMDataRef r : gPublished)
        XPLMUnregisterDataAccessor(r);
}

PLUGIN_API int XPluginEnable(void) {
    take();
    return 1;
}

PLUGIN_API void XPluginDisable(void) {
    if (gAcquired) XPLMReleasePlanes();
    gAcquired = 0;
    gPlanes = 0;
}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID, int, void*) {}
