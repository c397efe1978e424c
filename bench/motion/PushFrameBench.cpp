// What one frame of a push-back costs: PlaneMoveCallBack (which steps the
// aircraft, steers the nose wheel and the truck) on its own, a whole simhost
// frame around it, and every per-frame callback of the plug-in while a push
// and the GPU run on a modern host. Prints ns per call and heap allocations
// per call (every malloc-family call of the process is counted).
#include <benchmark/benchmark.h>

#include "XPLMProcessing.h"
#include "support/InProcessKalvora.h"
#include "core/CrewMessages.h"
#include "core/PluginState.h"
#include "core/Preferences.h"
#include "core/PublishedDataRefs.h"
#include "core/PushbackControl.h"
#include "core/SimulatorDataRefs.h"
#include "gpu/GPUService.h"
#include "motion/PushbackKinematics.h"
#include "toolkit/Dialog.h"
#include "truck/InstancedDrawing.h"
#include "truck/TruckMovement.h"
#include "truck/TruckSteering.h"
#include "utils/MathUtils.h"

#include <simhost/Simhost.h>

#include <atomic>
#include <cstddef>
#include <cstdio>

// Every heap allocation of the process goes through these: defined in the program, they take the place
// of the C library's for every library loaded (no preloading), count, and hand on to the C library.
// A sanitizer build has its own allocator in their place, so nothing is counted there.
#if !defined(__SANITIZE_ADDRESS__)
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* p, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* p);
}

namespace {
std::atomic<long> gAllocations{0};
void* Counted(void* p) {
    gAllocations.fetch_add(1, std::memory_order_relaxed);
    return p;
}
} // namespace

extern "C" {
void* malloc(size_t size) {
    return Counted(__libc_malloc(size));
}
void* calloc(size_t count, size_t size) {
    return Counted(__libc_calloc(count, size));
}
void* realloc(void* p, size_t size) {
    return Counted(__libc_realloc(p, size));
}
void* memalign(size_t alignment, size_t size) {
    return Counted(__libc_memalign(alignment, size));
}
void* aligned_alloc(size_t alignment, size_t size) {
    return Counted(__libc_memalign(alignment, size));
}
int posix_memalign(void** out, size_t alignment, size_t size) {
    void* p = __libc_memalign(alignment, size);
    if (!p) return 12; // ENOMEM
    *out = Counted(p);
    return 0;
}
void free(void* p) {
    __libc_free(p);
}
}
#else
namespace {
std::atomic<long> gAllocations{0};
} // namespace
#endif

