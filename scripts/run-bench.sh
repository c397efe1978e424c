#!/usr/bin/env bash
# make bench: runs every benchmark program of the build (their tables first), then
# prints the figures that matter, one line each with what it measures. Times depend
# on the machine and on what else runs on it; the instruction counts (callgrind) do not.
#   scripts/run-bench.sh [build dir, default build]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-build}
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT

for b in $(find "$build/bench" -mindepth 2 -maxdepth 2 -type f -executable -name '*bench*' | sort); do
    name=$(basename "$b")
    echo "== $name"
    "$b" --benchmark_out="$out/$name.json" --benchmark_out_format=json
done

# A counter (or real_time) of the first benchmark whose name starts with $2, from program $1's JSON
# output (one "key": value per line).
figure() {
    awk -v bench="$2" -v key="\"$3\":" '
        $1 == "\"name\":" { name = $2; gsub(/[",]/, "", name); next }
        index(name, bench) == 1 && $1 == key && !done { v = $2; sub(/,$/, "", v); printf "%.4g", v; done = 1 }' \
        "$out/$1.json"
}

# The demo without rendering, as fast as it goes: the best of five runs, with and without start-up.
sim="$build/simhost/cli/kalvora-sim"
best=0
bestFrames=0
for _ in 1 2 3 4 5; do
    summary=$("$sim" --kalvora "$build/plugin/Kalvora.xpl" --scenario demo --quiet)
    speed=$(sed -n 's/^sim time .* real time [0-9.]* s (\([0-9]*\)x).*/\1/p' <<<"$summary")
    framesSpeed=$(sed -n 's/^start-up .* frames [0-9.]* s (\([0-9]*\)x).*/\1/p' <<<"$summary")
    if [ "${speed:-0}" -gt "$best" ]; then best=$speed; fi
    if [ "${framesSpeed:-0}" -gt "$bestFrames" ]; then bestFrames=$framesSpeed; fi
done

line() { printf '  %-40s %10s  %s\n' "$1" "$2" "$3"; }
f=plugin_frames_bench
echo
echo "== figures (times from this run: other work on the machine moves them)"
line "plug-in's frame, demo push" "$(figure $f BM_DemoPush plugin_us) us" \
    "simhost frame with Kalvora.xpl ($(figure $f BM_DemoPush frame_us) us) minus without it ($(figure $f BM_DemoPush bare_host_frame_us) us), $(figure $f BM_DemoPush frames) frames"
line "plug-in's frame, GPU" "$(figure $f BM_GPUFrames plugin_us) us" \
    "the same over $(figure $f BM_GPUFrames frames) frames of the GPU warming up and charging"
line "heap allocations per frame" "$(figure $f BM_DemoPush allocs_per_frame)" \
    "whole process during the push; the same host without the plug-in: $(figure $f BM_DemoPush bare_allocs_per_frame)"
line "start + enable" "$(figure $f BM_StartEnable fastest_ms) ms" \
    "XPluginStart and XPluginEnable (models and textures, no GL): fastest of 50 (mean $(figure $f BM_StartEnable real_time) ms), $(figure $f BM_StartEnable allocs) allocations"
line "ObjDraw8 command walk, tug" "$(figure bench_scene BM_ObjDraw8Walk/truck walk_us) us" \
    "ObjDraw8 minus bare glDrawElements of its triangle runs ($(figure bench_scene BM_ObjDraw8Walk/truck bare_us) us), rasterisation off"
line "ObjDraw8 command walk, largest model" "$(figure bench_scene BM_ObjDraw8Walk/largest walk_us) us" \
    "the same for the corpus's largest OBJ8 (bare draws $(figure bench_scene BM_ObjDraw8Walk/largest bare_us) us)"
line "demo speed without rendering, frames" "${bestFrames}x" \
    "kalvora-sim --scenario demo: sim seconds per real second of its frames (host, plug-in, recording)"
line "demo speed without rendering, whole run" "${best}x" \
    "the same with start-up (host made, plug-in installed, started, enabled); both best of 5 runs"
echo
bash "$root/scripts/bench-instructions.sh" "$build"
