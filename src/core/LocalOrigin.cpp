#include "core/LocalOrigin.h"

#include "XPLMDataAccess.h"
#include "XPLMGraphics.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"
#include "core/GpuPosition.h"
#include "core/Instancing.h"
#include "motion/PushbackKinematics.h"
#include "truck/TruckState.h"

#include <cmath>

namespace {

/// A position the plug-in keeps in local coordinates (metres) and where it last was in the world.
struct TrackedPoint {
    double* x;
    double* y; ///< nullptr: a point on the apron whose height is not kept
    double* z;
    double localX, localY, localZ; ///< its local coordinates when last seen, metres
    double latDeg, lonDeg, altM;   ///< the same spot in the world
};

TrackedPoint gPoints[] = {
    {&gKLVTruckX, &gKLVTruckY, &gKLVTruckZ, 0, 0, 0, 0, 0, 0},
    {&gpuX, &gpuY, &gpuZ, 0, 0, 0, 0, 0, 0},
    {&gKLVfinalx, nullptr, &gKLVfinalz, 0, 0, 0, 0, 0, 0},
};

XPLMDataRef gLatRef = nullptr, gLonRef = nullptr;
bool gKnown = false;       ///< a frame and the points in it were seen
int gRememberedCycle = -1; ///< host frame in which the points were last remembered
float gRefLatDeg = 0.0f;   ///< the frame's reference point when last seen, degrees
float gRefLonDeg = 0.0f;

void Remember() {
    for (TrackedPoint& p : gPoints) {
        p.localX = *p.x;
        p.localY = p.y ? *p.y : 0.0;
        p.localZ = *p.z;
        XPLMLocalToWorld(p.localX, p.localY, p.localZ, &p.latDeg, &p.lonDeg, &p.altM);
    }
}

/// Moves each point by what its remembered spot moved in local coordinates; a point that changed since
/// it was remembered (the truck stepped on) keeps that change.
void CarryIntoNewFrame() {
    for (TrackedPoint& p : gPoints) {
        double x = 0.0, y = 0.0, z = 0.0;
        XPLMWorldToLocal(p.latDeg, p.lonDeg, p.altM, &x, &y, &z);
        *p.x += x - p.localX;
        *p.z += z - p.localZ;
        if (p.y) *p.y += y - p.localY;
    }
}

} // namespace

void FollowLocalOrigin() {
    if (!HostInstancing()) return; // older hosts: their positions are left as they always were
    if (!gLatRef) gLatRef = XPLMFindDataRef("sim/flightmodel/position/lat_ref");
    if (!gLonRef) gLonRef = XPLMFindDataRef("sim/flightmodel/position/lon_ref");
    if (!gLatRef || !gLonRef) return;
    const float lat = XPLMGetDataf(gLatRef), lon = XPLMGetDataf(gLonRef);
    if (!std::isfinite(lat) || !std::isfinite(lon)) return; // nothing to compare with
    if (gKnown && (lat != gRefLatDeg || lon != gRefLonDeg)) {
        CarryIntoNewFrame();
        gRememberedCycle = -1; // remembered again below, in the new frame
        XPLMDebugString("Kalvora: the local frame moved; truck, GPU and push-back end point follow it\n");
    }
    gKnown = true;
    gRefLatDeg = lat;
    gRefLonDeg = lon;
    // Once a frame is enough: a move is carried by how the remembered spot moved, which a step taken
    // since does not change.
    const int cycle = XPLMGetCycleNumber();
    if (cycle != gRememberedCycle) {
        gRememberedCycle = cycle;
        Remember();
    }
}

void ForgetLocalOrigin() {
    gKnown = false;
    gRememberedCycle = -1;
    gLatRef = gLonRef = nullptr;
}
