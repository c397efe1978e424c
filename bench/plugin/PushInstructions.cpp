// Marks the demo's push for callgrind: scripts/bench-instructions.sh runs this
// program under valgrind with instrumentation off at start, and reads two dumps:
// "start-enable" (loading the real Kalvora.xpl: XPluginStart and XPluginEnable
// among the rest) and "push frames=N" (the N frames of the push, from the
// brake's release until the truck has left). A first run, not measured, counts
// the push's frames, so that the measured run reads nothing from the plug-in.
// Run without valgrind, it only prints the number of frames.
#include "DemoPush.h"

#include <valgrind/callgrind.h>

#include <cstdio>
#include <string>

int main() {
    long frames = 0;
    {
        kalvora_bench::DemoPush counting;
        if (!counting.Load()) {
            std::fprintf(stderr, "push_instructions: Kalvora.xpl does not load\n");
            return 1;
        }
        counting.RunToBrakeRelease();
        do
            ++frames;
        while (counting.PushFrame());
    }
    kalvora_bench::DemoPush measured;
    CALLGRIND_START_INSTRUMENTATION;
    const bool loaded = measured.Load();
    CALLGRIND_STOP_INSTRUMENTATION;
    CALLGRIND_DUMP_STATS_AT("start-enable");
    if (!loaded) return 1;
    measured.RunToBrakeRelease();
    CALLGRIND_START_INSTRUMENTATION;
    measured.host().runFrames(static_cast<int>(frames));
    CALLGRIND_STOP_INSTRUMENTATION;
    const std::string dumpName = "push frames=" + std::to_string(frames); // alive during the request
    CALLGRIND_DUMP_STATS_AT(dumpName.c_str());
    if (measured.host().geti("halvern/kalvora/PBstatus") != 0) {
        std::fprintf(stderr, "push_instructions: the measured push did not end with the counted one\n");
        return 1;
    }
    std::printf("push frames: %ld\n", frames);
    return 0;
}
