// What the real Kalvora.xpl costs simhost, measured over whole sequences (no timer
// stops inside them):
// - a frame during the demo's push (every flight loop the plug-in registered, run by
//   the host in its order) and during the GPU's warm-up and charging: the host's
//   whole frame with the plug-in, the same number of frames of the same host without
//   it, and the difference, which is the plug-in's frame with the API calls it makes;
//   heap allocations per frame of the whole process, both ways;
// - start + enable (XPluginStart and XPluginEnable, timed around the calls): the mean, and the
//   fastest pass, which other work on a shared machine disturbs least.
#include "DemoPush.h"
#include "support/CountingAllocator.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstring>
#include <functional>

namespace {

using Clock = std::chrono::steady_clock;
using kalvora_bench::DemoPush;
using kalvora_bench::HeapAllocations;

double SecondsSince(Clock::time_point t0) {
    return std::chrono::duration<double>(Clock::now() - t0).count();
}

/// Frames of the same host without the plug-in: seconds taken, allocations added to `allocations`.
double BareHostSeconds(long frames, long& allocations) {
    simhost::Host bare(kalvora_bench::DemoHostOptions());
    bare.runFrames(1);
    const long before = HeapAllocations();
    const auto t0 = Clock::now();
    bare.runFrames(static_cast<int>(frames));
    const double seconds = SecondsSince(t0);
    allocations += HeapAllocations() - before;
    return seconds;
}

/// One measured sequence: prepares the plug-in's host (not timed), then runs frames while it returns true.
struct Sequence {
    std::function<void(DemoPush&)> prepare;
    std::function<bool(DemoPush&, long frame)> frame;
};

void RunSequences(benchmark::State& state, const Sequence& s) {
    long frames = 0, allocations = 0, bareAllocations = 0;
    double seconds = 0, bareSeconds = 0;
    for (auto _ : state) {
        long n = 0;
        {
            DemoPush demo;
            if (!demo.Load()) {
                state.SkipWithError("Kalvora.xpl does not load");
                return;
            }
            s.prepare(demo);
            const long before = HeapAllocations();
            const auto t0 = Clock::now();
            while (s.frame(demo, n++)) {
            }
            const double pass = SecondsSince(t0);
            allocations += HeapAllocations() - before;
            seconds += pass;
            state.SetIterationTime(pass);
        }
        bareSeconds += BareHostSeconds(n, bareAllocations);
        frames += n;
    }
    const double perFrame = 1.0 / static_cast<double>(frames);
    state.counters["frames"] = static_cast<double>(frames) / static_cast<double>(state.iterations());
    state.counters["frame_us"] = seconds * perFrame * 1e6;
    state.counters["bare_host_frame_us"] = bareSeconds * perFrame * 1e6;
    state.counters["plugin_us"] = (seconds - bareSeconds) * perFrame * 1e6;
    state.counters["allocs_per_frame"] = static_cast<double>(allocations) * perFrame;
    state.counters["bare_allocs_per_frame"] = static_cast<double>(bareAllocations) * perFrame;
}

/// The demo's push, from the brake's release until the truck has left.
void BM_DemoPushFrames(benchmark::State& state) {
    RunSequences(
        state, {[](DemoPush& d) { d.RunToBrakeRelease(); }, [](DemoPush& d, long) { return d.PushFrame(); }});
}
BENCHMARK(BM_DemoPushFrames)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

constexpr long kGPUFrames = 20 * 60; ///< 15 s of warm-up, then 5 s of charging, at 60 frames per second

/// The GPU brought to the parked aircraft: its warm-up and charging loops and its cart's instance.
void BM_GPUFrames(benchmark::State& state) {
    RunSequences(state, {[](DemoPush& d) {
                             d.host().runFrames(1);
                             d.host().pickMenu("Plugins/Kalvora/GPU");
                         },
                         [](DemoPush& d, long frame) {
                             d.host().runFrames(1);
                             return frame + 1 < kGPUFrames;
                         }});
}
BENCHMARK(BM_GPUFrames)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

/// XPluginStart and XPluginEnable of the real plug-in (its models and textures loaded), without GL.
void BM_StartEnable(benchmark::State& state) {
    long allocations = 0;
    double fastest = 0; // seconds: the pass least disturbed by other work on the machine
    for (auto _ : state) {
        DemoPush demo;
        double seconds = 0;
        long allocationsBefore = 0;
        Clock::time_point t0;
        demo.host().setCallObserver([&](int, const char* what, bool entering) {
            if (std::strcmp(what, "XPluginStart") != 0 && std::strcmp(what, "XPluginEnable") != 0) return;
            if (entering) {
                allocationsBefore = HeapAllocations();
                t0 = Clock::now();
            } else {
                seconds += SecondsSince(t0);
                allocations += HeapAllocations() - allocationsBefore;
            }
        });
        if (!demo.Load()) {
            state.SkipWithError("Kalvora.xpl does not load");
            return;
        }
        state.SetIterationTime(seconds);
        if (fastest == 0 || seconds < fastest) fastest = seconds;
    }
    state.counters["allocs"] = static_cast<double>(allocations) / static_cast<double>(state.iterations());
    state.counters["fastest_ms"] = fastest * 1e3;
}
BENCHMARK(BM_StartEnable)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

} // namespace

BENCHMARK_MAIN();
