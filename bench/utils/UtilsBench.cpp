// Speed of the utilities' readers and matcher on inputs of the sizes the plug-in meets:
// truck file names against "*.obj", an adversarial many-star pattern, queries on a
// key-value file (each query scans from the start), and a preferences file round trip.
#include <benchmark/benchmark.h>

#include "utils/FileUtils.h"
#include "utils/HV_Properties.h"
#include "utils/HV_ReadHalvernFile.h"

#include <cstdio>
#include <string>
#include <unistd.h>

namespace {

std::string ScratchFile(const std::string& name, const std::string& content) {
    const std::string path = "/tmp/kalvora-utils-bench-" + std::to_string(getpid()) + "-" + name;
    FILE* out = fopen(path.c_str(), "wb");
    if (out) {
        fwrite(content.data(), 1, content.size(), out);
        fclose(out);
    }
    return path;
}

void BM_GlobMatchTruckName(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(HV_FileUtils::glob_match("PushbackTruck_Heavy.obj", "*.obj"));
        benchmark::DoNotOptimize(HV_FileUtils::glob_match("PushbackTruck_Heavy.png", "*.obj"));
    }
}
BENCHMARK(BM_GlobMatchTruckName);

/// Text of n "a"s against "*a*a*a*a*a*a*b": plain backtracking grows as n^6 here.
void BM_GlobMatchManyStars(benchmark::State& state) {
    const std::string text(static_cast<size_t>(state.range(0)), 'a');
    for (auto _ : state)
        benchmark::DoNotOptimize(HV_FileUtils::glob_match(text.c_str(), "*a*a*a*a*a*a*b"));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_GlobMatchManyStars)->RangeMultiplier(4)->Range(16, 4096)->Complexity();

/// "abab...ab" against "*ab*ab*ab*ac": every star position is tried before the match fails.
void BM_GlobMatchRepeatedPairs(benchmark::State& state) {
    std::string text;
    for (int64_t i = 0; i < state.range(0); ++i)
        text += "ab";
    for (auto _ : state)
        benchmark::DoNotOptimize(HV_FileUtils::glob_match(text.c_str(), "*ab*ab*ab*ac"));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_GlobMatchRepeatedPairs)->RangeMultiplier(4)->Range(16, 4096)->Complexity();

/// The last key of a file of n indexed lines, found by scanning from the start.
void BM_KeyValueLastKey(benchmark::State& state) {
    const int lines = static_cast<int>(state.range(0));
    std::string content;
    for (int i = 0; i < lines; ++i)
        content += "Light[" + std::to_string(i) + "]=1.5 2.5 3.5\n";
    const std::string path = ScratchFile("kv", content);
    HV_ReadHalvernFile reader(path.c_str());
    const std::string last = "Light[" + std::to_string(lines - 1) + "]=";
    for (auto _ : state)
        benchmark::DoNotOptimize(reader.GetValueString(last.c_str(), nullptr));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(content.size()));
    unlink(path.c_str());
}
BENCHMARK(BM_KeyValueLastKey)->Arg(10)->Arg(100)->Arg(1000);

/// GetCountValueOf over n indexed keys: n queries, each scanning further, so it grows as n^2.
void BM_KeyValueCount(benchmark::State& state) {
    const int lines = static_cast<int>(state.range(0));
    std::string content;
    for (int i = 0; i < lines; ++i)
        content += "Wheel[" + std::to_string(i) + "]=0.4\n";
    const std::string path = ScratchFile("count", content);
    HV_ReadHalvernFile reader(path.c_str());
    for (auto _ : state)
        benchmark::DoNotOptimize(reader.GetCountValueOf("Wheel"));
    state.SetComplexityN(lines);
    unlink(path.c_str());
}
BENCHMARK(BM_KeyValueCount)->RangeMultiplier(4)->Range(16, 1000)->Complexity();

/// Loading and atomically saving a preferences file of 12 keys.
void BM_PreferencesRoundTrip(benchmark::State& state) {
    std::string content;
    for (const char* key :
         {"TruckView_KEY", "TruckView_KF", "SWITCH_VIEW", "AURAL_CREW_MESSAGE", "WRITTEN_CREW_MESSAGE",
          "DRAW_TRUCK", "FRONT_WHEEL", "HANDLE_GPU", "TRUCK_SPEED", "ALLOW_ENGN_ON", "Truck", "Version"})
        content += std::string(key) + "=1\n";
    const std::string path = ScratchFile("prefs.prf", content);
    for (auto _ : state) {
        HV_Properties props(path.c_str(), nullptr);
        props.save(nullptr);
    }
    unlink(path.c_str());
}
BENCHMARK(BM_PreferencesRoundTrip);

} // namespace

BENCHMARK_MAIN();
