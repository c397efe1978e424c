// Where the GPU cart stands and how it is drawn.
//
//        heading psi
//            ^     GPU         The cart stands 5 m from the nose gear (always the
//            |    /            nose gear, whatever gear tows), 45 degrees to the
//            |   / 5 m         right of the aircraft's heading, on the apron, and
//            |45/              is turned to the aircraft's heading.
//        nose gear
#include "gpu/GPUService.h"

#include "XPLMDataAccess.h"
#include "core/CallbackGuard.h"
#include "core/GpuPosition.h"
#include "core/Preferences.h"
#include "core/SimulatorDataRefs.h"
#include "motion/PushbackKinematics.h"
#include "objects/HV_XObject.h"
#include "truck/TruckSteering.h"

#include <cmath>

double gpuHdg = 0.0;
HV_XObject myGPUObject;

namespace {

constexpr float kDegToRad = 0.017453292f;   // single precision, as the truck's heading maths
constexpr float kRightOfNoseDeg = 45.0f;    // the cart stands this far right of the heading
constexpr double kFromNoseGearMetres = 5.0; // distance from the nose gear
constexpr double kModelLiftMetres = 1.0;    // the model's origin is 1 m above the apron
constexpr int kDrawn = 1;                   // draw callback result: let the host draw too

} // namespace

void CalcGPUPos(double* x, double* y, double* z, double* hdg) {
    const float psi = gPositionPsi ? ReadHostFloat(gPositionPsi) : 0.0f;
    double gx = 0.0, gy = 0.0, gz = 0.0;
    GearPostionOGL(k_KLV_Front_Gear, &gx, &gy, &gz);
    const float a = ((90.0f - psi) - kRightOfNoseDeg) * kDegToRad;
    *z = gz - kFromNoseGearMetres * std::sin(a);
    *x = gx + kFromNoseGearMetres * std::cos(a);
    GetApronElev(y);
    *hdg = psi;
}

void MakeGPUvisible() {
    CalcGPUPos(&gpuX, &gpuY, &gpuZ, &gpuHdg);
    myGPUObject.SetVisibility(true);
    StartGPUInstance();
}

int DrawGPUCallBack(XPLMDrawingPhase /*phase*/, int /*isBefore*/, void* /*refcon*/) {
    GuardCallback("GPU drawing", [] {
        if (!PrefHandleGPU || !myGPUObject.IsVisible()) return;
        // The cart is turned by the negated heading, unlike the truck; kept so.
        myGPUObject.Attitude(0.0f, 0.0f, static_cast<float>(-gpuHdg));
        myGPUObject.PositionLocal(static_cast<float>(gpuX), static_cast<float>(gpuY + kModelLiftMetres),
                                  static_cast<float>(gpuZ));
        myGPUObject.ShowXObject(true);
    });
    return kDrawn;
}
