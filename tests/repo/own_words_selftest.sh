#!/usr/bin/env bash
# The wording check must catch what it is for: a file that names the contract's document or one of
# its numbered sections is reported with its file and line, and a clean tree passes. The mentions
# are assembled at run time so that this script does not carry them.
set -u
check=$1
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
fail() { echo "FAIL: $*"; exit 1; }

printf 'clean line\n' > "$dir/clean.txt"
"$check" "$dir" > /dev/null 2>&1 || fail "a clean folder was reported"

word=Part
printf 'one\n// see %s %s\n' "$word" "3.2" > "$dir/section.cpp"
printf '%ss %s\xe2\x80\x93%s\n' "$word" "2.1" "2.3" > "$dir/range.md"
printf 'x\ny\nread ../shared/%s.%s\n' spec md > "$dir/document.sh"
out=$("$check" "$dir" 2>&1) && fail "planted mentions were not reported"
for expected in "section.cpp:2:" "range.md:1:" "document.sh:3:"; do
  echo "$out" | grep -q "^$expected" || fail "missing $expected in: $out"
done
echo "own-words self-test: ok"
