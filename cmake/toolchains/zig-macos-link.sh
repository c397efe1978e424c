#!/usr/bin/env bash
# zig-macos-link.sh <ld64.lld> <zig> <link command...>
# The link launcher of the zig macOS builds (cmake/toolchains/zig.cmake).
#
# Zig 0.11 links Mach-O files but exports every global symbol, hidden ones included, and
# refuses an exported-symbols list. So a link that names one (-Wl,-exported_symbols_list,<file>:
# the plug-in) runs twice: zig links as usual, printing its own linker line (ZIG_VERBOSE_LINK),
# which names the libc++, libc++abi and compiler-rt archives zig built for the target; then
# LLVM's Mach-O linker links the same inputs again with the list, over zig's file, for the same
# processor and macOS versions. Every other link is zig's alone.
set -euo pipefail
lld=$1 zig=$2
shift 2
exports="" command=()
for arg in "$@"; do
    case $arg in
    -Wl,-exported_symbols_list,*) exports=${arg#-Wl,-exported_symbols_list,} ;;
    *) command+=("$arg") ;;
    esac
done
[ -n "$exports" ] || exec "${command[@]}"

zig_line=$(ZIG_VERBOSE_LINK=1 "${command[@]}" 2>&1 | grep '^zig ld ' | head -1)
[ -n "$zig_line" ] || { echo "zig-macos-link: zig printed no linker line" >&2; exit 1; }
read -r -a zig_args <<<"${zig_line#zig ld }"
# Processor and macOS versions as the compiler wrote them into the first object.
for arg in "${zig_args[@]}"; do [[ $arg == *.o ]] && { first_object=$arg; break; }; done
objdump=$(command -v llvm-objdump || echo /usr/lib/llvm-14/bin/llvm-objdump)
headers=$("$objdump" --macho --private-headers "$first_object")
minos=$(echo "$headers" | awk '$1 == "minos" {print $2; exit}')
sdk=$(echo "$headers" | awk '$1 == "sdk" {print $2; exit}')
[[ $sdk =~ ^[0-9.]+$ ]] || sdk=$minos # an object may name none ("n/a")
case $(echo "$headers" | awk 'header {print $2; exit} /cputype/ {header = 1}') in
ARM64) arch=arm64 ;;
X86_64) arch=x86_64 ;;
*) echo "zig-macos-link: $first_object is for no processor this script knows" >&2; exit 1 ;;
esac
# libSystem's stub as zig ships it, for the macOS major version zig linked against.
system_stub="$(dirname "$zig")/lib/libc/darwin/libSystem.${minos%%.*}.tbd"
[ -f "$system_stub" ] || { echo "zig-macos-link: no $system_stub" >&2; exit 1; }

lld_args=()
for arg in "${zig_args[@]}"; do
    case $arg in
    -lSystem) lld_args+=("$system_stub") ;;
    -lc) ;; # part of libSystem
    *) lld_args+=("$arg") ;;
    esac
done
exec "$lld" -arch "$arch" -platform_version macos "$minos" "$sdk" "${lld_args[@]}" \
    -exported_symbols_list "$exports"
