#!/usr/bin/env bash
# The product speaks in its own words: no tracked file names the working contract's document or
# refers to its numbered sections. Prints FILE:LINE: TEXT for every hit and exits 1 when there is
# one, 0 when the tree is clean.
#   check-own-words.sh [ROOT]   ROOT defaults to the repository; a folder that is not a git
#                               checkout is searched whole (the self-test plants a file in one).
set -uo pipefail
root=${1:-$(cd "$(dirname "$0")/.." && pwd)}
cd "$root" || exit 2

# The patterns are spelled with classes so that this script does not match itself.
document='spec[.]md'
section='Parts?[[:space:]]+[0-9]+[.][0-9]+'
pattern="($document|$section)"

if git -C "$root" rev-parse --is-inside-work-tree > /dev/null 2>&1; then
  # Tracked files (and files added but not yet committed), .git itself excluded by git.
  hits=$(git ls-files -z --cached --others --exclude-standard | xargs -0 -r grep -nIE "$pattern" -- 2>/dev/null)
else
  hits=$(grep -rnIE "$pattern" --exclude-dir=.git . 2>/dev/null | sed 's|^\./||')
fi

if [ -n "$hits" ]; then
  echo "$hits"
  echo "check-own-words: $(echo "$hits" | wc -l) line(s) name the contract's document or its sections" >&2
  exit 1
fi
echo "check-own-words: clean"
