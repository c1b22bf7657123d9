#!/usr/bin/env bash
# Runs the benchmarks and prints their figures:
#  - natively, the Google Benchmark programs of bench/ in a release tree of their own (build/bench);
#  - under Wine, the Windows benchmark programs of bench/win against the registered module, in the
#    Windows tree (build/win) and its private prefix and display.
#   tools/bench.sh [--native-only] [ARGS for the native programs...]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
tools/install-deps.sh
native_only=0
if [ "${1:-}" = "--native-only" ]; then native_only=1; shift; fi

mkdir -p build
cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release > build/bench.configure.log
ninja -C build/bench > build/bench.build.log
for b in build/bench/bench/*_bench; do
  echo "== $(basename "$b")"
  "$b" "$@"
done
[ "$native_only" = 1 ] && exit 0

win=build/win
cmake -S . -B "$win" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake > build/bench.win.configure.log
ninja -C "$win" > build/bench.win.build.log
tools/wine-env.sh setup "$win" > /dev/null
trap 'tools/wine-env.sh teardown "$win"' EXIT
tools/wine-env.sh run "$win" regsvr32 /s "Z:$(pwd)/$win/module/KivLorqControls8x64.ocx"
for b in "$win"/bench/*_bench.exe; do
  echo "== $(basename "$b") (under Wine)"
  KIV_WINE_TIMEOUT=1800 tools/wine-env.sh run "$win" "$b"
done
