#!/usr/bin/env bash
# Long fuzzing runs: builds the fuzz tree (clang, libFuzzer, AddressSanitizer + UBSan, in build/fuzz)
# and runs each target of tests/fuzz/targets.txt for RUNS executions (default 10 000 000) from its
# seeds and a corpus kept between runs (build/fuzz/corpus-long/<target>). Prints, per target, the
# executions, the time and any finding (written to build/fuzz/findings-long/<target>/); exits non-zero
# if a target found something. A finding becomes a regression test, then a fix.
#   tools/fuzz.sh [--runs N] [--jobs J] [TARGET...]   --jobs: targets run side by side (default 1)
set -uo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
runs=10000000 jobs=1 only=()
while [ $# -gt 0 ]; do
  case $1 in
  --runs) runs=$2; shift 2 ;;
  --jobs) jobs=$2; shift 2 ;;
  *) only+=("$1"); shift ;;
  esac
done
tools/install-deps.sh || exit 1
build=build/fuzz
mkdir -p build
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
  -DKIV_FUZZ=ON > build/fuzz.configure.log || { cat build/fuzz.configure.log; exit 1; }
ninja -C "$build" > build/fuzz.build.log || { grep -E "error|FAILED" build/fuzz.build.log | head -30; exit 1; }
# The files the targets write (the bytes they give the module to read) go to memory when it can.
scratch=$(mktemp -d "$( [ -d /dev/shm ] && echo /dev/shm || echo /tmp )/kivfuzz-long.XXXXXX")
trap 'rm -rf "$scratch"' EXIT

run_one() {
  local name=$1 maxlen=$2; shift 2
  local seeds=() s
  for s in "$@"; do
    case $s in
    shared/*) seeds+=("$top/../shared/data/${s#shared/}") ;;
    seeds/*) seeds+=("$top/tests/fuzz/$s") ;;
    esac
  done
  local corpus=$build/corpus-long/$name findings=$build/findings-long/$name/ log=$build/fuzz-long-$name.log
  mkdir -p "$corpus" "$findings"
  local start=$SECONDS
  # The time limit per input is wall-clock time: generous, so that targets run side by side on a
  # busy machine are not taken for hangs (the slowest real input takes about a third of a second
  # alone; it is among the seeds of the short runs, which keep a tighter limit).
  TMPDIR=$scratch "$build/tests/fuzz/$name" -runs="$runs" -max_len="$maxlen" -timeout=60 -rss_limit_mb=2048 \
    -print_final_stats=1 -artifact_prefix="$findings" "$corpus" "${seeds[@]}" > "$log" 2>&1
  local rc=$? executed seconds
  executed=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  seconds=$((SECONDS - start))
  if [ $rc -eq 0 ]; then
    echo "$name: ${executed:-?} executions in ${seconds} s ($(( ${executed:-0} / (seconds > 0 ? seconds : 1) ))/s), corpus $(ls "$corpus" | wc -l) inputs, no finding"
  else
    echo "$name: FINDING after ${executed:-?} executions (exit $rc); log $log, input in $findings"
    grep -E "ERROR|property broken|SUMMARY" "$log" | head -5
  fi
  return $rc
}

failed=0
pids=()
while read -r name source maxlen seeds; do
  case $name in ''|\#*) continue ;; esac
  if [ ${#only[@]} -gt 0 ] && [[ ! " ${only[*]} " == *" $name "* ]]; then continue; fi
  # shellcheck disable=SC2086
  run_one "$name" "$maxlen" $seeds &
  pids+=($!)
  if [ ${#pids[@]} -ge "$jobs" ]; then
    wait "${pids[0]}" || failed=1
    pids=("${pids[@]:1}")
  fi
done < tests/fuzz/targets.txt
for p in "${pids[@]}"; do wait "$p" || failed=1; done
exit $failed
