#!/usr/bin/env bash
# Instruction counts of the real Kalvora.xpl in simhost, counted by callgrind: the
# same on any machine and under any load, unlike times. Runs push_instructions
# (bench/plugin) under valgrind, which marks start + enable and the demo's push,
# and splits each part by ELF object (scripts/callgrind-split.awk).
#   scripts/bench-instructions.sh [build dir, default build]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-build}
driver="$build/bench/plugin/push_instructions"
if ! command -v valgrind >/dev/null || [ ! -x "$driver" ]; then
    echo "instructions: not measured (needs valgrind and $driver)"
    exit 0
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
valgrind --tool=callgrind --instr-atstart=no --compress-strings=no --compress-pos=no \
    --callgrind-out-file="$work/cg" "$driver" >"$work/driver.txt" 2>"$work/valgrind.txt" || {
    cat "$work/driver.txt" "$work/valgrind.txt" >&2
    exit 1
}
split() {
    awk -v plugin='/Kalvora\.xpl$' -v api='/libsimhost\.so$' -v named='^CreateBitmapFromPNG\\(' \
        -f "$root/scripts/callgrind-split.awk" "$1"
}
split "$work/cg.1" >"$work/start.txt"
split "$work/cg.2" >"$work/push.txt"
value() { awk -v k="$1" '$1 == k { print $2 }' "$2"; }
frames=$(sed -n 's/^desc push frames=//p' "$work/push.txt")
total=$(value total "$work/push.txt")
own=$(value own "$work/push.txt")
api=$(value api "$work/push.txt")
start=$(awk '$1 == "in" && ($3 == "XPluginStart" || $3 == "XPluginEnable") { s += $2 } END { print s }' "$work/start.txt")
png=$(value named "$work/start.txt")

line() { printf '  %-40s %10s  %s\n' "$1" "$2" "$3"; }
perframe() { awk -v a="$1" -v n="$frames" 'BEGIN { printf "%d", a / n + 0.5 }'; }
millions() { awk -v a="$1" 'BEGIN { printf "%.1f M", a / 1e6 }'; }
echo "instructions (callgrind; the demo's push, $frames frames from the brake's release to the truck gone):"
line "plug-in's own code, per frame" "$(perframe "$own")" "Kalvora.xpl, with the maths and C library calls it makes"
line "X-Plane API calls it makes, per frame" "$(perframe "$api")" "inside libsimhost.so"
awk '$1 == "in" { name = $3; sub(/\(.*/, "", name); print name, $2 }' "$work/push.txt" | sort |
    while read -r name count; do line "  $name" "$(perframe "$count")" "its own code and API calls"; done
line "rest of simhost's frame, per frame" "$(perframe $((total - own - api)))" "clock, world, flight-loop dispatch"
line "start + enable" "$(millions "$start")" "XPluginStart and XPluginEnable, of which PNG decoding $(millions "$png")"
