// XPLMPlanes.h: the user's aircraft and the AI aircraft, and the datarefs X-Plane
// tells of them. simhost flies no AI aircraft itself: their number is a setting
// (Host::setAiAircraftCount) and they stand parked in a row of stands north of
// the apron, their places in the multiplayer datarefs (planeN_x/y/z and the rest)
// and X-Plane's TCAS target arrays. A plug-in that acquires them
// (XPLMAcquirePlanes) owns them: it places them through the same datarefs, and it
// alone may set the TCAS override and then write the TCAS targets itself.
#include "HostInternal.h"
#include "SharedLibrary.h"
#include "AircraftProfile.h"
#include "WorldMath.h"

#include "XPLMPlanes.h"

#include <algorithm>
#include <cstring>

namespace simhost::detail {
namespace {

constexpr size_t kFileNameBytes = 256;
constexpr size_t kPathBytes = 512;

// The stands of the AI aircraft: one row, west to east, north of the user's aircraft.
constexpr double kStandSpacingM = 80;    ///< between neighbouring stands (a B747 spans 64 m)
constexpr double kStandRowNorthM = 150;  ///< the row's distance north of the reference point
constexpr double kMiddleStand = 10;      ///< this stand stands due north of the reference point
constexpr double kStandHeadingDeg = 180; ///< parked noses point south, at the apron
constexpr double kAiParkedHeightM = 3;   ///< a parked AI aircraft's reference point above the apron

constexpr const char* kPlanePrefix = "sim/multiplayer/position/plane";
constexpr const char* kTcasPrefix = "sim/cockpit2/tcas/";
constexpr const char* kTcasTargets = "sim/cockpit2/tcas/targets/position/";
constexpr const char* kTcasOverride = "sim/operation/override/override_TCAS";
constexpr const char* kMapOverride = "sim/operation/override/override_multiplayer_map_layer";
/// The TCAS target arrays X-Plane lets a plug-in write only while it overrides the TCAS.
constexpr const char* kOverrideOnly[] = {
    "x", "y", "z", "vx", "vy", "vz", "vertical_speed", "psi", "the", "phi", "weight_on_wheels"};

/// The fields of PlaneDataRefs that X-Plane mirrors from plane N into the TCAS targets' index N.
constexpr DataRefRec* PlaneDataRefs::*kMirrored[] = {
    &PlaneDataRefs::x,  &PlaneDataRefs::y,   &PlaneDataRefs::z,   &PlaneDataRefs::lat, &PlaneDataRefs::lon,
    &PlaneDataRefs::el, &PlaneDataRefs::psi, &PlaneDataRefs::the, &PlaneDataRefs::phi};

/// X-Plane's own value of a dataref (0 when a plug-in took the name over or the index is outside).
double get(const DataRefRec* r, size_t i = 0) {
    return r && r->owner == 0 && i < r->values.size() ? r->values[i] : 0;
}
void put(DataRefRec* r, size_t i, double v) {
    if (r && r->owner == 0 && i < r->values.size()) r->values[i] = v;
}

bool linked(const HostCore& c) {
    return !c.planes.aircraft.empty();
}

/// Latitude, longitude and elevation of plane n from its local position.
void derivePlace(HostCore& c, size_t n) {
    PlaneDataRefs& p = c.planes.aircraft[n];
    double lat = 0, lon = 0, el = 0;
    localToWorld(refLat(c), refLon(c), get(p.x), get(p.y), get(p.z), lat, lon, el);
    put(p.lat, 0, lat);
    put(p.lon, 0, lon);
    put(p.el, 0, el);
}

/// Plane n (0: the user) into the TCAS targets' index n, unless a plug-in overrides the TCAS (the user's
/// entry is X-Plane's always).
void mirror(HostCore& c, size_t n) {
    TcasDataRefs& t = c.planes.tcas;
    if (t.overridden && n > 0) return;
    const PlaneDataRefs& p = c.planes.aircraft[n];
    for (DataRefRec* PlaneDataRefs::*f : kMirrored)
        put(t.targets.*f, n, get(p.*f));
    if (p.gear) put(t.targets.gear, n, get(p.gear));
}

/// Who may write the override datarefs now, and how many aircraft the TCAS sees.
void updateTcas(HostCore& c) {
    if (!linked(c)) return;
    TcasDataRefs& t = c.planes.tcas;
    const int holder = c.planes.holder;
    auto gate = [](DataRefRec* r, int writer) {
        if (!r || r->owner != 0) return;
        r->writerOnly = true;
        r->writer = writer;
    };
    gate(t.override, holder);
    gate(t.mapOverride, t.overridden ? holder : -1);
    for (DataRefRec* r : t.overrideOnly)
        gate(r, t.overridden ? holder : -1);
    // Without the override: every active aircraft, the user's included (XPLMCountAircraft's active
    // count). With it: the user's and each target the plug-in gave a Mode S ID.
    int count = holder >= 0 ? c.planes.activeCount : 1 + c.planes.aiCount;
    if (t.overridden) {
        count = 1;
        const size_t targets = t.modeS && t.modeS->owner == 0 ? t.modeS->values.size() : 0;
        for (size_t i = 1; i < targets; ++i)
            count += t.modeS->values[i] != 0 ? 1 : 0;
    }
    put(t.count, 0, count);
}

/// Parks AI aircraft first..last at their stands, gear down.
void park(HostCore& c, int first, int last) {
    for (int n = std::max(first, 1); n <= last && n < static_cast<int>(c.planes.aircraft.size()); ++n) {
        PlaneDataRefs& p = c.planes.aircraft[static_cast<size_t>(n)];
        put(p.x, 0, kStandSpacingM * (n - kMiddleStand));
        put(p.y, 0, c.world.groundY + kAiParkedHeightM);
        put(p.z, 0, -kStandRowNorthM);
        put(p.psi, 0, kStandHeadingDeg);
        put(p.the, 0, 0);
        put(p.phi, 0, 0);
        if (p.gear && p.gear->owner == 0) std::fill(p.gear->values.begin(), p.gear->values.end(), 1.0);
        derivePlace(c, static_cast<size_t>(n));
        mirror(c, static_cast<size_t>(n));
    }
}

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
    if (linked(c)) {
        // The override ends with the ownership; X-Plane's AI has the aircraft back, at their stands.
        TcasDataRefs& t = c.planes.tcas;
        t.overridden = false;
        put(t.override, 0, 0);
        put(t.mapOverride, 0, 0);
        park(c, 1, c.planes.aiCount);
        updateTcas(c);
    }
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

bool isTrafficDataRef(const std::string& name) {
    return name.compare(0, std::strlen(kPlanePrefix), kPlanePrefix) == 0 ||
           name.compare(0, std::strlen(kTcasPrefix), kTcasPrefix) == 0 || name == kTcasOverride ||
           name == kMapOverride;
}

void linkTraffic(HostCore& c) {
    if (linked(c)) return;
    // Sized first: the look-ups below make records of traffic datarefs, which would link again.
    c.planes.aircraft.resize(static_cast<size_t>(1 + kMaxAiAircraft));
    auto ref = [](const std::string& name) {
        DataRefRec* r = findDataRefRec(name);
        return r && !r->removed ? r : nullptr;
    };
    PlaneDataRefs& user = c.planes.aircraft[0];
    const std::string pos = "sim/flightmodel/position/";
    user = {ref(pos + "local_x"),   ref(pos + "local_y"),
            ref(pos + "local_z"),   ref(pos + "latitude"),
            ref(pos + "longitude"), ref(pos + "elevation"),
            ref(pos + "psi"),       ref(pos + "theta") ? ref(pos + "theta") : ref(pos + "the"),
            ref(pos + "phi"),       nullptr};
    for (size_t n = 1; n < c.planes.aircraft.size(); ++n) {
        const std::string plane = kPlanePrefix + std::to_string(n) + "_";
        PlaneDataRefs& p = c.planes.aircraft[n];
        p = {ref(plane + "x"),   ref(plane + "y"),          ref(plane + "z"),   ref(plane + "lat"),
             ref(plane + "lon"), ref(plane + "el"),         ref(plane + "psi"), ref(plane + "the"),
             ref(plane + "phi"), ref(plane + "gear_deploy")};
        // A plug-in placing a plane moves its latitude and longitude and its TCAS target with it.
        for (DataRefRec* r : {p.x, p.y, p.z})
            if (r)
                r->onWrite = [&c, n](DataRefRec&) {
                    derivePlace(c, n);
                    mirror(c, n);
                };
        for (DataRefRec* r : {p.psi, p.the, p.phi, p.gear})
            if (r) r->onWrite = [&c, n](DataRefRec&) { mirror(c, n); };
    }
    TcasDataRefs& t = c.planes.tcas;
    const std::string at = kTcasTargets;
    t.targets = {ref(at + "x"),   ref(at + "y"),   ref(at + "z"),   ref(at + "lat"), ref(at + "lon"),
                 ref(at + "ele"), ref(at + "psi"), ref(at + "the"), ref(at + "phi"), ref(at + "gear_deploy")};
    for (const char* name : kOverrideOnly)
        if (DataRefRec* r = ref(at + name)) t.overrideOnly.push_back(r);
    t.modeS = ref("sim/cockpit2/tcas/targets/modeS_id");
    t.count = ref("sim/cockpit2/tcas/indicators/tcas_num_acf");
    t.override = ref(kTcasOverride);
    t.mapOverride = ref(kMapOverride);
    if (t.override)
        t.override->onWrite = [&c](DataRefRec& r) {
            TcasDataRefs& tcas = c.planes.tcas;
            const bool was = tcas.overridden;
            tcas.overridden = get(&r) != 0;
            if (was && !tcas.overridden)
                for (size_t n = 1; n < c.planes.aircraft.size(); ++n)
                    mirror(c, n); // X-Plane fills its targets again
            updateTcas(c);
        };
    if (t.modeS) t.modeS->onWrite = [&c](DataRefRec&) { updateTcas(c); };
    park(c, 1, c.planes.aiCount);
    mirror(c, 0);
    updateTcas(c);
}

void aiCountChanged(HostCore& c, int previousCount) {
    if (!linked(c)) {
        if (c.planes.aiCount == 0) return; // nothing to show yet: the datarefs link when first looked up
        linkTraffic(c);                    // parks them all
        return;
    }
    // X-Plane's AI parks all of them; a plug-in holding them keeps the ones it has.
    park(c, c.planes.holder >= 0 ? previousCount + 1 : 1, c.planes.aiCount);
    updateTcas(c);
}

void stepTraffic(HostCore& c) {
    if (linked(c)) mirror(c, 0); // the user's aircraft moves with the world
}

void shiftTraffic(HostCore& c) {
    if (!linked(c)) return;
    // Every plane keeps its place in the world (its latitude, longitude and elevation) under new local
    // coordinates.
    for (size_t n = 1; n < c.planes.aircraft.size(); ++n) {
        PlaneDataRefs& p = c.planes.aircraft[n];
        double x = 0, y = 0, z = 0;
        worldToLocal(refLat(c), refLon(c), get(p.lat), get(p.lon), get(p.el), x, y, z);
        put(p.x, 0, x);
        put(p.y, 0, y);
        put(p.z, 0, z);
        mirror(c, n);
    }
    mirror(c, 0);
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
    linkTraffic(*c); // the holder may set the TCAS override from now on
    c->planes.holder = me;
    c->planes.activeCount = 1 + c->planes.aiCount;
    c->planes.models.assign(static_cast<size_t>(1 + c->planes.aiCount), "");
    // An optional NULL-terminated list of models for planes 1, 2, ...
    for (size_t i = 0; inAircraft && inAircraft[i] && i + 1 < c->planes.models.size(); ++i)
        c->planes.models[i + 1] = inAircraft[i];
    updateTcas(*c);
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
    updateTcas(*c);
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
