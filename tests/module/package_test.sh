#!/usr/bin/env bash
# The release package as a host developer receives it: the zip holds exactly the package's files,
# SHA256SUMS matches them, each is the build's own (module, type library, manifest, header) or the
# repository's (hosting guide, conformance table), the manifest carries the version, and the
# installer is a per-machine 64-bit package that registers through its Registry and TypeLib tables,
# never by self-registration. Usage: package_test.sh PACKAGE_DIR NAME VERSION BUILD SOURCE
set -u
dir=$1; name=$2; version=$3; build=$4; source=$5
fail=0
check() { if eval "$2"; then echo "ok   $1"; else echo "FAIL $1"; fail=1; fi; }
zip=$dir/$name.zip
msi=$dir/$name.msi
check "the zip is named after the version $version" "[ -f '$zip' ] && [ '$name' = 'KivLorqControls-$version-x64' ]"
check "the installer is named after the version" "[ -f '$msi' ]"

expected="KivLorqControls8x64.manifest
KivLorqControls8x64.ocx
KivLorqControls8x64.tlb
SHA256SUMS
docs/conformance.md
docs/hosting.md
include/KivLorqControls.h"
listed=$(unzip -Z1 "$zip" | grep -v '/$' | LC_ALL=C sort)
check "the zip holds exactly the package's files" "[ \"\$listed\" = \"\$expected\" ]"
unpacked=$(mktemp -d)
trap 'rm -rf "$unpacked"' EXIT
unzip -q "$zip" -d "$unpacked"
check "SHA256SUMS matches every file" "(cd '$unpacked' && sha256sum --quiet -c SHA256SUMS)"
check "SHA256SUMS names every other file" "[ \$(wc -l < '$unpacked/SHA256SUMS') -eq 6 ]"
same() { cmp -s "$unpacked/$1" "$2"; }
check "the module is the build's" "same KivLorqControls8x64.ocx '$build/module/KivLorqControls8x64.ocx'"
check "the type library is the build's" "same KivLorqControls8x64.tlb '$build/module/KivLorqControls.tlb'"
check "the manifest is the build's" "same KivLorqControls8x64.manifest '$build/module/KivLorqControls8x64.manifest'"
check "the header is the build's" "same include/KivLorqControls.h '$build/include/KivLorqControls.h'"
check "the hosting guide is the repository's" "same docs/hosting.md '$source/docs/hosting.md'"
check "the conformance table is the repository's" "same docs/conformance.md '$source/docs/conformance.md'"
check "the manifest's identity carries the version" \
  "grep -q 'name=\"KivLorqControls8x64\" version=\"$version\" processorArchitecture=\"amd64\"' '$unpacked/KivLorqControls8x64.manifest'"

table() { msiinfo export "$msi" "$1" | tr -d '\r'; }
check "the installer's product version is $version" "table Property | grep -qx 'ProductVersion	$version'"
check "the installer installs for the whole machine" "table Property | grep -qx 'ALLUSERS	1'"
check "the installer is a 64-bit package" "msiinfo suminfo '$msi' | grep -qx 'Template: x64;1033'"
components=$(table Component | tail -n +4)
check "every component is 64-bit" \
  "[ -n \"\$components\" ] && echo \"\$components\" | awk -F'\t' '{ if (int(\$4 / 256) % 2 == 0) bad = 1 } END { exit bad }'"
check "it installs into Program Files\\KivLorqControls" "table Directory | grep -qx 'INSTALLDIR	ProgramFiles64Folder	KivLorqControls'"
check "it does not self-register" "! msiinfo tables '$msi' | grep -qx SelfReg"
check "its Registry table names the installed module for the twelve classes" \
  "[ \$(table Registry | grep -c 'InprocServer32		\[#KivModuleFile\]	KivModule') -eq 12 ]"
check "its TypeLib table registers the library 1.0 from the module" \
  "table TypeLib | grep -q '^{64000C4D-B3B0-460E-85BC-05C90B5ADC21}	1033	KivModule	256	'"
for action in WriteRegistryValues RemoveRegistryValues RegisterTypeLibraries UnregisterTypeLibraries; do
  check "its sequence runs $action" "table InstallExecuteSequence | grep -q '^$action	'"
done
[ $fail -eq 0 ] && echo "package: all passed"
exit $fail
