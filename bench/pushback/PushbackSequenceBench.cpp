// What the truck sequence costs: one TruckMovementCallBack step while the truck
// approaches, and one whole straight push-back (start, approach, hook-up, push,
// drive-away) run on simhost's virtual clock. Prints time per step and per
// sequence, and the simulated frames one sequence takes.
#include <benchmark/benchmark.h>

#include "XPLMProcessing.h"
#include "support/InProcessKalvora.h"
#include "core/CrewMessages.h"
#include "core/Preferences.h"
#include "core/PublishedDataRefs.h"
#include "core/PushbackControl.h"
#include "core/SimulatorDataRefs.h"
#include "motion/PushbackKinematics.h"
#include "toolkit/Dialog.h"
#include "truck/TruckMovement.h"
#include "truck/TruckState.h"

#include <simhost/Simhost.h>

namespace {

/// A host with the plug-in's loops registered, the brake released and the crew silent.
struct Apron {
    simhost::Host host;
    int pluginId = -1;
    Apron() {
        pluginId = kalvora_test::AddInProcessKalvora(host);
        SetDefaultPref();
        PrefAuralCrewMessage = false; // speech and windows are the host's cost, not the sequence's
        PrefWrittenCrewMessage = false;
        InitDataRef();
        RegisterPublishedDataRefs();
        host.set("sim/joystick/has_joystick", 1);
        host.set("sim/flightmodel/controls/parkbrake", 0.0);
        XPLMRegisterFlightLoopCallback(PlaneMoveCallBack, -1.0f, nullptr);
        XPLMRegisterFlightLoopCallback(ResetATCCallBack, -1.0f, nullptr);
    }
    ~Apron() {
        host.setDirectCaller(pluginId);
        resetAll();
        UnregisterPublishedDataRefs();
    }
};

/// Starts a straight push-back as the status dataref does.
void StartStraight() {
    SetPBStatus(nullptr, 1);
}

void BM_TruckApproachStep(benchmark::State& state) {
    Apron apron;
    StartStraight();
    const double parkX = gKLVTruckX, parkZ = gKLVTruckZ;
    for (auto _ : state) {
        // Every step is an approach step from the park position, and due. These four stores are timed
        // with the step: stopping the timer around them would cost far more than they do.
        gKLVTruckX = parkX;
        gKLVTruckZ = parkZ;
        gKLVTruckMovementPhase = kTruckApproach;
        theLastTime = -1.0f;
        benchmark::DoNotOptimize(TruckMovementCallBack(0.0f, 0.0f, 0, nullptr));
    }
}
BENCHMARK(BM_TruckApproachStep);

void BM_WholeStraightPushback(benchmark::State& state) {
    Apron apron;
    long frames = 0;
    for (auto _ : state) {
        StartStraight();
        const int before = apron.host.frameCount();
        apron.host.runUntil([] { return gKLVTruckMovementPhase == kTruckIdle; }, 120.0);
        frames += apron.host.frameCount() - before;
    }
    state.counters["sim_frames_per_pushback"] =
        benchmark::Counter(static_cast<double>(frames), benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_WholeStraightPushback)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
