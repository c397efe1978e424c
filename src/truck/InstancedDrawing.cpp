#include "truck/InstancedDrawing.h"

#include "XPLMDataAccess.h"
#include "XPLMInstance.h"
#include "XPLMProcessing.h"
#include "XPLMScenery.h"
#include "XPLMUtilities.h"
#include "core/CallbackGuard.h"
#include "core/LocalOrigin.h"
#include "core/PluginState.h"
#include "core/Preferences.h"
#include "core/SimulatorDataRefs.h"
#include "motion/PushbackKinematics.h"
#include "objects/HV_XObject.h"
#include "objects/TruckModel.h"
#include "truck/TruckMovement.h"
#include "truck/TruckState.h"

#include <cmath>
#include <cstring>
#include <string>

namespace {

constexpr float kEveryFrame = -1.0f;       // flight-loop interval: next frame
constexpr float kStop = 0.0f;              // flight loop: stop calling
constexpr double kModelLiftMetres = 1.0;   // the model's origin is 1 m above the apron
constexpr double kWheelRadiusMetres = 0.4; // tyre radius of the generated tug models
constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr double kFullTurnDegrees = 360.0;
constexpr double kJumpMetres = 50.0; // a larger step is a re-placement, not driving: wheels do not turn
const std::string kObjEnding = ".obj";

const char* const kAnimationNames[kTruckAnimationDataRefCount + 1] = {
    "halvern/kalvora/truck/wheel_rotation_deg", "halvern/kalvora/truck/steering_deg", nullptr};

XPLMDataRef gAnimationRefs[kTruckAnimationDataRefCount] = {};
float gWheelRotationDeg = 0.0f; ///< [0, 360); grows as the truck drives forward, shrinks as it backs
double gLastX = 0.0, gLastZ = 0.0;
bool gHaveLast = false;

XPLMObjectRef gTruckObject = nullptr;
std::string gTruckObjectPath; ///< file gTruckObject was loaded from
std::string gFailedPath;      ///< last file that could not load: not tried again every frame
XPLMInstanceRef gTruckInstance = nullptr;
/// Runs after the flight model, so after every callback that moves the truck in the same frame.
XPLMFlightLoopID gPlacementLoop = nullptr;

float ReadWheelRotation(void* /*refcon*/) {
    return gWheelRotationDeg;
}

float ReadSteering(void* /*refcon*/) {
    return theOffset;
}

void ReleaseInstance() {
    const InstancingApi* api = HostInstancing(); // non-null whenever something was made through it
    if (gTruckInstance && api) api->destroyInstance(gTruckInstance);
    gTruckInstance = nullptr;
    if (gTruckObject && api) api->unloadObject(gTruckObject);
    gTruckObject = nullptr;
    gTruckObjectPath.clear();
}

/// Turns the wheels by the distance the truck moved along its own heading since the last frame.
void AdvanceWheels() {
    if (gHaveLast) {
        const double dx = gKLVTruckX - gLastX, dz = gKLVTruckZ - gLastZ;
        // A step that is not a number (a position or heading written by another plug-in) turns nothing.
        if (std::hypot(dx, dz) < kJumpMetres && std::isfinite(myTruckHeading)) {
            // Forward is the heading's direction: heading 0 looks along -z (north), 90 along +x (east).
            const double heading = myTruckHeading / kDegreesPerRadian;
            const double forwardMetres = dx * std::sin(heading) - dz * std::cos(heading);
            double turned = std::fmod(
                gWheelRotationDeg + forwardMetres / kWheelRadiusMetres * kDegreesPerRadian, kFullTurnDegrees);
            if (turned < 0.0) turned += kFullTurnDegrees;
            gWheelRotationDeg = static_cast<float>(turned);
            if (gWheelRotationDeg >= kFullTurnDegrees) gWheelRotationDeg = 0.0f; // rounded up to a full turn
        }
    }
    gLastX = gKLVTruckX;
    gLastZ = gKLVTruckZ;
    gHaveLast = true;
}

/// True when `path` is folder + name + ".obj", compared piece by piece: called every frame, it must not
/// build the path (two heap allocations each time).
bool IsModelPath(const std::string& path, const std::string& folder, const char* name) {
    const size_t nameLength = std::strlen(name);
    return path.size() == folder.size() + nameLength + kObjEnding.size() &&
           path.compare(0, folder.size(), folder) == 0 &&
           path.compare(folder.size(), nameLength, name) == 0 &&
           path.compare(folder.size() + nameLength, kObjEnding.size(), kObjEnding) == 0;
}

/// Makes sure the instance shows the chosen truck's model; false when it cannot.
bool EnsureInstance(const InstancingApi& api) {
    if (gTruckInstance && IsModelPath(gTruckObjectPath, truckFilesPath, PrefLastTruck)) return true;
    ReleaseInstance(); // none yet, or the truck choice changed
    if (IsModelPath(gFailedPath, truckFilesPath, PrefLastTruck)) return false;
    const std::string path = truckFilesPath + PrefLastTruck + kObjEnding;
    gTruckObject = api.loadObject(path.c_str());
    if (!gTruckObject) {
        gFailedPath = path;
        XPLMDebugString(("Kalvora: cannot load the truck model " + path + " as an object\n").c_str());
        return false;
    }
    gFailedPath.clear();
    gTruckObjectPath = path;
    gTruckInstance = api.createInstance(gTruckObject, const_cast<const char**>(kAnimationNames));
    return gTruckInstance != nullptr;
}

float PlaceTruck() {
    FollowLocalOrigin();
    AdvanceWheels();
    const InstancingApi* api = HostInstancing();
    const bool shown = PrefDrawTruck && gKLVTruckMovementPhase != kTruckReserved && gKLVtheTruck.IsVisible();
    if (!api || !shown || !EnsureInstance(*api)) {
        ReleaseInstance();
        return kEveryFrame;
    }
    // The drawing callback refreshes the apron elevation before each draw; here, before each placement.
    GetApronElev(&gKLVTruckY);
    XPLMDrawInfo_t where{};
    where.structSize = sizeof where;
    where.x = static_cast<float>(gKLVTruckX);
    where.y = static_cast<float>(gKLVTruckY + kModelLiftMetres);
    where.z = static_cast<float>(gKLVTruckZ);
    where.heading = myTruckHeading; // the drawn truck turns by -heading about +y, as an instance does
    const float data[kTruckAnimationDataRefCount] = {gWheelRotationDeg, theOffset};
    api->setPosition(gTruckInstance, &where, data);
    return kEveryFrame;
}

} // namespace

