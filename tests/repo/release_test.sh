#!/usr/bin/env bash
# tools/release.sh refuses, in a clone of this repository, a tree with uncommitted changes and a
# version it cannot read or that cannot be an installer's: a message saying so, a failing exit
# status, and nothing in dist/. (Each refusal comes before anything is installed or built; a release
# that would go on is stopped after a minute, with every process it started.)
# Usage: release_test.sh REPOSITORY
set -u
repository=$1
fail=0
check() { if eval "$2"; then echo "ok   $1"; else echo "FAIL $1"; fail=1; fi; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
git clone -q "$repository" "$work/clone" || exit 1
cd "$work/clone" || exit 1
commit() { git -c user.name=release-test -c user.email=release-test@example.invalid commit -q -am "$1"; }
release() {
  setsid tools/release.sh > "$work/out" 2>&1 &
  local pid=$! waited=0
  while kill -0 "$pid" 2> /dev/null && [ $waited -lt 600 ]; do sleep 0.1; waited=$((waited + 1)); done
  if kill -0 "$pid" 2> /dev/null; then kill -- -"$pid" 2> /dev/null; fi
  wait "$pid"; status=$?
  out=$(cat "$work/out")
}
nothing_in_dist() { [ ! -e dist ] || [ -z "$(ls -A dist)" ]; }

echo "// a change not committed" >> module/KivModule.cpp
release
check "a tree with uncommitted changes is refused" "[ $status -eq 1 ]"
check "the message says so and names the file" "echo \"\$out\" | grep -q 'changes that are not committed' && echo \"\$out\" | grep -q 'module/KivModule.cpp'"
check "nothing is written to dist/" nothing_in_dist
git checkout -q module/KivModule.cpp

touch untracked-file
release
check "an untracked file counts as a change" "[ $status -eq 1 ] && echo \"\$out\" | grep -q 'untracked-file'"
rm untracked-file

sed -i -E 's/^project\(KivLorqControls VERSION [^ )]*/project(KivLorqControls VERSION 1.0/' CMakeLists.txt
commit "a version of two numbers"
release
check "a version of two numbers is refused" "[ $status -eq 1 ] && echo \"\$out\" | grep -q 'cannot read the version' && echo \"\$out\" | grep -q '\"1.0\"'"
check "nothing is written to dist/" nothing_in_dist

sed -i -E 's/^project\(KivLorqControls VERSION [^ )]*/project(KivLorqControls/' CMakeLists.txt
commit "no version"
release
check "a project without a version is refused" "[ $status -eq 1 ] && echo \"\$out\" | grep -q 'cannot read the version'"

sed -i -E 's/^project\(KivLorqControls /project(KivLorqControls VERSION 256.0.0.1 /' CMakeLists.txt
commit "a major version beyond an installer's"
release
check "a version no installer can carry is refused" "[ $status -eq 1 ] && echo \"\$out\" | grep -q 'cannot be an installer'"
check "nothing is written to dist/" nothing_in_dist
[ $fail -eq 0 ] && echo "release refusals: all passed"
exit $fail
