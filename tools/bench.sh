#!/usr/bin/env bash
# Runs the benchmarks in a release tree of their own (build/bench) and prints their figures. The
# Windows benchmarks (under Wine) are run from the Windows tree: tools/bench.sh --wine.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
tools/install-deps.sh
cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release > build/bench.configure.log
ninja -C build/bench > build/bench.build.log
for b in build/bench/bench/*_bench; do
  echo "== $(basename "$b")"
  "$b" "$@"
done
