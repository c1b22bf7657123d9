#!/usr/bin/env bash
# Packs a release from a built Windows tree: the package folder (the module, its type library as a
# file, its assembly manifest, the C/C++ header, the hosting guide and the conformance table, and
# SHA256SUMS of them), its zip, and the installer (wixl, then the registration tables mktypelib wrote,
# imported with msibuild). Writes the folder OUT/NAME, OUT/NAME.zip and OUT/NAME.msi; nothing
# half-made: each is made in a temporary folder beside them and moved there when whole.
# Usage: package.sh OUT NAME VERSION OCX TLB MANIFEST HEADER REGISTRY_IDT TYPELIB_IDT
set -euo pipefail
[ $# -eq 9 ] || { echo "usage: package.sh OUT NAME VERSION OCX TLB MANIFEST HEADER REGISTRY_IDT TYPELIB_IDT" >&2; exit 2; }
out=$1; name=$2; version=$3; ocx=$4; tlb=$5; manifest=$6; header=$7; registry=$8; typelib=$9
top=$(cd "$(dirname "$0")/.." && pwd)
module=$(basename "$ocx" .ocx)

mkdir -p "$out"
work=$(mktemp -d "$out/.package.XXXXXX")
trap 'rm -rf "$work"' EXIT
stage=$work/$name
mkdir -p "$stage/include" "$stage/docs"
cp "$ocx" "$stage/$module.ocx"
cp "$tlb" "$stage/$module.tlb"
cp "$manifest" "$stage/$module.manifest"
cp "$header" "$stage/include/"
cp "$top/docs/hosting.md" "$top/docs/conformance.md" "$stage/docs/"
(cd "$stage" && find . -type f ! -name SHA256SUMS | sed 's|^\./||' | LC_ALL=C sort | xargs sha256sum > SHA256SUMS)

(cd "$stage" && zip -q -X -r "$work/$name.zip" .)

# The installer: its files from the package folder, then its registration as installer data and the
# standard actions that write and remove it (wixl sequences only the actions its own elements need).
# (wixl takes sources relative to the .wxs file, never absolute.)
cp "$top/tools/installer/KivLorqControls.wxs" "$work/"
wixl -a x64 -D "Version=$version" -D "PackageDir=$name" -o "$work/$name.msi" "$work/KivLorqControls.wxs"
msibuild "$work/$name.msi" -i "$registry" -i "$typelib"
sequence=$(msiinfo export "$work/$name.msi" InstallExecuteSequence)
for action in UnregisterTypeLibraries:2300 RemoveRegistryValues:2600 WriteRegistryValues:5000 RegisterTypeLibraries:5500; do
  if ! echo "$sequence" | grep -q "^${action%%:*}[[:space:]]"; then
    msibuild "$work/$name.msi" -q "INSERT INTO \`InstallExecuteSequence\` (\`Action\`, \`Sequence\`) VALUES ('${action%%:*}', ${action##*:})"
  fi
done

rm -rf "${out:?}/$name"
mv "$stage" "$out/$name"
mv "$work/$name.zip" "$out/$name.zip"
mv "$work/$name.msi" "$out/$name.msi"
