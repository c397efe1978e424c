// What one frame of a push-back costs: PlaneMoveCallBack (which steps the
// aircraft, steers the nose wheel and the truck) on its own, and a whole
// simhost frame around it. Prints ns per frame and heap allocations per frame.
#include <benchmark/benchmark.h>

#include "XPLMProcessing.h"
#include "XPLMUtilities.h"
#include "core/Preferences.h"
#include "core/SimulatorDataRefs.h"
#include "motion/PushbackKinematics.h"
#include "truck/TruckSteering.h"

#include <simhost/Simhost.h>

#include <atomic>
#include <cstdlib>
#include <new>

// Every heap allocation of the process is counted through a replaced operator new. GCC cannot
// see that the replacement pairs malloc with free and warns at the inlined call sites.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

namespace {
std::atomic<long> gAllocations{0};
} // namespace

void* operator new(std::size_t size) {
    gAllocations.fetch_add(1, std::memory_order_relaxed);
    if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}

namespace {

/// A host with a push under way: a tail-right turn from 45 degrees, which by design never ends.
struct PushUnderWay {
    simhost::Host host;
    PushUnderWay() : host(Options()) {
        simhost::InProcessPlugin plugin;
        plugin.name = "Kalvora";
        plugin.signature = "Halvern.Kalvora";
        host.setDirectCaller(host.addPlugin(plugin));
        int xplm = 0, hostId = 0;
        XPLMGetVersions(&XPVersion, &xplm, &hostId);
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

} // namespace

BENCHMARK_MAIN();
