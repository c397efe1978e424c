// XPLMCamera.h and the view: who controls the camera, the default chase view,
// and view changes (which end "until the view changes" control).
#include "HostInternal.h"
#include "WorldMath.h"

#include "XPLMCamera.h"

#include <algorithm>
#include <cmath>

namespace simhost::detail {

namespace {

constexpr double kChaseBackM = 40;    ///< default view: metres behind the aircraft
constexpr double kChaseUpM = 12;      ///< metres above it
constexpr float kChasePitchDeg = -12; ///< looking down at it

// The still-spot view: a spot on the apron off the aircraft's left side, a little ahead, chosen when
// the view is picked; from there the camera follows the aircraft's front part. From that far the
// whole aircraft and a tug 15 m ahead of its nose gear fit in the picture.
constexpr int kViewStillSpot = 1020;
constexpr double kSpotAngleDeg = 70;          ///< left of the nose, seen from the reference point
constexpr double kSpotHalfLengths = 3.0;      ///< distance from the reference point, in half lengths
constexpr double kSpotMinDistanceM = 30;      ///< but no closer than this
constexpr double kSpotEyeM = 4;               ///< eye height above the apron
constexpr double kSpotAimAheadFraction = 0.4; ///< aimed this far towards the nose, in half lengths
constexpr double kSpotAimUpM = 2;             ///< and this high above the apron

/// The aircraft's heading and place, from X-Plane's datarefs (found once, SimRefs).
struct AircraftPose {
    double x, y, z; ///< metres, local frame
    double psiDeg;  ///< true heading
};
AircraftPose aircraftPose(const HostCore& c) {
    const SimRefs& r = c.sim;
    return {r.localX->values.at(0), r.localY->values.at(0), r.localZ->values.at(0), r.psi->values.at(0)};
}

void placeSpot(HostCore& c) {
    const AircraftPose a = aircraftPose(c);
    const double distance = std::max(kSpotMinDistanceM, kSpotHalfLengths * c.aircraft.sizeZ);
    const double bearing = (a.psiDeg - kSpotAngleDeg) * kDegToRad; // psi 0 looks toward -z
    c.camera.spot[0] = a.x + std::sin(bearing) * distance;
    c.camera.spot[1] = c.world.groundY + kSpotEyeM;
    c.camera.spot[2] = a.z - std::cos(bearing) * distance;
}

/// From the spot, looking at the aircraft's front part.
void spotCamera(HostCore& c) {
    const AircraftPose a = aircraftPose(c);
    const double psi = a.psiDeg * kDegToRad;
    const double ahead = kSpotAimAheadFraction * c.aircraft.sizeZ;
    const double tx = a.x + std::sin(psi) * ahead;
    const double tz = a.z - std::cos(psi) * ahead;
    const double ty = c.world.groundY + kSpotAimUpM;
    const double dx = tx - c.camera.spot[0], dy = ty - c.camera.spot[1], dz = tz - c.camera.spot[2];
    for (int i = 0; i < 3; ++i)
        c.camera.pos[i] = static_cast<float>(c.camera.spot[i]);
    c.camera.pos[3] = static_cast<float>(std::atan2(dy, std::hypot(dx, dz)) / kDegToRad);
    c.camera.pos[4] = static_cast<float>(wrap360(std::atan2(dx, -dz) / kDegToRad));
    c.camera.pos[5] = 0;
    c.camera.pos[6] = 1;
}

void defaultCamera(HostCore& c) {
    if (c.camera.onSpot) {
        spotCamera(c);
        return;
    }
    const AircraftPose a = aircraftPose(c);
    const double psi = a.psiDeg, x = a.x, y = a.y, z = a.z;
    // psi 0 looks toward -z; "behind" is the opposite way.
    c.camera.pos[0] = static_cast<float>(x - std::sin(psi * kDegToRad) * kChaseBackM);
    c.camera.pos[1] = static_cast<float>(y + kChaseUpM);
    c.camera.pos[2] = static_cast<float>(z + std::cos(psi * kDegToRad) * kChaseBackM);
    c.camera.pos[3] = kChasePitchDeg;
    c.camera.pos[4] = static_cast<float>(psi);
    c.camera.pos[5] = 0;
    c.camera.pos[6] = 1;
}

/// Takes control away from the controlling plug-in, telling it with (NULL, 1).
void loseControl(HostCore& c) {
    if (!c.camera.controlled) return;
    c.camera.controlled = false;
    auto fn = reinterpret_cast<XPLMCameraControl_f>(c.camera.fn);
    void* refcon = c.camera.refcon;
    const int owner = c.camera.owner;
    c.camera.owner = -1;
    if (fn && pluginActive(owner)) callInto(owner, "camera control", [&] { fn(nullptr, 1, refcon); });
    record("camera", "control lost by plug-in " + std::to_string(owner));
}

} // namespace

void setViewType(int viewType, bool external) {
    HostCore* c = core();
    if (!c) return;
    c->datarefByName.at("sim/graphics/view/view_type")->values[0] = viewType;
    c->datarefByName.at("sim/graphics/view/view_is_external")->values[0] = external ? 1 : 0;
    record("view", std::to_string(viewType) + (external ? " external" : " internal"));
    c->camera.onSpot = viewType == kViewStillSpot;
    if (c->camera.onSpot) placeSpot(*c);
    if (c->camera.controlled && c->camera.howLong == xplm_ControlCameraUntilViewChanges) loseControl(*c);
}

void updateCamera(HostCore& c) {
    if (c.camera.controlled && pluginActive(c.camera.owner)) {
        XPLMCameraPosition_t pos{};
        pos.x = c.camera.pos[0];
        pos.y = c.camera.pos[1];
        pos.z = c.camera.pos[2];
        pos.pitch = c.camera.pos[3];
        pos.heading = c.camera.pos[4];
        pos.roll = c.camera.pos[5];
        pos.zoom = c.camera.pos[6];
        int keep = 0;
        auto fn = reinterpret_cast<XPLMCameraControl_f>(c.camera.fn);
        void* refcon = c.camera.refcon;
        callInto(c.camera.owner, "camera control", [&] { keep = fn(&pos, 0, refcon); });
        if (keep && c.camera.controlled) {
            const float p[7] = {pos.x, pos.y, pos.z, pos.pitch, pos.heading, pos.roll, pos.zoom};
            bool finite = true;
            for (float f : p)
                finite = finite && std::isfinite(f);
            if (finite)
                for (int i = 0; i < 7; ++i)
                    c.camera.pos[i] = p[i];
            return;
        }
        if (!keep) {
            // Returning 0 gives the camera back to X-Plane from this frame on.
            c.camera.controlled = false;
            c.camera.owner = -1;
        }
    } else if (c.camera.controlled) {
        c.camera.controlled = false; // the controller was disabled
        c.camera.owner = -1;
    }
    defaultCamera(c);
}

void dropCamera(HostCore& c, int pluginId) {
    if (c.camera.controlled && c.camera.owner == pluginId) {
        c.camera.controlled = false;
        c.camera.owner = -1;
    }
}

} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

