// The GPU's warm-up and the charging of the aircraft's batteries.
//
// Charging adds (now - BatConnTime) / 36000 volts to every engine's battery on
// every frame: the increment grows with the time since connection and is applied
// per frame, so the charge accelerates until it reaches kGPUChargeCapVolts. At
// 60 frames per second a battery gains about t^2 / 1200 volts in t seconds. Each
// battery charges from its own value; one at or above the cap is left as it is,
// so the GPU never lowers a voltage. A value that is not a number (another
// plug-in's, or a glitch) is left alone and never written back.
#include "gpu/GPUService.h"

#include "XPLMDataAccess.h"
#include "XPLMProcessing.h"
#include "core/CallbackGuard.h"
#include "core/SimulatorDataRefs.h"
#include "utils/MathUtils.h"

#include <algorithm>
#include <cmath>

double BatConnTime = 0.0;
float BatteryLoad[kGPUMaxBatteries] = {};

namespace {

constexpr float kContinue = -1.0f;                // flight loop: call again next frame
constexpr float kStop = 0.0f;                     // flight loop: stop calling
constexpr double kChargeSecondsPerVolt = 36000.0; // divides the seconds since connection

/// Engines of the aircraft, limited to the entries BatteryLoad holds (0 when none or unknown).
int BatteryCount() {
    const int engines = gNumberEngine ? XPLMGetDatai(gNumberEngine) : 0;
    return std::clamp(engines, 0, kGPUMaxBatteries);
}

float WarmUp() {
    const double now = GetTimePrecise();
    if (now <= timer) return kContinue;
    sendGPUisON();
    GroundMessageInterpretor(kGPUCrewKind, kGPUCrewRunning);
    if (KLVsimulElecSystem) {
        BatConnTime = now;
        GetBatteryLoad(BatteryCount());
        // One charging callback, however often the GPU was connected.
        XPLMUnregisterFlightLoopCallback(GPUBatteryLoadingCallBack, nullptr);
        XPLMRegisterFlightLoopCallback(GPUBatteryLoadingCallBack, kContinue, nullptr);
    }
    return kStop;
}

float Charge() {
    const int count = gBattLoad ? BatteryCount() : 0;
    GetBatteryLoad(count);
    const double increment = (GetTimePrecise() - BatConnTime) / kChargeSecondsPerVolt;
    for (int i = 0; i < count; ++i) {
        const float current = BatteryLoad[i];
        // Full, above the cap, or not a number: left as it is.
        if (!(current < kGPUChargeCapVolts) || !std::isfinite(current)) continue;
        BatteryLoad[i] = std::min(static_cast<float>(current + increment), kGPUChargeCapVolts);
        XPLMSetDatavf(gBattLoad, &BatteryLoad[i], i, 1);
    }
    return kContinue;
}

} // namespace

float GPUwarmUpCallBack(float /*elapsedSinceLastCall*/, float /*elapsedSinceLastLoop*/, int /*counter*/,
                        void* /*refcon*/) {
    return GuardCallback("GPU warm-up", kStop, WarmUp);
}

float GPUBatteryLoadingCallBack(float /*elapsedSinceLastCall*/, float /*elapsedSinceLastLoop*/,
                                int /*counter*/, void* /*refcon*/) {
    return GuardCallback("GPU charging", kStop, Charge);
}

void GetBatteryLoad(int count) {
    count = std::clamp(count, 0, kGPUMaxBatteries);
    if (!gBattLoad || count == 0) return;
    XPLMGetDatavf(gBattLoad, BatteryLoad, 0, count);
}

void SetBatteryLoad(float volts) {
    const int count = BatteryCount();
    std::fill(BatteryLoad, BatteryLoad + count, volts);
    if (gBattLoad && count > 0) XPLMSetDatavf(gBattLoad, BatteryLoad, 0, count);
}
