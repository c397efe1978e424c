#!/usr/bin/env bash
# The mutant check: how many deliberate faults does the test suite catch, and which tests catch each?
#
# For every mutant of the list (tests/mutants.txt) it changes one line of one source file, rebuilds
# what the tests need, runs the whole suite without the fuzz runs, records which tests failed and puts
# the file back. The file is always put back: after each mutant, on a failed build, on Ctrl-C and on
# any exit. It refuses to start on a tree with changes, so nothing of anyone's work can be lost.
#
#   scripts/mutants.sh [options]
#     -b, --build DIR        build folder (default build-mutants; configured here when it is new)
#     -l, --list FILE        mutant list (default tests/mutants.txt)
#     -o, --results FILE     results (default <build>/mutants-result.tsv)
#     -i, --ids ID[,ID...]   only these mutants; an ID may be a shell pattern ("gpu-*")
#     -j, --jobs N           build and test jobs (default 2)
#     -t, --test-timeout S   seconds one test may run before it counts as hung (default 90)
#     -x, --first            stop the suite at a mutant's first failing test: the status is the same,
#                            the run about twice as fast, but "tests" names only the first catchers
#         --check            only check that every mutant's line is found once; no build, no tests
#     -h, --help
#
# The results file has one line per mutant: id, status, the file, how many tests failed and which.
# Status: caught (some test failed), timeout (a test hung: caught too), survived (every test passed),
# not-applicable (the line is no longer in the file, or is there more than once), build-error (the
# mutant does not compile: fix the list). The last line printed is the summary
#   mutants: N caught of M applicable
# Long runs belong in the background: nice -n 19 scripts/mutants.sh > mutants.log 2>&1 &
set -uo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=build-mutants
list=tests/mutants.txt
results=
ids=
jobs=2
testTimeout=90
checkOnly=0
stopOnFailure=()

usage() { sed -n '2,/^set -uo/p' "${BASH_SOURCE[0]}" | sed '$d' | sed 's/^# \{0,1\}//'; }
die() { echo "mutants: $*" >&2; exit 2; }

while [ $# -gt 0 ]; do
    case "$1" in
    -b | --build) build=${2:?}; shift 2 ;;
    -l | --list) list=${2:?}; shift 2 ;;
    -o | --results) results=${2:?}; shift 2 ;;
    -i | --ids) ids=${2:?}; shift 2 ;;
    -j | --jobs) jobs=${2:?}; shift 2 ;;
    -t | --test-timeout) testTimeout=${2:?}; shift 2 ;;
    --check) checkOnly=1; shift ;;
    -x | --first) stopOnFailure=(--stop-on-failure); shift ;;
    -h | --help) usage; exit 0 ;;
    *) usage >&2; die "unknown option $1" ;;
    esac
done

cd "$root" || die "cannot enter $root"
[ -f "$list" ] || die "no mutant list $list"
case "$build" in /*) ;; *) build=$root/$build ;; esac
results=${results:-$build/mutants-result.tsv}
case "$results" in /*) ;; *) results=$root/$results ;; esac

# ---------------------------------------------------------------- the list
# Blocks of "key: value" lines, a blank line or the next "id:" ends a block, "#" starts a comment:
#   id:   gpu-cart-side                       (letters, digits, "-" and "_")
#   what: the cart stands left of the nose    (what a user would see)
#   file: src/gpu/GPUPlacement.cpp
#   from: <the line as it stands>             (compared without leading and trailing blanks)
#   to:   <the line that replaces it>         (takes the indentation of the line it replaces)
M_ID=() M_WHAT=() M_FILE=() M_FROM=() M_TO=()
trim() { local s=$1; s=${s#"${s%%[![:space:]]*}"}; s=${s%"${s##*[![:space:]]}"}; printf '%s' "$s"; }
readList() {
    local n=-1 lineNo=0 line key value
    while IFS= read -r line || [ -n "$line" ]; do
        lineNo=$((lineNo + 1))
        case "$line" in '#'* | '') continue ;; esac
        key=${line%%:*}
        [ "$key" != "$line" ] || die "$list:$lineNo: expected 'key: value'"
        value=$(trim "${line#*:}")
        case "$key" in
        id) n=$((n + 1)); M_ID[n]=$value; M_WHAT[n]=; M_FILE[n]=; M_FROM[n]=; M_TO[n]= ;;
        what | file | from | to)
            [ $n -ge 0 ] || die "$list:$lineNo: '$key' before the first 'id'"
            case "$key" in
            what) M_WHAT[n]=$value ;; file) M_FILE[n]=$value ;; from) M_FROM[n]=$value ;; to) M_TO[n]=$value ;;
            esac ;;
        *) die "$list:$lineNo: unknown key '$key'" ;;
        esac
    done <"$list"
    local i j
    for i in "${!M_ID[@]}"; do
        [[ ${M_ID[i]} =~ ^[A-Za-z0-9_-]+$ ]] || die "mutant '${M_ID[i]}': an id is letters, digits, - and _"
        [ -n "${M_FILE[i]}" ] && [ -n "${M_FROM[i]}" ] || die "mutant ${M_ID[i]}: needs file and from"
        [ -n "${M_TO[i]}" ] || die "mutant ${M_ID[i]}: needs 'to' (a dropped statement is 'to: ;')"
        [ "${M_FROM[i]}" != "${M_TO[i]}" ] || die "mutant ${M_ID[i]}: 'to' is the same as 'from'"
        for ((j = 0; j < i; ++j)); do [ "${M_ID[j]}" != "${M_ID[i]}" ] || die "mutant ${M_ID[i]} is listed twice"; done
    done
}

wanted() { # is mutant $1 among --ids?
    [ -z "$ids" ] && return 0
    local pattern
    local IFS=,
    for pattern in $ids; do
        # shellcheck disable=SC2053
        [[ $1 == $pattern ]] && return 0
    done
    return 1
}

# How many lines of file $1 read as $FROM once trimmed (FROM and TO come through the environment, so
# awk sees them byte for byte, without escape processing).
countMatches() {
    FROM=$2 awk 'BEGIN { want = ENVIRON["FROM"]; n = 0 }
        { t = $0; sub(/^[ \t]+/, "", t); sub(/[ \t\r]+$/, "", t); if (t == want) n++ }
        END { print n }' "$1"
}
# Writes file $1 to $2 with the matching line replaced by $TO, indented as the line it replaces.
writeMutant() {
    FROM=$3 TO=$4 awk 'BEGIN { want = ENVIRON["FROM"]; to = ENVIRON["TO"] }
        { t = $0; sub(/^[ \t]+/, "", t); sub(/[ \t\r]+$/, "", t)
          if (t == want) { match($0, /^[ \t]*/); print substr($0, 1, RLENGTH) to } else print }' "$1" >"$2"
}

