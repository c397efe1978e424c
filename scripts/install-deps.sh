#!/usr/bin/env bash
# Installs the Debian packages Kalvora's build, tests and demo need, only those
# that are missing. Run by `make demo` and `make test`; safe to run again.
set -euo pipefail

packages=(
    cmake ninja-build g++ make pkg-config
    libpng-dev zlib1g-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    libegl-dev libgl-dev libopengl-dev libgl1-mesa-dri libegl-mesa0
    libcli11-dev libstb-dev
    clang libclang-rt-14-dev
    espeak-ng
    binutils
    valgrind
    # the other platforms: Windows (mingw-w64, run under Wine), macOS and old-glibc Linux (zig,
    # fetched from npm by scripts/toolchains.sh; llvm's lipo/strip/dsymutil), and Debian's
    # libpng/zlib source packages (dpkg-source)
    g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 wine64
    npm llvm lld dpkg-dev
)

missing=()
for p in "${packages[@]}"; do
    # npm also comes with other Node.js packagings (which Debian's npm would conflict with).
    [ "$p" = npm ] && command -v npm >/dev/null && continue
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "install-deps: installing ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null; then sudo="sudo"; else
        echo "install-deps: not root and no sudo; install these packages: ${missing[*]}" >&2
        exit 1
    fi
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
