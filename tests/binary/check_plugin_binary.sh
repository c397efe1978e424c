#!/usr/bin/env bash
# check_plugin_binary.sh <Kalvora.xpl> [--oldest-glibc <version>] [--stripped]
# Checks a built Kalvora.xpl the way X-Plane will load it, for each platform's file
# format (Linux ELF, Windows PE, macOS universal Mach-O):
#  - it exports exactly the five plug-in entry points;
#  - everything it leaves for the host process to resolve is X-Plane API, OpenGL or the
#    system's C library; it needs no C++ runtime, libgcc, libwinpthread, libpng or zlib;
#  - it takes no trigonometric function from the system: those are compiled in
#    (third_party/musl-math), so that every platform computes a push-back alike;
#  - Linux: it links no function that some supported hosts lack, has no STB_GNU_UNIQUE
#    symbol (dlclose would not unload it) and, with --oldest-glibc, needs no newer glibc;
#  - Windows, with KALVORA_XPLANE_WIN_LIBS: X-Plane's import libraries export what it imports;
#  - with --stripped: no debug information or symbol table in the file, and its debug
#    symbols kept beside it (Kalvora.xpl.debug, or Kalvora.xpl.dSYM per macOS processor).
set -u
xpl=${1:?usage: check_plugin_binary.sh Kalvora.xpl [--oldest-glibc VERSION] [--stripped]}
shift
oldest_glibc="" stripped=0
while [ $# -gt 0 ]; do
    case $1 in
    --oldest-glibc) oldest_glibc=$2; shift 2 ;;
    --stripped) stripped=1; shift ;;
    *) echo "unknown option $1" >&2; exit 2 ;;
    esac
done
fail=0
say() { echo "check_plugin_binary: $*"; }
bad() { say "$1"; [ -n "${2:-}" ] && echo "$2" | head -20; fail=1; }
llvm() { command -v "$1" >/dev/null && echo "$1" || echo "/usr/lib/llvm-14/bin/$1"; }

entry_points=$(printf '%s\n' XPluginDisable XPluginEnable XPluginReceiveMessage XPluginStart XPluginStop)
# The functions two C libraries round differently, with or without the float suffix.
system_maths='^(sin|cos|tan|asin|acos|atan|atan2|hypot|sincos)f?$'
# The host's own API and OpenGL (X-Plane's process has both).
host_api='^(XPLM|XP|gl[A-Z])[A-Za-z0-9_]*$'

