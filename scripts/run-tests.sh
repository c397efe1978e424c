#!/usr/bin/env bash
# Runs the whole test suite and ends with one plain summary line:
#   "tests: N passed, N failed"
# 1. unit, scenario and binary tests of the gcc build ($1, default build);
# 2. in the clang build ($2, default build-fuzz), when clang is there, everything compiled with the
#    address and undefined-behaviour sanitizers (any report fails): the bounded fuzz runs, and the
#    host-free and simhost test programs once more (label "sanitized").
set -uo pipefail
build=${1:-build}
fuzz_build=${2:-build-fuzz}
jobs=${JOBS:-$(nproc)}
passed=0; failed=0; status=0; failed_names=""

count() { # reads a ctest log, adds its totals
    local line
    line=$(grep -E 'tests passed, [0-9]+ tests? failed out of [0-9]+' "$1" | tail -n 1)
    if [ -n "$line" ]; then
        local total fails
        total=$(sed -E 's/.*out of ([0-9]+).*/\1/' <<<"$line")
        fails=$(sed -E 's/.*passed, ([0-9]+) tests? failed.*/\1/' <<<"$line")
        passed=$((passed + total - fails)); failed=$((failed + fails))
    fi
    # ctest's closing list, "\t<number> - <name> (<why>)", repeated at the very end of the run
    local names
    names=$(sed -n '/The following tests FAILED:/,/^[^[:space:]]/{/^[[:space:]]/p}' "$1")
    [ -z "$names" ] || failed_names+="$names"$'\n'
}

log=$(mktemp)
ctest --test-dir "$build" --no-tests=error --output-on-failure -j "$jobs" -LE fuzz 2>&1 | tee "$log"
[ "${PIPESTATUS[0]}" -eq 0 ] || status=1
count "$log"

if command -v clang++ >/dev/null; then
    echo "== sanitizer build: bounded fuzz runs (${FUZZ_SECONDS:-10} s each), host-free and simhost tests =="
    if CC=clang CXX=clang++ cmake -S . -B "$fuzz_build" -G Ninja -DKALVORA_FUZZ=ON -DKALVORA_TESTS=ON \
            -DSIMHOST_TESTS_BUILD_PLUGIN=OFF -DKALVORA_BENCH=OFF -DKALVORA_FUZZ_SECONDS="${FUZZ_SECONDS:-10}" \
            -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null &&
       cmake --build "$fuzz_build" -j "$jobs" --target fuzzers sanitized_tests; then
        # Software OpenGL without worker threads: a Mesa thread still winding down at exit can crash
        # LeakSanitizer's thread-stopping tracer ("Tracer caught signal 11"), now and then.
        LP_NUM_THREADS=0 MESA_SHADER_CACHE_DISABLE=true \
            ctest --test-dir "$fuzz_build" --output-on-failure -L 'fuzz|sanitized' -j "$jobs" --no-tests=error 2>&1 |
            tee "$log"
        [ "${PIPESTATUS[0]}" -eq 0 ] || status=1
        count "$log"
    else
        echo "fuzz build failed"; status=1; failed=$((failed + 1))
    fi
else
    echo "clang++ not found: fuzz runs skipped"
fi
rm -f "$log"
[ -z "$failed_names" ] || printf 'failed:\n%s' "$failed_names"
echo "tests: $passed passed, $failed failed"
exit $status
