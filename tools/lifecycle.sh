#!/usr/bin/env bash
# Long lifecycle runs: builds the module and the lifecycle test for Windows, registers the module in
# the project's private Wine prefix and runs CYCLES create-site-activate-use-deactivate-release
# cycles of each of the six controls (default 10 000), printing per control the time, the GDI and
# USER object counts and the heap bytes in use before and after; then the module must unload. The
# test command runs the same program with 100 cycles.
#   tools/lifecycle.sh [CYCLES]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
cycles=${1:-10000}
tools/install-deps.sh
build=build/win
mkdir -p build
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake > build/lifecycle.configure.log
ninja -C "$build" KivLorqControls8x64 lifecycle_tests > build/lifecycle.build.log
tools/wine-env.sh setup "$build" > /dev/null
trap 'tools/wine-env.sh teardown "$build"' EXIT
tools/wine-env.sh run "$build" regsvr32 /s "Z:$(pwd)/$build/module/KivLorqControls8x64.ocx"
# About 5 ms a cycle under Wine; the time limit leaves room for a slow machine.
export KIV_LIFECYCLES=$cycles
KIV_WINE_TIMEOUT=$((600 + cycles / 4)) tools/wine-env.sh run "$build" "$(pwd)/$build/tests/lifecycle_tests.exe" \
  --gtest_filter='EveryControl/Lifecycles.*' | grep -E "cycles in|OK|FAILED|Failure|Expected|Which is|actual"