namespace {

/// A host with a push under way: a tail-right turn from 45 degrees, which by design never ends.
struct PushUnderWay {
    simhost::Host host;
    PushUnderWay() : host(Options()) {
        kalvora_test::AddInProcessKalvora(host);
        SetDefaultPref();
        PrefFrontWheel = true;
        InitDataRef();
        host.set("sim/joystick/has_joystick", 1);
        host.set("sim/flightmodel/controls/parkbrake", 0.0);
        ResetPlaneMovementParam();
        gKLVPlaneMoveDirection = kMoveBackward;
        gKLVPlaneRotateDir = kRotateTailRight;
        gKLVautoPbPhase = kPhaseTurn;
        CalcFinalPsi(gKLVPlaneRotateDir, &gKLVfinalPsi);
        SetGearIndex();
        ApplyTruckCurrentHeading();
        gKLVisPlaneMoving = true;
    }
    static simhost::HostOptions Options() {
        simhost::HostOptions options;
        options.startHeadingDeg = 45.0;
        return options;
    }
};

void BM_PlaneMoveCallBack(benchmark::State& state) {
    PushUnderWay push;
    long frames = 0;
    const long before = gAllocations.load();
    for (auto _ : state) {
        benchmark::DoNotOptimize(PlaneMoveCallBack(0.016f, 0.016f, static_cast<int>(frames), nullptr));
        ++frames;
    }
    const long allocations = gAllocations.load() - before;
    state.counters["allocs_per_frame"] = static_cast<double>(allocations) / static_cast<double>(frames);
    state.counters["still_moving"] = gKLVisPlaneMoving ? 1 : 0;
}
BENCHMARK(BM_PlaneMoveCallBack);

void BM_SimhostFrameWithPush(benchmark::State& state) {
    PushUnderWay push;
    XPLMRegisterFlightLoopCallback(PlaneMoveCallBack, -1.0f, nullptr);
    push.host.runFrames(10); // let the callback start
    long frames = 0;
    const long before = gAllocations.load();
    for (auto _ : state) {
        push.host.runFrames(1);
        ++frames;
    }
    const long allocations = gAllocations.load() - before;
    state.counters["allocs_per_frame"] = static_cast<double>(allocations) / static_cast<double>(frames);
}
BENCHMARK(BM_SimhostFrameWithPush);

/// X-Plane 12 with every per-frame loop of the plug-in registered as start and enable register them:
/// the tug pushing (as an instance) through a tail-right turn from 45 degrees, which never ends, the crew's
/// message on screen and the GPU connected and warming up.
struct PushAndGPU {
    simhost::Host host;
    PushAndGPU() : host(PushUnderWay::Options()) {
        kalvora_test::AddInProcessKalvora(host);
        SetDefaultPref();
        InitDataRef();
        RegisterPublishedDataRefs();
        truckFilesPath = KALVORA_SOURCE_DIR "/assets/Kalvora/";
        std::snprintf(PrefLastTruck, sizeof PrefLastTruck, "%s", "KLVdefault");
        GpuFilesPath = truckFilesPath + "GroundServices/GPU";
        host.set("sim/joystick/has_joystick", 1);
        host.set("sim/flightmodel/controls/parkbrake", 0.0);
        for (XPLMFlightLoop_f loop : {TruckMovementCallBack, ResetATCCallBack, PlaneMoveCallBack})
            XPLMRegisterFlightLoopCallback(loop, -1.0f, nullptr);
        StartTruckInstancing();
        SetPBStatus(nullptr, kPBStatusTailRight);
        host.runUntil([] { return gKLVisPlaneMoving; }, 120.0);
        GPUeventHandler(); // the crew brings the GPU: its message, warm-up and instance loops
        host.runFrames(10);
    }
    ~PushAndGPU() {
        host.setDirectCaller(host.plugins().front());
        HV_Message::Close();
        StopTruckInstancing();
        ReleaseGPUInstance();
        resetGPU();
        resetAll();
        UnregisterPublishedDataRefs();
    }
};

float CrewMessageWindow(float, float, int, void*) {
    auto* message = static_cast<HV_Message*>(XPLMGetWindowRefCon(gXPLMWindowID));
    if (message) message->endTime = static_cast<int>(XPLMGetElapsedTime()) + 60; // shown, not timed out
    HV_Message::MessageCallback(gXPLMWindowID, message);
    return -1.0f;
}

float ChargingStep(float a, float b, int c, void* refcon) {
    KLVsimulElec(true);
    return GPUBatteryLoadingCallBack(a, b, c, refcon);
}

/// The plug-in's per-frame callbacks (the message window's draw callback among them).
const struct {
    const char* name;
    XPLMFlightLoop_f callback;
} kPerFrame[] = {
    {"PlaneMoveCallBack", PlaneMoveCallBack},     {"TruckMovementCallBack", TruckMovementCallBack},
    {"ResetATCCallBack", ResetATCCallBack},       {"TruckInstanceCallBack", TruckInstanceCallBack},
    {"GPUwarmUpCallBack", GPUwarmUpCallBack},     {"GPUBatteryLoadingCallBack", ChargingStep},
    {"GPUInstanceCallBack", GPUInstanceCallBack}, {"crew message window", CrewMessageWindow},
};

void BM_PerFrameCallback(benchmark::State& state) {
    const auto& loop = kPerFrame[state.range(0)];
    PushAndGPU scene;
    long calls = 0, allocations = 0;
    for (auto _ : state) {
        state.PauseTiming();
        scene.host.runFrames(1);         // the push and the GPU go on; not counted
        timer = GetTimePrecise() + 60.0; // the warm-up stays a warm-up
        state.ResumeTiming();
        const long before = gAllocations.load();
        benchmark::DoNotOptimize(loop.callback(0.016f, 0.016f, static_cast<int>(calls), nullptr));
        allocations += gAllocations.load() - before;
        ++calls;
    }
    state.SetLabel(loop.name);
    state.counters["allocs_per_call"] = static_cast<double>(allocations) / static_cast<double>(calls);
    // What was running: the push, the tug and cart instances, the crew's message.
    state.counters["still_moving"] = gKLVisPlaneMoving ? 1 : 0;
    state.counters["instances"] = static_cast<double>(scene.host.instances().size());
    state.counters["message_shown"] = gXPLMWindowID && XPLMGetWindowIsVisible(gXPLMWindowID) ? 1 : 0;
}
BENCHMARK(BM_PerFrameCallback)->DenseRange(0, sizeof kPerFrame / sizeof kPerFrame[0] - 1)->Iterations(2000);

} // namespace

BENCHMARK_MAIN();