void XPLMControlCamera(XPLMCameraControlDuration inHowLong, XPLMCameraControl_f inControlFunc,
                       void* inRefcon) {
    HostCore* c = core();
    if (!c) return;
    if (!inControlFunc) {
        apiError("XPLMControlCamera: the control function must not be NULL");
        return;
    }
    const int me = caller();
    if (c->camera.controlled && c->camera.owner != me) loseControl(*c);
    c->camera.controlled = true;
    c->camera.owner = me;
    c->camera.howLong = inHowLong;
    c->camera.fn = reinterpret_cast<void*>(inControlFunc);
    c->camera.refcon = inRefcon;
    record("camera", "control taken by plug-in " + std::to_string(me));
}

void XPLMDontControlCamera(void) {
    HostCore* c = core();
    if (!c || !c->camera.controlled) return;
    c->camera.controlled = false;
    c->camera.owner = -1;
    record("camera", "control released");
}

int XPLMIsCameraBeingControlled(XPLMCameraControlDuration* outCameraControlDuration) {
    HostCore* c = core();
    const bool on = c && c->camera.controlled;
    if (outCameraControlDuration) *outCameraControlDuration = on ? c->camera.howLong : 0;
    return on ? 1 : 0;
}

void XPLMReadCameraPosition(XPLMCameraPosition_t* outCameraPosition) {
    HostCore* c = core();
    if (!c || !outCameraPosition) return;
    outCameraPosition->x = c->camera.pos[0];
    outCameraPosition->y = c->camera.pos[1];
    outCameraPosition->z = c->camera.pos[2];
    outCameraPosition->pitch = c->camera.pos[3];
    outCameraPosition->heading = c->camera.pos[4];
    outCameraPosition->roll = c->camera.pos[5];
    outCameraPosition->zoom = c->camera.pos[6];
}

} // extern "C"
