#!/usr/bin/env bash
# The whole test suite: installs what is missing, builds the five trees (native, native under
# AddressSanitizer + UBSan, the fuzz targets under both sanitizers with clang, cross for Windows with
# the release package, and the module alone cross-built by clang with every warning an error) and
# runs every test (the fuzz targets for a short, fixed number of runs; the Windows ones under Wine).
# Prints "N passed, N failed" and exits non-zero on any failure.
set -uo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"

tools/install-deps.sh || { echo "0 passed, 1 failed"; exit 1; }

jobs=$(nproc 2>/dev/null || echo 2)
passed=0
failed=0

# run_tree NAME CMAKE-ARGS...: configure, build and test one tree; add its counts to the totals.
run_tree() {
  local name=$1; shift
  local dir=build/$name
  echo "== $name: configure and build"
  if ! cmake -S . -B "$dir" -G Ninja "$@" > "$dir.configure.log" 2>&1; then
    cat "$dir.configure.log"; failed=$((failed + 1)); return
  fi
  if ! ninja -C "$dir" > "$dir.build.log" 2>&1; then
    grep -E "error|FAILED" "$dir.build.log" | head -50; failed=$((failed + 1)); return
  fi
  echo "== $name: test"
  local out
  out=$(cd "$dir" && ctest -j "$jobs" --output-on-failure 2>&1)
  echo "$out" | grep -vE "^ +Start |Test +#[0-9]+: .* Passed " | tail -60
  local summary total fails
  summary=$(echo "$out" | grep -E "tests passed, [0-9]+ tests? failed out of [0-9]+" | tail -1)
  if [ -z "$summary" ]; then failed=$((failed + 1)); return; fi
  total=$(echo "$summary" | sed -E 's/.* out of ([0-9]+).*/\1/')
  fails=$(echo "$summary" | sed -E 's/.* ([0-9]+) tests? failed.*/\1/')
  passed=$((passed + total - fails))
  failed=$((failed + fails))
}

mkdir -p build
run_tree native -DCMAKE_BUILD_TYPE=Debug
run_tree asan -DCMAKE_BUILD_TYPE=Debug -DKIV_SANITIZE=ON
run_tree fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ -DKIV_FUZZ=ON
run_tree win -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake
run_tree clang -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE=cmake/clang-mingw-w64-x86_64.cmake -DKIV_MODULE_ONLY=ON \
  -DKIV_WERROR=ON

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
