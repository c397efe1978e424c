#!/usr/bin/env bash
# make-release.sh <build folder> <dist folder>
# Writes <dist>/Kalvora-<version>.zip: the plug-in folder Kalvora/ as `cmake --install` lays it out
# (one stripped Kalvora.xpl per platform folder, the data once beside them), the install text for
# pilots and the licence; and <dist>/Kalvora-<version>-symbols.zip with the debug symbols kept
# aside. Checks the zip's listing against what X-Plane and a pilot need before it says done.
set -euo pipefail
build=${1:-build}
dist=${2:-dist}
version=$(cat "$build/kalvora-version.txt")
mkdir -p "$dist"
dist=$(realpath "$dist")
stage="$dist/stage"
rm -rf "$stage" && mkdir -p "$stage"
cmake --install "$build" --prefix "$stage/xplane" >/dev/null
mv "$stage/xplane/Resources/plugins/Kalvora" "$stage/Kalvora"
cp docs/install.txt "$stage/INSTALL.txt"
cp LICENSE "$stage/LICENSE.txt"
zip="$dist/Kalvora-$version.zip"
rm -f "$zip"
(cd "$stage" && cmake -E tar cf "$zip" --format=zip Kalvora INSTALL.txt LICENSE.txt)

# The listing: every platform's file where X-Plane looks for it, the data once, nothing else.
listing=$(cd "$stage" && find Kalvora INSTALL.txt LICENSE.txt -type f | sort)
expected=$(cd "$(dirname "$0")/.." && {
    printf '%s\n' Kalvora/lin_x64/Kalvora.xpl Kalvora/win_x64/Kalvora.xpl Kalvora/mac_x64/Kalvora.xpl \
        INSTALL.txt LICENSE.txt
    (cd assets && find Kalvora -type f)
} | sort)
zipped=$(cmake -E tar tf "$zip" | grep -v '/$' | sort)
if [ "$listing" != "$expected" ] || [ "$zipped" != "$expected" ]; then
    echo "release: the zip does not hold what it should:" >&2
    diff <(echo "$expected") <(echo "$zipped") >&2 || true
    exit 1
fi

# Debug symbols of the stripped files, for crash reports.
symbols=()
for f in "$build"/cross/{lin,win}/plugin/Kalvora.xpl.debug "$build"/cross/mac-*/plugin/Kalvora.xpl.dSYM; do
    [ -e "$f" ] && symbols+=("$(realpath --relative-to="$build" "$f")")
done
(cd "$build" && cmake -E tar cf "$dist/Kalvora-$version-symbols.zip" --format=zip "${symbols[@]}")
rm -rf "$stage"
echo "release: $zip ($(echo "$expected" | wc -l) files: Kalvora.xpl for lin_x64, win_x64, mac_x64)"
echo "release: $dist/Kalvora-$version-symbols.zip (${#symbols[@]} debug symbol files)"