check_elf() {
    local defined undefined needed newest
    defined=$(nm -D --defined-only "$xpl" | awk '{print $3}' | sort)
    [ "$defined" = "$entry_points" ] || bad "exported symbols differ from the five entry points:" "$defined"
    # glibc symbols carry a version (@GLIBC_...); X-Plane's and OpenGL's do not. Weak
    # references ("w") may stay unresolved without failing the load, so only "U" counts.
    undefined=$(nm -D --undefined-only "$xpl" | awk '$1 == "U" {print $2}')
    local foreign
    foreign=$(echo "$undefined" | grep -v -E '@GLIBC_' | grep -v -E "$host_api" |
        grep -v -E '^(__gmon_start__|_ITM_deregisterTMCloneTable|_ITM_registerTMCloneTable|__cxa_finalize)$' || true)
    [ -z "$foreign" ] || bad "undefined symbols the host does not provide:" "$foreign"
    local maths
    maths=$(echo "$undefined" | sed 's/@.*//' | grep -E "$system_maths" || true)
    [ -z "$maths" ] || bad "takes trigonometry from the system's libm:" "$maths"
    # Functions some supported hosts lack (the instancing API came with X-Plane 11.10,
    # the legacy buttons are gone from newer ones) are looked up at run time: linked
    # directly, they would stop the plug-in loading on those hosts.
    local late
    late=$(echo "$undefined" | grep -E \
        '^(XPLMLoadObject|XPLMUnloadObject|XPLMCreateInstance|XPLMDestroyInstance|XPLMInstanceSetPosition|XPLMCommandButtonPress|XPLMCommandButtonRelease)$' || true)
    [ -z "$late" ] || bad "links functions that some hosts lack (look them up with XPLMFindSymbol):" "$late"
    needed=$(readelf -d "$xpl" | awk '/NEEDED/ {gsub(/[\[\]]/, "", $5); print $5}')
    local other_needed
    other_needed=$(echo "$needed" | grep -v -E '^(libc|libm|libdl|libpthread)\.so|^ld-linux|^$' || true)
    [ -z "$other_needed" ] || bad "needs libraries outside the C library:" "$other_needed"
    ! readelf --dyn-syms -W "$xpl" | grep -q UNIQUE || bad "has STB_GNU_UNIQUE symbols (dlclose would not unload it)"
    newest=$(echo "$undefined" | grep -o 'GLIBC_[0-9.]*' | sed 's/GLIBC_//' | sort -uV | tail -1)
    if [ -n "$oldest_glibc" ] && [ "$(printf '%s\n' "$newest" "$oldest_glibc" | sort -V | tail -1)" != "$oldest_glibc" ]; then
        bad "needs glibc $newest, newer than $oldest_glibc:" "$(echo "$undefined" | grep "GLIBC_$newest")"
    fi
    if [ $stripped -eq 1 ]; then
        local sections
        sections=$(readelf -S -W "$xpl" | awk '{print $2}')
        ! echo "$sections" | grep -q -E '^\.(symtab|debug_info)$' || bad "is not stripped"
        echo "$sections" | grep -q -x '.gnu_debuglink' || bad "names no debug symbols file (.gnu_debuglink)"
        readelf -S -W "$xpl.debug" 2>/dev/null | grep -q '\.debug_info' || bad "no debug symbols kept in $xpl.debug"
    fi
    say "ELF: 5 entry points; needs $(echo $needed), glibc ${newest}"
}

check_pe() {
    local readobj exports imports dlls
    readobj=$(llvm llvm-readobj)
    exports=$("$readobj" --coff-exports "$xpl" | awk '/Name:/ {print $2}' | sort)
    [ "$exports" = "$entry_points" ] || bad "exported symbols differ from the five entry points:" "$exports"
    # "<DLL> <function>" per imported function.
    imports=$("$readobj" --coff-imports "$xpl" | awk '/^ *Name:/ {dll = $2} /Symbol:/ {print dll, $2}')
    dlls=$(echo "$imports" | awk '{print $1}' | sort -u)
    local foreign
    foreign=$(echo "$dlls" | grep -v -i -x -E 'KERNEL32\.dll|msvcrt\.dll|OPENGL32\.dll|XPLM_64\.dll|XPWidgets_64\.dll' || true)
    [ -z "$foreign" ] || bad "needs DLLs beyond Windows, X-Plane and OpenGL (runtimes must be linked in):" "$foreign"
    local wrong_host
    wrong_host=$(echo "$imports" | awk 'tolower($1) ~ /^(xplm_64|xpwidgets_64|opengl32)\.dll$/' | grep -v -E " (XPLM|XP|gl[A-Z])[A-Za-z0-9_]*$" || true)
    [ -z "$wrong_host" ] || bad "imports from X-Plane or OpenGL what they do not have:" "$wrong_host"
    # With X-Plane's own import libraries at hand (KALVORA_XPLANE_WIN_LIBS: the official SDK's
    # Libraries/Win), every function taken from X-Plane is one X-Plane exports under that name.
    local dll
    for dll in XPLM_64 XPWidgets_64; do
        [ -f "${KALVORA_XPLANE_WIN_LIBS:-}/$dll.lib" ] || continue
        local unknown
        unknown=$(echo "$imports" | awk -v dll="$dll.dll" 'tolower($1) == tolower(dll) {print $2}' |
            grep -v -x -F "$(llvm-nm "$KALVORA_XPLANE_WIN_LIBS/$dll.lib" 2>/dev/null | awk '$2 == "T" {print $3}')" || true)
        [ -z "$unknown" ] || bad "imports from $dll.dll what X-Plane's own import library lacks:" "$unknown"
    done
    local maths
    maths=$(echo "$imports" | awk 'tolower($1) == "msvcrt.dll" {print $2}' | grep -E "$system_maths" || true)
    [ -z "$maths" ] || bad "takes trigonometry from msvcrt.dll:" "$maths"
    if [ $stripped -eq 1 ]; then
        local sections
        sections=$("$readobj" --sections "$xpl" | awk '/Name:/ {print $2}')
        ! echo "$sections" | grep -q '^\.debug_' || bad "is not stripped"
        echo "$sections" | grep -q -x '.gnu_debuglink' || bad "names no debug symbols file (.gnu_debuglink)"
        "$readobj" --sections "$xpl.debug" 2>/dev/null | grep -q '\.debug_info' || bad "no debug symbols kept in $xpl.debug"
    fi
    say "PE: 5 entry points; needs $(echo $dlls)"
}

