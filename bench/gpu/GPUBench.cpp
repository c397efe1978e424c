// What the GPU costs per frame: one charging step (read the batteries, add the
// increment, write them back) for a twin and for an aircraft with more engines
// than the GPU charges, and one placement beside the nose gear.
#include <benchmark/benchmark.h>

#include "support/InProcessKalvora.h"
#include "core/Preferences.h"
#include "core/SimulatorDataRefs.h"
#include "gpu/GPUService.h"

#include <simhost/Simhost.h>

namespace {

/// A host with the plug-in's datarefs bound and the batteries low enough to charge for a long time.
struct ChargingAircraft {
    simhost::Host host;
    explicit ChargingAircraft(int engines) {
        kalvora_test::AddInProcessKalvora(host);
        SetDefaultPref();
        InitDataRef();
        host.set("sim/aircraft/engine/acf_num_engines", engines);
        KLVsimulElec(true);
    }
    void Discharge() {
        for (int i = 0; i < 16; ++i)
            host.set("sim/flightmodel/engine/ENGN_bat_volt", 0.0, i);
        BatConnTime = 0.0;
    }
};

void BM_ChargingStep(benchmark::State& state) {
    ChargingAircraft aircraft(static_cast<int>(state.range(0)));
    aircraft.Discharge();
    long steps = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(GPUBatteryLoadingCallBack(0.0f, 0.0f, 0, nullptr));
        if (++steps % 100000 == 0) {
            state.PauseTiming();
            aircraft.Discharge(); // stay below the cap, where every step writes
            state.ResumeTiming();
        }
    }
    state.SetLabel(std::to_string(state.range(0)) + " engines");
}
BENCHMARK(BM_ChargingStep)->Arg(2)->Arg(12);

void BM_PlaceBesideNoseGear(benchmark::State& state) {
    ChargingAircraft aircraft(2);
    double x = 0, y = 0, z = 0, hdg = 0;
    for (auto _ : state) {
        CalcGPUPos(&x, &y, &z, &hdg);
        benchmark::DoNotOptimize(x + y + z + hdg);
    }
}
BENCHMARK(BM_PlaceBesideNoseGear);

} // namespace

BENCHMARK_MAIN();