const char* TruckAnimationDataRefName(int index) {
    return index >= 0 && index < kTruckAnimationDataRefCount ? kAnimationNames[index] : nullptr;
}

void RegisterTruckAnimationDataRefs() {
    const XPLMGetDataf_f readers[kTruckAnimationDataRefCount] = {ReadWheelRotation, ReadSteering};
    for (int i = 0; i < kTruckAnimationDataRefCount; ++i) {
        gAnimationRefs[i] = XPLMRegisterDataAccessor(kAnimationNames[i], xplmType_Float, 0, nullptr, nullptr,
                                                     readers[i], nullptr, nullptr, nullptr, nullptr, nullptr,
                                                     nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    }
}

void UnregisterTruckAnimationDataRefs() {
    for (XPLMDataRef& ref : gAnimationRefs) {
        if (ref) XPLMUnregisterDataAccessor(ref);
        ref = nullptr;
    }
}

bool UseTruckInstancing() {
    return HostInstancing() != nullptr;
}

float TruckInstanceCallBack(float /*elapsedSinceLastCall*/, float /*elapsedSinceLastLoop*/, int /*counter*/,
                            void* /*refcon*/) {
    return GuardCallback("truck instance", kStop, PlaceTruck, kEveryFrame); // a bad reading skips a frame
}

void StartTruckInstancing() {
    if (!UseTruckInstancing()) return;
    gHaveLast = false;
    gFailedPath.clear();
    if (!gPlacementLoop) {
        XPLMCreateFlightLoop_t loop{};
        loop.structSize = sizeof loop;
        loop.phase = xplm_FlightLoop_Phase_AfterFlightModel;
        loop.callbackFunc = TruckInstanceCallBack;
        gPlacementLoop = XPLMCreateFlightLoop(&loop);
    }
    if (gPlacementLoop) XPLMScheduleFlightLoop(gPlacementLoop, kEveryFrame, 1);
}

void StopTruckInstancing() {
    if (gPlacementLoop) XPLMDestroyFlightLoop(gPlacementLoop);
    gPlacementLoop = nullptr;
    ReleaseInstance();
}
