// XPLMPlanes.h: the user's aircraft. simhost has one aircraft and no AI traffic.
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

} // namespace
} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

void XPLMGetNthAircraftModel(int inIndex, char* outFileName, char* outPath) {
    HostCore* c = core();
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
    if (outTotalAircraft) *outTotalAircraft = 1;
    if (outActiveAircraft) *outActiveAircraft = 1;
    if (outController) *outController = XPLM_NO_PLUGIN_ID;
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

int XPLMAcquirePlanes(char**, XPLMPlanesAvailable_f, void*) {
    return 0; /* no AI aircraft to hand out */
}

void XPLMReleasePlanes(void) {}

void XPLMSetActiveAircraftCount(int) {}

void XPLMSetAircraftModel(int inIndex, const char* inAircraftPath) {
    if (inIndex == 0) XPLMSetUsersAircraft(inAircraftPath);
}

void XPLMDisableAIForPlane(int) {}

void XPLMDrawAircraft(int, float, float, float, float, float, float, int, XPLMPlaneDrawState_t*) {}

void XPLMReinitUsersPlane(void) {
    if (HostCore* c = core()) worldReset(*c);
}

} // extern "C"
