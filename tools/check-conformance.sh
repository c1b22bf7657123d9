#!/usr/bin/env bash
# docs/conformance.md (and docs/hosting.md and docs/reference.md, in square brackets) cites tests by `Suite.Test` (or `Suite.*`, or `Instances/Suite.Test` for a
# test run once per parameter): every cited test must exist in
# tests/ (every cited ctest name `win.*` / `repo.*` / `tool.*` in a CMakeLists.txt, every `fuzz.<target>` in
# tests/fuzz/targets.txt), so the catalogue
# cannot name a test that was renamed or removed. Exits 1 listing the missing names.
set -uo pipefail
root=${1:-$(cd "$(dirname "$0")/.." && pwd)}
cd "$root" || exit 2
missing=0
while read -r name; do
  suite=${name%%.*}
  test=${name#*.}
  case $suite in
  win|repo|tool)
    # Literally, or as a name built in a loop (win.foundation_tests.dpi${dpi} for ...dpi96).
    # A script test is named by its function: win.script.X is kiv_add_script_test(X ...).
    stem=$(echo "${name%%\**}" | sed -E 's/[0-9]+$//')
    # A program run again at another dpi: win.PROGRAM.dpiN, built as win.${program}.dpi${dpi}.
    dpi_program=$(echo "$name" | sed -nE 's/^win\.([A-Za-z0-9_]+)\.dpi[0-9]+$/\1/p')
    grep -rqF --include=CMakeLists.txt -e "${name%%\**}" . ||
      grep -rqF --include=CMakeLists.txt -e "$stem\${" . ||
      { [ -n "$dpi_program" ] && grep -rqF --include=CMakeLists.txt -e 'win.${program}.dpi${dpi}' . &&
        grep -rqE --include=CMakeLists.txt -e "kiv_add_[a-z_]*test\($dpi_program " .; } ||
      grep -rqF --include=CMakeLists.txt -e "kiv_add_script_test(${name#win.script.} " . || { echo "missing ctest: $name"; missing=1; } ;;
  fuzz)
    if [ "$test" = "*" ]; then [ -s tests/fuzz/targets.txt ] || { echo "missing fuzz targets: $name"; missing=1; }
    else grep -qE "^$test[[:space:]]" tests/fuzz/targets.txt || { echo "missing fuzz target: $name"; missing=1; }; fi ;;
  */*)
    # A parameterised test: its TEST_P and the instantiation that names it.
    prefix=${suite%%/*}
    suite=${suite#*/}
    pattern="TEST_P\($suite, $test\)"
    [ "$test" = "*" ] && pattern="TEST_P\($suite,"
    grep -rqE "$pattern" tests && grep -rqE "INSTANTIATE_TEST_SUITE_P\($prefix, $suite," tests ||
      { echo "missing parameterised test: $name"; missing=1; } ;;
  *)
    if [ "$test" = "*" ]; then
      grep -rqE "TEST(_F)?\($suite," tests || { echo "missing suite: $name"; missing=1; }
    else
      grep -rqE "TEST(_F)?\($suite, $test\)" tests || { echo "missing test: $name"; missing=1; }
    fi ;;
  esac
done < <( {
  grep -oE '`([A-Za-z][A-Za-z0-9_]*/)?[A-Za-z][A-Za-z0-9_]*\.[A-Za-z0-9_*][A-Za-z0-9_*.]*`' docs/conformance.md
  # The hosting guide and the member reference cite their tests in square brackets.
  cat docs/hosting.md docs/reference.md | tr '\n' ' ' | grep -oE '\[`[^]]*\]' |
    grep -oE '`([A-Za-z][A-Za-z0-9_]*/)?[A-Za-z][A-Za-z0-9_]*\.[A-Za-z0-9_*][A-Za-z0-9_*.]*`'
} | tr -d '`' | grep -v '^Suite\.Test$' | sort -u)
[ $missing -eq 0 ] && echo "check-conformance: every cited test exists"
exit $missing
