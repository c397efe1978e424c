#!/usr/bin/env bash
# make-release.sh <build folder> <dist folder>
# Writes <dist>/Kalvora-<version>.zip: the plug-in folder Kalvora/ as `cmake --install` lays it out
# (one Kalvora.xpl per platform folder, the data once), the install text for pilots and the
# licence; and <dist>/Kalvora-<version>-symbols.zip with the debug symbols kept aside.
set -euo pipefail
build=${1:-build}
dist=${2:-dist}
version=$(cat "$build/kalvora-version.txt")
stage="$dist/stage"
rm -rf "$stage" && mkdir -p "$stage"
cmake --install "$build" --prefix "$stage/xplane" --strip >/dev/null
mv "$stage/xplane/Resources/plugins/Kalvora" "$stage/Kalvora"
cp docs/install.txt "$stage/INSTALL.txt"
cp LICENSE "$stage/LICENSE.txt"
zip="$(realpath "$dist")/Kalvora-$version.zip"
rm -f "$zip"
(cd "$stage" && cmake -E tar cf "$zip" --format=zip Kalvora INSTALL.txt LICENSE.txt)
# Debug symbols of the stripped files, for crash reports.
# (the Linux file is installed stripped from the build's own, which keeps them)
symbols=(plugin/Kalvora.xpl)
for f in "$build"/cross/*/plugin/Kalvora.xpl.debug "$build"/cross/*/plugin/Kalvora.xpl.dSYM; do
    [ -e "$f" ] && symbols+=("$(realpath --relative-to="$build" "$f")")
done
(cd "$build" && cmake -E tar cf "$(realpath "$dist")/Kalvora-$version-symbols.zip" --format=zip "${symbols[@]}")
rm -rf "$stage"
echo "release: $zip"
(cd "$dist" && unzip -l "Kalvora-$version.zip" 2>/dev/null | grep -E 'xpl$|INSTALL|LICENSE' || true)
