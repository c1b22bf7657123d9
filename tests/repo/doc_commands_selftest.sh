#!/usr/bin/env bash
# The documents' command check must catch what it is for, in small repositories made here:
#   - a session whose command fails is reported, even when a later command prints what the document
#     shows from an earlier run's output (a failed compile and an old program);
#   - a command whose status the document shows with "$ echo $?" may exit with it;
#   - inline Windows commands (msiexec, a %SystemRoot% path) are counted on paper, a path is not;
#   - in the Windows tree's mode, an inline command naming a file of the package runs in the unpacked
#     package: it passes when its sums match, fails when they do not or when no package was built.
# Usage: doc_commands_selftest.sh CHECK_DOC_COMMANDS
set -u
check=$1
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT
fail() { echo "FAIL: $*"; exit 1; }
fence='```'

# A repository with README.md as given and an empty guide.
repo() {
  local dir=$top/$1
  mkdir -p "$dir/docs"
  printf '# Guide\n' > "$dir/docs/guide.md"
  printf '%s\n' "$2" > "$dir/README.md"
  echo "$dir"
}

# A failed command, then an old output printed as the document shows it.
dir=$(repo stale "$fence"'console
$ false
$ cat build/out.txt
fresh
'"$fence")
mkdir -p "$dir/build" && echo fresh > "$dir/build/out.txt"
out=$("$check" "$dir" native 2>&1) && fail "a failed command in a session passed: $out"
grep -q '^FAIL README.md:2: the command exited with status 1$' <<< "$out" || fail "the failed command was not named: $out"

# The status the document shows.
dir=$(repo status "$fence"'console
$ sh -c '"'"'echo shown; exit 2'"'"'
shown
$ echo $?
2
'"$fence")
out=$("$check" "$dir" native 2>&1) || fail "a status shown with echo \$? was reported: $out"
grep -q '^ok   README.md:1: ' <<< "$out" || fail "the session did not run: $out"

# Windows commands written inline, and a Windows path that is no command.
dir=$(repo paper 'Install with `msiexec /i x.msi /qn`; run `%SystemRoot%\System32\cscript.exe //nologo a.js`.
Files go to `C:\Program Files (x86)\x`.')
out=$("$check" "$dir" native 2>&1) || fail "Windows commands on paper failed: $out"
for expected in 'paper README.md:1: msiexec /i x.msi /qn' 'paper README.md:1: %SystemRoot%\System32\cscript.exe //nologo a.js' \
  ', 2 Windows commands on paper$'; do
  grep -qF -- "${expected%$}" <<< "$out" || fail "missing \"$expected\" in: $out"
done

# The package's command, in the Windows tree's mode.
dir=$(repo package 'Check the files: `sha256sum -c SHA256SUMS` in the unpacked folder.')
printf 'project(KivLorqControls VERSION 9.8.7.6 LANGUAGES C CXX)\n' > "$dir/CMakeLists.txt"
out=$("$check" "$dir" wine 2>&1) && fail "no package built, yet it passed: $out"
grep -q '^FAIL no package build/win/package/KivLorqControls-9.8.7.6-x64.zip' <<< "$out" || fail "the missing package was not named: $out"
stage=$top/stage
mkdir -p "$stage" "$dir/build/win/package"
echo one > "$stage/a.txt"
(cd "$stage" && sha256sum a.txt > SHA256SUMS && zip -q "$dir/build/win/package/KivLorqControls-9.8.7.6-x64.zip" a.txt SHA256SUMS)
out=$("$check" "$dir" wine 2>&1) || fail "the package's sums match, yet it failed: $out"
grep -q '^ok   README.md:1: sha256sum -c SHA256SUMS, in the unpacked KivLorqControls-9.8.7.6-x64.zip$' <<< "$out" ||
  fail "the package's command did not run: $out"
echo two > "$stage/a.txt"
(cd "$stage" && zip -q "$dir/build/win/package/KivLorqControls-9.8.7.6-x64.zip" a.txt)
out=$("$check" "$dir" wine 2>&1) && fail "a file that does not match its sum passed: $out"
grep -q '^FAIL README.md:1: sha256sum -c SHA256SUMS exited with status 1' <<< "$out" || fail "the failed sum was not named: $out"

echo "doc-commands self-test: ok"
