// The GPU cart on X-Plane 11.50 and later, which no longer calls the 3-D
// drawing phases: there the cart is an X-Plane object instance, placed every
// frame from a flight loop from the same state the drawing callback uses
// (position, the negated heading, the model's origin 1 m above the apron).
// The instance exists only while the cart is visible and GPUs are handled.
#include "gpu/GPUService.h"

#include "XPLMInstance.h"
#include "XPLMProcessing.h"
#include "XPLMScenery.h"
#include "core/CallbackGuard.h"
#include "core/GpuPosition.h"
#include "core/Instancing.h"
#include "core/LocalOrigin.h"
#include "core/PluginState.h"
#include "core/Preferences.h"
#include "core/SimulatorDataRefs.h"
#include "objects/HV_XObject.h"

#include <string>

namespace {

constexpr float kEveryFrame = -1.0f;     // flight-loop interval: next frame
constexpr float kStop = 0.0f;            // flight loop: stop calling
constexpr double kModelLiftMetres = 1.0; // the model's origin is 1 m above the apron

XPLMObjectRef gGPUObjectRef = nullptr;
/// The model file that loaded first. Every enable appends "GPU" to the folder path again, so a second
/// enable names a file that does not exist; the model loaded at the first one is kept, as it is drawn.
std::string gGPUModelPath;
XPLMInstanceRef gGPUInstance = nullptr;
const char* const kNoInstanceData[] = {nullptr}; // the cart animates nothing

bool Wanted() {
    return PrefHandleGPU && myGPUObject.IsVisible();
}

/// Loads the model and makes the instance when they are missing; false when the model cannot load.
bool EnsureInstance(const InstancingApi& api) {
    if (gGPUInstance) return true;
    if (!gGPUObjectRef) {
        const std::string path = gGPUModelPath.empty() ? GpuFilesPath + ".obj" : gGPUModelPath;
        gGPUObjectRef = api.loadObject(path.c_str());
        if (!gGPUObjectRef) return false;
        gGPUModelPath = path;
    }
    gGPUInstance = api.createInstance(gGPUObjectRef, const_cast<const char**>(kNoInstanceData));
    return gGPUInstance != nullptr;
}

float PlaceInstance() {
    FollowLocalOrigin();
    const InstancingApi* api = HostInstancing();
    if (!api || !Wanted() || !EnsureInstance(*api)) {
        ReleaseGPUInstance();
        return kStop;
    }
    XPLMDrawInfo_t where{};
    where.structSize = sizeof where;
    where.x = static_cast<float>(gpuX);
    where.y = static_cast<float>(gpuY + kModelLiftMetres);
    where.z = static_cast<float>(gpuZ);
    // The drawing callback turns the model by the negated heading; the instance looks the same.
    where.heading = static_cast<float>(-gpuHdg);
    api->setPosition(gGPUInstance, &where, nullptr);
    return kEveryFrame;
}

} // namespace

float GPUInstanceCallBack(float /*elapsedSinceLastCall*/, float /*elapsedSinceLastLoop*/, int /*counter*/,
                          void* /*refcon*/) {
    return GuardCallback("GPU instance", kStop, PlaceInstance);
}

void StartGPUInstance() {
    XPLMUnregisterFlightLoopCallback(GPUInstanceCallBack, nullptr);
    XPLMRegisterFlightLoopCallback(GPUInstanceCallBack, kEveryFrame, nullptr);
}

void ReleaseGPUInstance() {
    const InstancingApi* api = HostInstancing(); // non-null whenever something was made through it
    if (gGPUInstance && api) api->destroyInstance(gGPUInstance);
    gGPUInstance = nullptr;
    if (gGPUObjectRef && api) api->unloadObject(gGPUObjectRef);
    gGPUObjectRef = nullptr;
}