check_macho() {
    local lipo nm objdump archs arch
    lipo=$(llvm llvm-lipo) nm=$(llvm llvm-nm) objdump=$(llvm llvm-objdump)
    archs=$("$lipo" -archs "$xpl" 2>/dev/null | xargs -n1 | sort | xargs)
    [ "$archs" = "arm64 x86_64" ] || bad "holds processors '$archs', not arm64 and x86_64"
    for arch in $archs; do
        local exports undefined dylibs
        exports=$("$nm" --arch="$arch" -g --defined-only -j "$xpl" | sed 's/^_//' | sort)
        [ "$exports" = "$entry_points" ] || bad "$arch: exported symbols differ from the five entry points:" "$exports"
        # "(dynamically looked up)": resolved in the host process; "(from <library>)": linked.
        undefined=$("$nm" --arch="$arch" -u -m "$xpl")
        local foreign
        foreign=$(echo "$undefined" | grep 'dynamically looked up' | awk '{print $3}' | sed 's/^_//' |
            grep -v -E "$host_api" || true)
        [ -z "$foreign" ] || bad "$arch: looks up in the host what is neither X-Plane nor OpenGL:" "$foreign"
        local maths
        maths=$(echo "$undefined" | grep 'from libSystem' | awk '{print $3}' | sed 's/^_//' | grep -E "$system_maths" || true)
        [ -z "$maths" ] || bad "$arch: takes trigonometry from libSystem:" "$maths"
        # (a dynamic library lists its own name first)
        dylibs=$("$objdump" --macho --dylibs-used --arch="$arch" "$xpl" | tail -n +2 | awk '{print $1}' |
            grep -v -x -F "$("$objdump" --macho --dylib-id --arch="$arch" "$xpl" | tail -n +2)")
        [ "$dylibs" = "/usr/lib/libSystem.B.dylib" ] || bad "$arch: links libraries beyond libSystem:" "$dylibs"
        if [ $stripped -eq 1 ]; then
            # A debug map (OSO entries) or local symbols left in the file: not stripped.
            ! "$nm" --arch="$arch" -a "$xpl" | grep -q -E ' (OSO|t) ' || bad "$arch: is not stripped"
        fi
    done
    if [ $stripped -eq 1 ]; then
        local dsym
        for dsym in "${DSYMS[@]:-}"; do
            [ -n "$(find "$dsym" -path '*DWARF*' -type f -size +1k 2>/dev/null)" ] || bad "no debug symbols in $dsym"
        done
    fi
    say "Mach-O: $archs, each with 5 entry points; needs /usr/lib/libSystem.B.dylib"
}

# macOS debug symbols: one .dSYM per processor, named in DSYMS (space-separated) by the caller.
read -r -a DSYMS <<<"${KALVORA_DSYMS:-}"
case $(head -c 4 "$xpl" | od -An -tx1 | tr -d ' \n') in
7f454c46) check_elf ;;
4d5a*) check_pe ;;
cafebabe) check_macho ;;
*) bad "$xpl: not a file format X-Plane loads" ;;
esac
[ $fail -eq 0 ] && say "ok: $xpl"
exit $fail
