// How fast simhost runs frames and serves datarefs: the budget scenario tests
// and kalvora-sim spend per simulated second.
#include "simhost/Simhost.h"

#include "XPLMDataAccess.h"
#include "XPLMProcessing.h"

#include <benchmark/benchmark.h>

namespace {

float everyFrame(float, float, int, void* refcon) {
    // What a typical plug-in loop does: read a few datarefs, write one.
    auto* refs = static_cast<XPLMDataRef*>(refcon);
    const double x = XPLMGetDatad(refs[0]);
    const float psi = XPLMGetDataf(refs[1]);
    XPLMSetDatad(refs[0], x + 0.001 * psi);
    return -1;
}

/// Makes `host` attribute direct API calls to a plug-in of its own; returns the datarefs everyFrame uses.
XPLMDataRef* BenchPlugin(simhost::Host& host) {
    simhost::InProcessPlugin p;
    p.name = p.signature = "bench";
    host.setDirectCaller(host.addPlugin(p));
    static XPLMDataRef refs[2];
    refs[0] = XPLMFindDataRef("sim/flightmodel/position/local_x");
    refs[1] = XPLMFindDataRef("sim/flightmodel/position/psi");
    return refs;
}

/// Frames per second of simhost with N plug-in flight loops (no rendering).
void BM_Frames(benchmark::State& state) {
    simhost::Host host;
    XPLMDataRef* refs = BenchPlugin(host);
    for (int i = 0; i < state.range(0); ++i)
        XPLMRegisterFlightLoopCallback(everyFrame, -1, refs);
    for (auto _ : state)
        host.runFrames(1);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Frames)->Arg(0)->Arg(10)->Arg(100);

/// A frame with one live flight loop after N loops were registered and unregistered again (a plug-in
/// that re-registers its loop at every reset): the unregistered ones should cost nothing.
void BM_FramesAfterUnregistering(benchmark::State& state) {
    simhost::Host host;
    XPLMDataRef* refs = BenchPlugin(host);
    static int refcons[1]; // a second refcon: its registrations are separate loops
    for (int i = 0; i < state.range(0); ++i) {
        XPLMRegisterFlightLoopCallback(everyFrame, -1, refcons);
        XPLMUnregisterFlightLoopCallback(everyFrame, refcons);
    }
    XPLMRegisterFlightLoopCallback(everyFrame, -1, refs);
    for (auto _ : state)
        host.runFrames(1);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FramesAfterUnregistering)->Arg(0)->Arg(10000);

/// One typed read of X-Plane's own dataref through the API.
void BM_GetDataf(benchmark::State& state) {
    simhost::Host host;
    XPLMDataRef r = XPLMFindDataRef("sim/flightmodel/position/groundspeed");
    float sum = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(sum += XPLMGetDataf(r));
}
BENCHMARK(BM_GetDataf);

/// Finding a dataref by name (what a plug-in should do once, at start).
void BM_FindDataRef(benchmark::State& state) {
    simhost::Host host;
    for (auto _ : state)
        benchmark::DoNotOptimize(XPLMFindDataRef("sim/flightmodel/position/local_x"));
}
BENCHMARK(BM_FindDataRef);

/// Creating and destroying a host, as every scenario test does (sandbox folder, X-Plane's datarefs and
/// commands, menus).
void BM_HostLifetime(benchmark::State& state) {
    for (auto _ : state)
        simhost::Host host;
}
BENCHMARK(BM_HostLifetime)->Unit(benchmark::kMicrosecond);

} // namespace
BENCHMARK_MAIN();
