// What a load/unload cycle of the real Kalvora.xpl leaves behind in the host
// process, as when a user reloads plug-ins again and again: heap bytes still in
// use and resident memory, per cycle. At every unload a push has been asked
// for (the crew's message is on screen) and the preferences, free-move and
// About windows are open, with the preferences waiting for a key.
#include "simhost/Simhost.h"
#include "simhost/Widgets.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <string>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr const char* kMenu = "Plugins/Kalvora/";
constexpr int kWarmUpCycles = 3; ///< the host's own tables reach their size first

long HeapBytesInUse() {
    return static_cast<long>(mallinfo2().uordblks);
}

long ResidentBytes() {
    std::ifstream statm("/proc/self/statm");
    long pages = 0, resident = 0;
    statm >> pages >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

/// Loads the plug-in, opens its windows, asks for a push, unloads it; false when it did not load.
bool Cycle(simhost::Host& host) {
    const int id = host.loadPlugin(KALVORA_BINARY_DIR "/plugin/Kalvora.xpl",
                                   KALVORA_SOURCE_DIR "/assets/Kalvora", nullptr);
    if (id < 0) return false;
    for (const char* item : {"Preferences...", "Tools/Free move panel", "About...", "Push straight back"})
        host.pickMenu(std::string(kMenu) + item);
    simhost::clickWidget(host, simhost::findWidget("Assign new"));
    host.runFrames(2);
    host.unloadPlugin(id);
    // The next load installs the file afresh under its own name.
    fs::remove(fs::path(host.sandbox()) / "Resources" / "plugins" / "Kalvora.xpl");
    return true;
}

void BM_LoadUnloadCycle(benchmark::State& state) {
    simhost::Host host;
    for (int i = 0; i < kWarmUpCycles; ++i)
        if (!Cycle(host)) state.SkipWithError("Kalvora.xpl does not load");
    const long heapBefore = HeapBytesInUse(), residentBefore = ResidentBytes();
    long cycles = 0;
    for (auto _ : state) {
        Cycle(host);
        ++cycles;
    }
    state.counters["heap_bytes_kept_per_cycle"] =
        static_cast<double>(HeapBytesInUse() - heapBefore) / static_cast<double>(cycles);
    state.counters["resident_bytes_per_cycle"] =
        static_cast<double>(ResidentBytes() - residentBefore) / static_cast<double>(cycles);
}
BENCHMARK(BM_LoadUnloadCycle)->Iterations(200)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
