// XPLMPlanes.h: the user's aircraft and the AI aircraft. simhost flies no AI
// aircraft itself: their number is a setting (Host::setAiAircraftCount), and a
// plug-in that acquires them (XPLMAcquirePlanes) owns them and places them
// through the multiplayer datarefs as it would in X-Plane.
#include "HostInternal.h"
#include "SharedLibrary.h"
#include "AircraftProfile.h"
#include "WorldMath.h"

#include "XPLMPlanes.h"

#include <cstring>

namespace simhost::detail {
namespace {

constexpr size_t kFileNameBytes = 256;
constexpr size_t kPathBytes = 512;

void copyBounded(char* out, const std::string& s, size_t cap) {
    if (!out) return;
    size_t n = std::min(s.size(), cap - 1);
    std::memcpy(out, s.data(), n);
    out[n] = '\0';
}

/// Hands the planes to the first plug-in waiting for them, by calling its callback.
void offerPlanes(HostCore& c) {
    while (c.planes.holder < 0 && !c.planes.waiting.empty()) {
        PlanesState::Waiter w = c.planes.waiting.front();
        c.planes.waiting.erase(c.planes.waiting.begin());
        if (!pluginActive(w.plugin)) continue;
        auto fn = reinterpret_cast<XPLMPlanesAvailable_f>(w.fn);
        callInto(w.plugin, "planes available", [&] { fn(w.refcon); });
    }
}

void releasePlanes(HostCore& c) {
    c.planes.holder = -1;
    c.planes.activeCount = 1 + c.planes.aiCount;
    c.planes.models.clear();
    record("world", "AI aircraft released");
    offerPlanes(c);
}

} // namespace

void dropPlanes(HostCore& c, int pluginId) {
    for (size_t i = c.planes.waiting.size(); i-- > 0;)
        if (c.planes.waiting[i].plugin == pluginId)
            c.planes.waiting.erase(c.planes.waiting.begin() + static_cast<long>(i));
    if (c.planes.holder == pluginId) releasePlanes(c);
}

} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

void XPLMGetNthAircraftModel(int inIndex, char* outFileName, char* outPath) {
    HostCore* c = core();
    if (c && inIndex > 0 && inIndex < static_cast<int>(c->planes.models.size()) &&
        !c->planes.models[static_cast<size_t>(inIndex)].empty()) {
        const std::string& path = c->planes.models[static_cast<size_t>(inIndex)];
        const size_t slash = path.find_last_of('/');
        copyBounded(outFileName, slash == std::string::npos ? path : path.substr(slash + 1), kFileNameBytes);
        copyBounded(outPath, path, kPathBytes);
        return;
    }
    if (!c || inIndex != 0) {
        copyBounded(outFileName, "", kFileNameBytes);
        copyBounded(outPath, "", kPathBytes);
        return;
    }
    const std::string& type = c->aircraft.type;
    copyBounded(outFileName, type + ".acf", kFileNameBytes);
    copyBounded(outPath, nativePath(c->sandbox + "Aircraft/" + type + "/" + type + ".acf"), kPathBytes);
}

void XPLMCountAircraft(int* outTotalAircraft, int* outActiveAircraft, XPLMPluginID* outController) {
    HostCore* c = core();
    const int total = c ? 1 + c->planes.aiCount : 1;
    if (outTotalAircraft) *outTotalAircraft = total;
    if (outActiveAircraft) *outActiveAircraft = c && c->planes.holder >= 0 ? c->planes.activeCount : total;
    if (outController) *outController = c ? c->planes.holder : XPLM_NO_PLUGIN_ID;
}

void XPLMSetUsersAircraft(const char* inAircraftPath) {
    HostCore* c = core();
    if (!c || !inAircraftPath) return;
    // "<anything>/<TYPE>.acf": the profile of that type.
    std::string p(inAircraftPath);
    size_t slash = p.find_last_of('/');
    std::string file = slash == std::string::npos ? p : p.substr(slash + 1);
    size_t dot = file.rfind('.');
    if (dot != std::string::npos) file.erase(dot);
    if (simhost::Host* h = simhost::Host::current()) h->loadAircraft(file);
}

void XPLMPlaceUserAtAirport(const char*) {
    if (simhost::Host* h = simhost::Host::current()) h->loadAirport();
}

void XPLMPlaceUserAtLocation(double latitudeDegrees, double longitudeDegrees, float elevationMetersMSL,
                             float headingDegreesTrue, float speedMetersPerSecond) {
    HostCore* c = core();
    if (!c) return;
    double x = 0, y = 0, z = 0;
    worldToLocal(refLat(*c), refLon(*c), latitudeDegrees, longitudeDegrees, elevationMetersMSL, x, y, z);
    c->datarefByName.at("sim/flightmodel/position/local_x")->values[0] = x;
    c->datarefByName.at("sim/flightmodel/position/local_z")->values[0] = z;
    c->world.prevX = x;
    c->world.prevZ = z;
    c->world.groundY = elevationMetersMSL;
    c->world.commandedSpeed = speedMetersPerSecond;
    worldSetAttitude(*c, headingDegreesTrue, c->aircraft.groundPitchDeg, 0);
    sendToPlugin(XPLM_NO_PLUGIN_ID, 103, nullptr, 0);
}

int XPLMAcquirePlanes(char** inAircraft, XPLMPlanesAvailable_f inCallback, void* inRefcon) {
    HostCore* c = core();
    if (!c) return 0;
    const int me = caller();
    if (c->planes.holder >= 0 && c->planes.holder != me) {
        // Refused; the callback runs when the holder lets them go.
        if (inCallback) c->planes.waiting.push_back({me, reinterpret_cast<void*>(inCallback), inRefcon});
        return 0;
    }
    c->planes.holder = me;
    c->planes.activeCount = 1 + c->planes.aiCount;
    c->planes.models.assign(static_cast<size_t>(1 + c->planes.aiCount), "");
    // An optional NULL-terminated list of models for planes 1, 2, ...
    for (size_t i = 0; inAircraft && inAircraft[i] && i + 1 < c->planes.models.size(); ++i)
        c->planes.models[i + 1] = inAircraft[i];
    record("world", "AI aircraft acquired by plug-in " + std::to_string(me));
    return 1;
}

void XPLMReleasePlanes(void) {
    HostCore* c = core();
    if (c && c->planes.holder >= 0 && c->planes.holder == caller()) releasePlanes(*c);
}

void XPLMSetActiveAircraftCount(int inCount) {
    HostCore* c = core();
    if (!c || c->planes.holder != caller()) return; // only the holder decides
    c->planes.activeCount = std::max(1, std::min(inCount, 1 + c->planes.aiCount));
}

void XPLMSetAircraftModel(int inIndex, const char* inAircraftPath) {
    HostCore* c = core();
    if (inIndex == 0) {
        XPLMSetUsersAircraft(inAircraftPath);
        return;
    }
    if (!c || !inAircraftPath || c->planes.holder != caller() || inIndex < 1 ||
        inIndex >= static_cast<int>(c->planes.models.size()))
        return;
    c->planes.models[static_cast<size_t>(inIndex)] = inAircraftPath;
}

void XPLMDisableAIForPlane(int) {}

void XPLMDrawAircraft(int, float, float, float, float, float, float, int, XPLMPlaneDrawState_t*) {}

void XPLMReinitUsersPlane(void) {
    if (HostCore* c = core()) worldReset(*c);
}

} // extern "C"