readList
selected=()
for i in "${!M_ID[@]}"; do wanted "${M_ID[i]}" && selected+=("$i"); done
[ ${#selected[@]} -gt 0 ] || die "no mutant matches --ids '$ids'"

if [ $checkOnly -eq 1 ]; then
    bad=0
    for i in "${selected[@]}"; do
        f=${M_FILE[i]}
        n=0
        [ -f "$f" ] && n=$(countMatches "$f" "${M_FROM[i]}")
        if [ "$n" != 1 ]; then
            echo "${M_ID[i]}: $f: the line is found $n times"
            bad=$((bad + 1))
        fi
    done
    echo "mutants: ${#selected[@]} checked, $((${#selected[@]} - bad)) apply, $bad do not"
    [ $bad -eq 0 ]
    exit
fi

# ---------------------------------------------------------------- safety: a clean tree, always restored
command -v git >/dev/null || die "git is needed"
if [ -n "$(git status --porcelain)" ]; then
    git status --short >&2
    die "the tree has changes; commit or stash them first (a mutant is undone by copying the file back)"
fi

work=$(mktemp -d)
mutatedFile= # the file that holds a mutant right now, relative to the root
restore() {
    local f=$mutatedFile
    [ -n "$f" ] || return 0
    if cp "$work/original" "$f" && git diff --quiet -- "$f"; then
        mutatedFile=
        return 0
    fi
    echo "mutants: $f could not be put back; its original is $work/original" >&2
    return 1
}
child= # the build or test run going on now, in its own process group (see inChild)
finish() {
    local status=$?
    trap - EXIT INT TERM HUP
    if [ -n "$child" ]; then
        kill -TERM "$child" 2>/dev/null # timeout passes it on to the build or the tests
        wait "$child" 2>/dev/null
    fi
    restore || exit 3
    rm -rf "$work"
    exit $status
}
trap finish EXIT
trap 'echo "mutants: interrupted" >&2; exit 130' INT TERM HUP

# ---------------------------------------------------------------- build and test
if [ ! -f "$build/CMakeCache.txt" ]; then
    launcher=()
    command -v ccache >/dev/null &&
        launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    echo "== configuring $build (tests on, benchmarks off)"
    cmake -S . -B "$build" -G Ninja -DKALVORA_TESTS=ON -DKALVORA_BENCH=OFF "${launcher[@]}" >"$work/configure.log" 2>&1 ||
        { cat "$work/configure.log" >&2; die "cannot configure $build"; }
fi
# What the tests need is everything but the benchmarks and the fuzzers: with Ninja, the "all" of each
# top-level folder but those two; with another generator, everything.
targets=(all)
if [ -f "$build/build.ninja" ]; then
    mapfile -t targets < <(ninja -C "$build" -t targets all 2>/dev/null |
        sed -n 's/^\([^/: ]*\/all\): phony$/\1/p' | grep -vE '^(bench|fuzz)/all$')
    [ ${#targets[@]} -gt 0 ] || targets=(all)
fi
logs=$build/mutant-logs
mkdir -p "$logs"

# Runs "$@" (a timeout command) in the background with its output into the file $1, and waits for it,
# so that a signal reaches the trap at once (and the trap's own messages still reach the terminal).
inChild() {
    local log=$1
    shift
    "$@" >"$log" 2>&1 &
    child=$!
    wait "$child"
    local rc=$?
    child=
    return $rc
}
buildTests() { # $1: log file
    inChild "$1" timeout 3600 cmake --build "$build" -j "$jobs" --target "${targets[@]}"
}
# Runs the suite; sets FAILED (names, one line each) and TIMEDOUT (0/1). $1: log file.
runTests() {
    local failedLog=$build/Testing/Temporary/LastTestsFailed.log
    rm -f "$failedLog"
    local extra=()
    [ $# -gt 1 ] && extra=("${stopOnFailure[@]}")
    inChild "$1" timeout 3600 ctest --test-dir "$build" -LE fuzz -j "$jobs" --timeout "$testTimeout" --no-tests=error \
        "${extra[@]}"
    local rc=$?
    FAILED=$( [ -f "$failedLog" ] && sed 's/^[0-9]*://' "$failedLog" | sort -u)
    TIMEDOUT=0
    grep -q '\*\*\*Timeout' "$1" && TIMEDOUT=1
    if [ $rc -eq 124 ]; then TIMEDOUT=1; fi
    if [ $rc -ne 0 ] && [ -z "$FAILED" ]; then FAILED="(ctest exit $rc)"; fi
}

echo "== building the tests in $build"
buildTests "$logs/baseline-build.log" || { tail -30 "$logs/baseline-build.log" >&2; die "the unchanged tree does not build"; }
echo "== running the suite on the unchanged tree"
runTests "$logs/baseline-ctest.log"
baselineFailed=$FAILED
if [ -n "$baselineFailed" ]; then
    echo "mutants: these tests fail without any mutant and are left out of every result:" >&2
    sed 's/^/  /' <<<"$baselineFailed" >&2
fi

mkdir -p "$(dirname "$results")"
printf 'id\tstatus\tfile\tfailed\ttests\n' >"$results"
caught=0 timedOut=0 survived=0 notApplicable=0 buildErrors=0
total=${#selected[@]} k=0
for i in "${selected[@]}"; do
    k=$((k + 1))
    id=${M_ID[i]} f=${M_FILE[i]}
    status= failedTests= timing=
    n=0
    [ -f "$f" ] && n=$(countMatches "$f" "${M_FROM[i]}")
    if [ "$n" != 1 ]; then
        status=not-applicable
        failedTests="(line found $n times)"
        notApplicable=$((notApplicable + 1))
    else
        cp "$f" "$work/original"
        writeMutant "$f" "$work/mutant" "${M_FROM[i]}" "${M_TO[i]}"
        mutatedFile=$f
        cp "$work/mutant" "$f"
        started=$SECONDS
        if ! buildTests "$logs/$id-build.log"; then
            status=build-error
            buildErrors=$((buildErrors + 1))
        else
            rm -f "$logs/$id-build.log"
            built=$SECONDS
            runTests "$logs/$id-ctest.log" mutant
            timing="build $((built - started)) s, tests $((SECONDS - built)) s"
            if [ -n "$baselineFailed" ] && [ -n "$FAILED" ]; then
                FAILED=$(comm -23 <(printf '%s\n' "$FAILED") <(printf '%s\n' "$baselineFailed"))
            fi
            failedTests=$(printf '%s' "$FAILED" | paste -sd ' ')
            if [ $TIMEDOUT -eq 1 ]; then
                status=timeout
                timedOut=$((timedOut + 1))
            elif [ -n "$FAILED" ]; then
                status=caught
                caught=$((caught + 1))
            else
                status=survived
                survived=$((survived + 1))
                rm -f "$logs/$id-ctest.log"
            fi
        fi
        restore || exit 3
    fi
    nFailed=0
    [ -n "$failedTests" ] && [ "$status" != not-applicable ] && nFailed=$(wc -w <<<"$failedTests")
    printf '%s\t%s\t%s\t%s\t%s\n' "$id" "$status" "$f" "$nFailed" "$failedTests" >>"$results"
    printf '[%d/%d] %-32s %-15s %s%s\n' "$k" "$total" "$id" "$status" "${M_WHAT[i]}" "${timing:+ ($timing)}"
done

# Leave the build folder built from the unchanged sources.
buildTests "$logs/final-build.log" || echo "mutants: the final rebuild of the unchanged tree failed" >&2

applicable=$((caught + timedOut + survived))
echo "results: $results"
[ $buildErrors -eq 0 ] || echo "mutants: $buildErrors do not compile (see $logs/*-build.log): fix the list"
[ $notApplicable -eq 0 ] || echo "mutants: $notApplicable not applicable (their line is gone or repeated)"
echo "mutants: $((caught + timedOut)) caught of $applicable applicable ($timedOut by a timeout, $survived survived)"
