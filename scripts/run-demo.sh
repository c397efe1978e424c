#!/usr/bin/env bash
# Runs the push-back demo in simhost with the freshly built plug-in.
set -euo pipefail
build=${1:-build}
sim="$build/simhost/cli/kalvora-sim"
if [ ! -x "$sim" ]; then
    echo "demo: kalvora-sim is not built yet; the plug-in is at $build/plugin/Kalvora.xpl"
    exit 1
fi
exec "$sim" --kalvora "$build/plugin/Kalvora.xpl" --scenario demo --report report
