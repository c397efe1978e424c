// Speed of the object readers and writer on the largest real file, against the
// floor of any line-based text reader: a memchr scan for line ends over the same
// bytes in memory. Reported as bytes per second and as "x_memchr", how many times
// slower than that scan one pass is.
#include "objects/Obj7Reader.h"
#include "objects/Obj7ToObj8.h"
#include "objects/Obj8Reader.h"
#include "objects/Obj8Writer.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

const std::string kLargest = std::string(KALVORA_CORPUS_DIR) + "/obj8/marginal_Nimitz.obj";
const std::string kObj7 = std::string(KALVORA_CORPUS_DIR) + "/obj7/marginal_untitled_csl.obj";

std::string Slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

const std::string& LargestBytes() {
    static const std::string bytes = Slurp(kLargest);
    return bytes;
}

size_t CountLineEnds(const std::string& text) {
    size_t lines = 0;
    const char* p = text.data();
    const char* end = p + text.size();
    while ((p = static_cast<const char*>(std::memchr(p, '\n', static_cast<size_t>(end - p)))) != nullptr) {
        ++lines;
        ++p;
    }
    return lines;
}

/// Seconds of one memchr pass over the bytes (best of several, to keep noise out of the ratio).
double MemchrSeconds(const std::string& text) {
    double best = 1e9;
    for (int run = 0; run < 20; ++run) {
        const auto t0 = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(CountLineEnds(text));
        best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count());
    }
    return best;
}

/// Runs `pass` per iteration, reports bytes per second and the ratio to the memchr floor.
template <typename Pass> void Measure(benchmark::State& state, size_t bytes, Pass pass) {
    const double floor = MemchrSeconds(LargestBytes());
    double total = 0.0;
    for (auto _ : state) {
        const auto t0 = std::chrono::steady_clock::now();
        pass();
        total += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
    if (state.iterations() > 0 && floor > 0.0)
        state.counters["x_memchr"] = (total / static_cast<double>(state.iterations())) / floor;
}

void BM_MemchrLineScan(benchmark::State& state) {
    const std::string& text = LargestBytes();
    if (text.empty()) return state.SkipWithError("corpus not found");
    for (auto _ : state)
        benchmark::DoNotOptimize(CountLineEnds(text));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_MemchrLineScan)->Unit(benchmark::kMillisecond);

void BM_XObj8ReadMemory(benchmark::State& state) {
    const std::string& text = LargestBytes();
    if (text.empty()) return state.SkipWithError("corpus not found");
    XObj8 obj;
    Measure(state, text.size(),
            [&] { benchmark::DoNotOptimize(XObj8ReadMemory(text.data(), text.size(), obj)); });
}
BENCHMARK(BM_XObj8ReadMemory)->Unit(benchmark::kMillisecond);

void BM_XObj8ReadFile(benchmark::State& state) {
    const std::string& text = LargestBytes();
    if (text.empty()) return state.SkipWithError("corpus not found");
    XObj8 obj;
    Measure(state, text.size(), [&] { benchmark::DoNotOptimize(XObj8Read(kLargest.c_str(), obj)); });
}
BENCHMARK(BM_XObj8ReadFile)->Unit(benchmark::kMillisecond);

void BM_XObj8Write(benchmark::State& state) {
    XObj8 obj;
    if (!XObj8Read(kLargest.c_str(), obj)) return state.SkipWithError("corpus not found");
    const std::string out = std::string(KALVORA_BINARY_DIR) + "/bench_objects_write.obj";
    XObj8Write(out.c_str(), obj);
    const size_t written = Slurp(out).size();
    Measure(state, written, [&] { benchmark::DoNotOptimize(XObj8Write(out.c_str(), obj)); });
    std::remove(out.c_str());
}
BENCHMARK(BM_XObj8Write)->Unit(benchmark::kMillisecond);

void BM_Obj7ReadAndConvert(benchmark::State& state) {
    const std::string text = Slurp(kObj7);
    if (text.empty()) return state.SkipWithError("corpus not found");
    XObj obj;
    XObj8 converted;
    for (auto _ : state) {
        XObjReadMemory(text.data(), text.size(), obj);
        Obj7ToObj8(obj, converted);
        benchmark::DoNotOptimize(converted.indices.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_Obj7ReadAndConvert)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
