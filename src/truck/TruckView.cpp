#include "truck/TruckView.h"

#include "core/CallbackGuard.h"
#include "core/PushbackControl.h"
#include "core/Preferences.h"
#include "motion/AircraftPlacement.h"
#include "truck/TruckState.h"

#include <cmath>

namespace {

constexpr float kDegToRad = 0.017453292f; // single precision, as every heading of the truck
constexpr double kSeatAhead = 3.5;        // metres from the truck's reference point to the seat
constexpr double kEyeHeight = 1.75;       // metres above the apron
constexpr float kLookBack = 180.0f;       // degrees: towing at the main gear the driver faces away
} // namespace

void TruckViewHKCallBack(void* /*refcon*/) {
    GuardCallback("truck view key", [] {
        SelectSpotView();
        XPLMControlCamera(xplm_ControlCameraUntilViewChanges, TruckViewControler, nullptr);
    });
}

void DriverSeat(double x, double z, float heading, double* seatX, double* seatZ) {
    const float a = (90.0f - heading) * kDegToRad;
    *seatZ = std::sin(a) * -kSeatAhead + z;
    *seatX = std::cos(a) * kSeatAhead + x;
}

int TruckViewControler(XPLMCameraPosition_t* camera, int isLosingControl, void* /*refcon*/) {
    if (isLosingControl || !camera) return 1;
    GuardCallback("truck view camera", [camera] {
        double seatX = 0.0, seatZ = 0.0;
        DriverSeat(gKLVTruckX, gKLVTruckZ, myTruckHeading, &seatX, &seatZ);
        const double eyeY = gKLVTruckY + kEyeHeight;
        float heading = 0.0f, pitch = 0.0f;
        HeadingPitchToPlane(seatX, eyeY, seatZ, &heading, &pitch);
        camera->x = static_cast<float>(seatX);
        camera->y = static_cast<float>(eyeY);
        camera->z = static_cast<float>(seatZ);
        camera->pitch = pitch;
        camera->heading = PrefFrontWheel ? heading : heading - kLookBack;
        camera->roll = 0.0f;
    });
    return 1;
}
