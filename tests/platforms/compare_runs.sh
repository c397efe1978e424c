#!/usr/bin/env bash
# compare_runs.sh <scenario> <reference kalvora-sim> <reference Kalvora.xpl> <kalvora-sim> <Kalvora.xpl> <data folder>
# Runs a named scenario twice: with the reference pair (the Linux build) and with the pair under
# test (a .exe runs under Wine, in $WINEPREFIX; with KALVORA_SANDBOX_NAME, its X-Plane folder must
# have been made under a folder of that name). The transcripts must be the same once the
# sandbox folder is named alike, and every position and heading of the traces equal to 1e-6.
set -u
scenario=$1 ref_sim=$2 ref_xpl=$3 sim=$4 xpl=$5 data=$6
work=$(mktemp -d "${TMPDIR:-/tmp}/kalvora-compare-XXXXXX")
trap 'rm -rf "$work"' EXIT
say() { echo "compare_runs $scenario: $*"; }

# Windows sees this machine's files on drive Z:.
windows_path() { echo "Z:${1//\//\\}"; }

"$ref_sim" --quiet --kalvora "$ref_xpl" --data "$data" --scenario "$scenario" --report "$work/reference" \
    >"$work/reference.out" 2>&1 || { say "reference run failed"; cat "$work/reference.out"; exit 1; }
if [[ $sim == *.exe ]]; then
    WINEDEBUG=-all "${WINE:-wine64}" "$sim" --quiet --kalvora "$(windows_path "$xpl")" --data "$(windows_path "$data")" \
        --scenario "$scenario" --report "$(windows_path "$work/tested")" >"$work/tested.out" 2>&1
else
    "$sim" --quiet --kalvora "$xpl" --data "$data" --scenario "$scenario" --report "$work/tested" >"$work/tested.out" 2>&1
fi
[ $? -eq 0 ] || { say "run failed"; cat "$work/tested.out"; exit 1; }
# A run that must have had its X-Plane folder under a given name (accents: wide-character paths).
if [ -n "${KALVORA_SANDBOX_NAME:-}" ] && ! grep -qF "$KALVORA_SANDBOX_NAME" "$work/tested/transcript.txt"; then
    say "the X-Plane folder was not under $KALVORA_SANDBOX_NAME"; exit 1
fi

# Sandbox folders differ from run to run and Windows writes "\" and CR LF.
normalise() { tr -d '\r' <"$1" | tr '\\' '/' | sed -E 's#[^ ]*/simhost-[^/ ]*/#<sandbox>/#g'; }
fail=0
# The transcript, X-Plane's Log.txt and the plug-in's own log (what it found, read and loaded).
for file in transcript.txt Log.txt Kalvora.log; do
    if ! diff <(normalise "$work/reference/$file") <(normalise "$work/tested/$file") >"$work/diff"; then
        say "$file differs:"; head -20 "$work/diff"; fail=1
    fi
done
lines=$(grep -c . "$work/reference/transcript.txt")
# Time (1) and phase (10) must be equal as text; positions to 1e-6 m and headings to 1e-6 degrees.
# Both builds take sin, cos, atan2, ... from the same source (third_party/musl-math) and contract
# no a*b+c, so they compute the same bits: the traces are expected to be identical.
if ! paste -d '|' <(tr -d '\r' <"$work/reference/trace.csv") <(tr -d '\r' <"$work/tested/trace.csv") | awk -F'|' '
    function abs(x) { return x < 0 ? -x : x }
    NR > 1 { split($1, a, ","); split($2, b, ",")
      if (a[1] != b[1] || a[10] != b[10]) { print "row " NR ": " $1 " <> " $2; bad = 1; exit }
      for (i = 2; i <= 9; i++) {
          d = abs(a[i] - b[i]); heading = (i == 4 || i == 9)
          limit = 1e-6
          if (heading && d > maxDeg) maxDeg = d
          if (!heading && d > maxM) maxM = d
          if (d > limit) { print "row " NR " column " i ": " a[i] " <> " b[i]; bad = 1; exit } } }
    END { printf "largest difference: %.2g m, %.2g deg\n", maxM, maxDeg; exit bad }'; then
    say "traces differ"; fail=1
fi
rows=$(wc -l <"$work/reference/trace.csv")
if [ "$rows" -ne "$(wc -l <"$work/tested/trace.csv")" ]; then say "traces have different lengths"; fail=1; fi
[ $fail -eq 0 ] && say "same transcript ($lines lines) and trace ($((rows - 1)) frames)"
exit $fail
