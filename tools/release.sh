#!/usr/bin/env bash
# The release: from a committed tree, installs what is missing, builds the release module (stripped)
# and its package in a tree of its own (build/release), and writes into dist/ the zip and the
# installer named after the version set in CMakeLists.txt (project(KivLorqControls VERSION a.b.c.d)).
# Its last two lines are their full paths. Run as root on a fresh Debian 12 machine.
# A tree with uncommitted changes, or a version that cannot be read (or cannot be an installer's),
# stops it with a message before anything is built or written; dist/ never holds a half-made file.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
refuse() { echo "release: $*" >&2; exit 1; }

git rev-parse --is-inside-work-tree > /dev/null 2>&1 || refuse "$top is not a git checkout: a release is made from a committed tree"
changes=$(git status --porcelain)
[ -z "$changes" ] || refuse "the working tree has changes that are not committed; commit or stash them first:
$changes"
version=$(sed -nE 's/^project\(KivLorqControls VERSION ([^ )]*).*/\1/p' CMakeLists.txt | head -1)
[[ "$version" =~ ^([0-9]+)\.([0-9]+)\.([0-9]+)\.([0-9]+)$ ]] ||
  refuse "cannot read the version from CMakeLists.txt: expected project(KivLorqControls VERSION a.b.c.d ...), found \"$version\""
# An installer's version: major and minor at most 255, the third number at most 65535 (the fourth,
# which the installer does not compare, too, as in the module's VERSIONINFO).
if [ "${BASH_REMATCH[1]}" -gt 255 ] || [ "${BASH_REMATCH[2]}" -gt 255 ] || [ "${BASH_REMATCH[3]}" -gt 65535 ] ||
   [ "${BASH_REMATCH[4]}" -gt 65535 ]; then
  refuse "the version $version cannot be an installer's: the first two numbers must be at most 255, the last two at most 65535"
fi
name=KivLorqControls-$version-x64

tools/install-deps.sh
build=build/release
mkdir -p build
echo "release: building $name in $build" >&2
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake \
  > build/release.configure.log 2>&1 || { cat build/release.configure.log >&2; refuse "configuring failed"; }
ninja -C "$build" KivPackage > build/release.build.log 2>&1 || { tail -40 build/release.build.log >&2; refuse "building failed"; }
for f in "$build/package/$name.zip" "$build/package/$name.msi"; do
  [ -s "$f" ] || refuse "the build did not write $f"
done

# Both files into dist/ at once: copied beside it under a temporary name, then renamed.
mkdir -p dist
staging=$(mktemp -d dist/.release.XXXXXX)
trap 'rm -rf "$staging"' EXIT
cp "$build/package/$name.zip" "$build/package/$name.msi" "$staging/"
mv -f "$staging/$name.zip" "$staging/$name.msi" dist/
echo "$top/dist/$name.zip"
echo "$top/dist/$name.msi"
