// A TCAS-style plug-in: it watches the traffic X-Plane has, reading each active
// aircraft's place from the multiplayer datarefs and probing the terrain under
// it, and it takes the AI aircraft (XPLMAcquirePlanes, waiting for them when
// another plug-in holds them) to fly them in a row above the user, showing
// them to X-Plane's TCAS through the override as a traffic plug-in does.
// Published: traffic/acquired (0/1), traffic/lowest_agl (metres above the probed ground of the
// lowest other aircraft), traffic/tcas_override (what override_TCAS reads
// after it set it).
#include "PluginSupport.h"

#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMScenery.h"

#include <cstring>
#include <string>

using namespace plugin_support;

namespace {

constexpr int kPlanes = 20;         ///< X-Plane's multiplayer planes 1..19, and the user's at 0
constexpr float kSpacingM = 500;    ///< east of the user's aircraft, per plane number
constexpr float kBaseHeightM = 300; ///< the first AI aircraft's height above the user's, metres
constexpr float kHeightStepM = 150; ///< each next one flies this much higher

int gAcquired = 0, gPlanes = 0, gTcasOverride = 0;
float gLowestAgl = -1;
XPLMProbeRef gProbe = nullptr;
XPLMDataRef gUserX = nullptr, gUserY = nullptr, gUserZ = nullptr;
XPLMDataRef gPlaneX[kPlanes] = {}, gPlaneY[kPlanes] = {}, gPlaneZ[kPlanes] = {};
XPLMDataRef gOverride = nullptr, gTargetX = nullptr, gTargetY = nullptr, gTargetZ = nullptr;

void available(void*);

void take() {
    if (!XPLMAcquirePlanes(nullptr, available, nullptr)) {
        logLine("Traffic: the aircraft are taken, waiting");
        return;
    }
    gAcquired = 1;
    int total = 0, active = 0;
    XPLMPluginID controller = XPLM_NO_PLUGIN_ID;
    XPLMCountAircraft(&total, &active, &controller);
    XPLMSetActiveAircraftCount(total);
    XPLMCountAircraft(&total, &active, &controller);
    gPlanes = active;
    for (int i = 1; i < active; ++i)
        XPLMDisableAIForPlane(i);
    XPLMSetDatai(gOverride, 1);
    gTcasOverride = XPLMGetDatai(gOverride);
    logLine("Traffic: got %d aircraft (controller %d is me: %d)", active, controller,
            controller == XPLMGetMyID());
}

void available(void*) {
    logLine("Traffic: the aircraft are free again");
    take();
}

/// Places its AI aircraft in a row above the user's, in the multiplayer datarefs and as TCAS targets.
void fly() {
    const double ux = XPLMGetDatad(gUserX), uy = XPLMGetDatad(gUserY), uz = XPLMGetDatad(gUserZ);
    for (int i = 1; i < gPlanes && i < kPlanes; ++i) {
        float x = static_cast<float>(ux) + kSpacingM * i, z = static_cast<float>(uz);
        float y = static_cast<float>(uy) + kBaseHeightM + kHeightStepM * (i - 1);
        XPLMSetDatad(gPlaneX[i], x);
        XPLMSetDatad(gPlaneY[i], y);
        XPLMSetDatad(gPlaneZ[i], z);
        XPLMSetDatavf(gTargetX, &x, i, 1);
        XPLMSetDatavf(gTargetY, &y, i, 1);
        XPLMSetDatavf(gTargetZ, &z, i, 1);
    }
}

/// Each frame: fly its aircraft when it has them, then watch every active aircraft where X-Plane says it is.
float watch(float, float, int, void*) {
    if (gAcquired) fly();
    int total = 0, active = 0;
    XPLMPluginID controller = XPLM_NO_PLUGIN_ID;
    XPLMCountAircraft(&total, &active, &controller);
    float lowest = -1;
    for (int i = 1; i < active && i < kPlanes; ++i) {
        const double x = XPLMGetDatad(gPlaneX[i]), y = XPLMGetDatad(gPlaneY[i]), z = XPLMGetDatad(gPlaneZ[i]);
        XPLMProbeInfo_t info{};
        info.structSize = sizeof info;
        if (XPLMProbeTerrainXYZ(gProbe, static_cast<float>(x), static_cast<float>(y), static_cast<float>(z),
                                &info) != xplm_ProbeHitTerrain)
            continue;
        const float agl = static_cast<float>(y) - info.locationY;
        if (lowest < 0 || agl < lowest) lowest = agl;
    }
    gLowestAgl = lowest;
    return -1;
}

} // namespace

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    std::strcpy(outName, "Traffic");
    std::strcpy(outSig, "anyplugin.test.traffic");
    std::strcpy(outDesc, "watches the traffic, takes the AI aircraft and shows them to the TCAS");
    gUserX = XPLMFindDataRef("sim/flightmodel/position/local_x");
    gUserY = XPLMFindDataRef("sim/flightmodel/position/local_y");
    gUserZ = XPLMFindDataRef("sim/flightmodel/position/local_z");
    for (int i = 1; i < kPlanes; ++i) {
        const std::string plane = "sim/multiplayer/position/plane" + std::to_string(i) + "_";
        gPlaneX[i] = XPLMFindDataRef((plane + "x").c_str());
        gPlaneY[i] = XPLMFindDataRef((plane + "y").c_str());
        gPlaneZ[i] = XPLMFindDataRef((plane + "z").c_str());
    }
    gOverride = XPLMFindDataRef("sim/operation/override/override_TCAS");
    gTargetX = XPLMFindDataRef("sim/cockpit2/tcas/targets/position/x");
    gTargetY = XPLMFindDataRef("sim/cockpit2/tcas/targets/position/y");
    gTargetZ = XPLMFindDataRef("sim/cockpit2/tcas/targets/position/z");
    publishInt("traffic/acquired", &gAcquired);
    publishFloat("traffic/lowest_agl", &gLowestAgl);
    publishInt("traffic/tcas_override", &gTcasOverride);
    gProbe = XPLMCreateProbe(xplm_ProbeY);
    XPLMRegisterFlightLoopCallback(watch, -1, nullptr);
    return 1;
}

PLUGIN_API void XPluginStop(void) {
    XPLMUnregisterFlightLoopCallback(watch, nullptr);
    XPLMDestroyProbe(gProbe);
    unpublishAll();
}

PLUGIN_API int XPluginEnable(void) {
    take();
    return 1;
}

PLUGIN_API void XPluginDisable(void) {
    if (gAcquired) XPLMReleasePlanes();
    gAcquired = 0;
    gPlanes = 0;
    gTcasOverride = 0;
}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID, int, void*) {}
