#!/usr/bin/env bash
# Regenerates Kalvora's own models, textures and pictures in assets/Kalvora/ and
# their renders in docs/img/ (day and night, drawn by the plug-in's own scene
# objects in simhost's headless renderer).
#   scripts/make-assets.sh [build dir, default build]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-build}
cd "$root"
[ -f "$build/build.ninja" ] || [ -f "$build/Makefile" ] || cmake -S . -B "$build" -G Ninja
cmake --build "$build" --target kalvora-assets scene_tests
"$build/tools/kalvora-assets/kalvora-assets" assets/Kalvora
"$build/tests/scene/scene_tests" --gtest_filter='AssetRenderTest.*'
mkdir -p docs/img
for f in truck truck2 gpu scene; do
    for t in day night; do
        cp "$build/scene-renders/$f-$t.png" "docs/img/$f-$t.png"
    done
done
echo "assets/Kalvora and docs/img are up to date"
