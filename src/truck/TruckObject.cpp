#include "truck/TruckObject.h"

#include "XPLMUtilities.h"

namespace {

/// Visibility and placement of the truck model; the model itself is drawn by the scene object.
struct TruckPlacement {
    bool visible = false;
    float x = 0.0f, y = 0.0f, z = 0.0f; // metres, local frame
    float heading = 0.0f;               // degrees true
};

TruckPlacement gPlacement;
bool gReportedNoModel = false;

} // namespace

void TruckObjectSetVisibility(bool visible) {
    gPlacement.visible = visible;
}

bool TruckObjectIsVisible() {
    return gPlacement.visible;
}

void TruckObjectHide() {
    gPlacement.visible = false;
}

void TruckObjectDraw(float x, float y, float z, float heading) {
    gPlacement.x = x;
    gPlacement.y = y;
    gPlacement.z = z;
    gPlacement.heading = heading;
    gPlacement.visible = true;
    // TODO(scene objects): draw the loaded truck model here (the textured scene object with
    // Attitude(0, 0, heading), PositionLocal(x, y, z), ShowXObject(true)); until it exists the
    // truck is placed but nothing is drawn.
    if (!gReportedNoModel) {
        gReportedNoModel = true;
        XPLMDebugString(
            "Kalvora: the truck model cannot be drawn yet (no scene object); it is placed only\n");
    }
}

void TruckObjectPlacement(float* x, float* y, float* z, float* heading) {
    *x = gPlacement.x;
    *y = gPlacement.y;
    *z = gPlacement.z;
    *heading = gPlacement.heading;
}
