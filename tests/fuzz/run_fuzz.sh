#!/usr/bin/env bash
# Runs one fuzz target: a fresh output corpus, then the seed folders (read, never written), a fixed
# seed, a time limit per input (a hang is a finding) and a memory limit. Exits non-zero on any
# finding: a crash, a sanitizer report, a leak, a hang, or a broken property.
#   run_fuzz.sh TARGET CORPUS_DIR [libFuzzer options...] SEED_DIR...
set -euo pipefail
target=$1 corpus=$2
shift 2
options=() seeds=()
for a in "$@"; do
  case $a in -*) options+=("$a") ;; *) seeds+=("$a") ;; esac
done
rm -rf "$corpus"
mkdir -p "$corpus"
artifacts=$(dirname "$corpus")/findings/$(basename "$target")/
mkdir -p "$artifacts"
exec "$target" -seed=1 -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
  -artifact_prefix="$artifacts" "${options[@]}" "$corpus" "${seeds[@]}"
