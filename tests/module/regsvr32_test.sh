#!/usr/bin/env bash
# regsvr32 at the command line: /u unregisters, /s registers; reg.exe sees the keys of all twelve
# classes and the type library appear and go. Ends with the module registered.
# Usage: regsvr32_test.sh WINE_ENV BUILD OCX
set -u
env=$1; build=$2; ocx=$3
fail=0
check() { if eval "$2"; then echo "ok   $1"; else echo "FAIL $1"; fail=1; fi; }
q() { "$env" run "$build" reg query "$1" > /dev/null 2>&1; }
# class id, ProgID, MiscStatus for each control; the pages' class ids.
controls=(
  "{134FFBAD-0ECF-4346-BA9D-1EDC507A8A56} KIVLORQCONTROLS.KivColorCtrl.1 135569"
  "{D15E93F0-B2C2-4728-8484-4E561229776F} KIVLORQCONTROLS.KivHatchCtrl.1 131473"
  "{A7D6D7BA-DF9F-4E65-84F6-1239BE58B84A} KIVLORQCONTROLS.KivLayerCtrl.1 131473"
  "{2EEDA6B2-2037-4824-8629-9EAA7758E9BF} KIVLORQCONTROLS.KivLinetypeCtrl.1 131473"
  "{DABAFA9E-2B6F-40B0-95BB-373AB4B2FC18} KIVLORQCONTROLS.KivLinetypeListCtrl.1 131473"
  "{FB47E4A7-11D0-4FFE-9EC1-EEF7C8047D13} KIVLORQCONTROLS.KivLineweightCtrl.1 135569"
)
pages="{13C03DB5-8843-4B08-BCA1-F4032586C767} {632E700B-7FB5-4682-B2F2-BF1D5111058D} {6DA7E9FD-46EE-4123-8CBB-9ADCACFB1ED4}
 {FC9C7841-BFED-489D-9DB9-49551B27B6EC} {6646D52E-EC7D-403B-874A-3AE343EE9A1C} {4ED48E07-66E0-493E-A53B-1B8D8C6B80A3}"

"$env" run "$build" regsvr32 /u /s "$ocx"
for c in "${controls[@]}"; do
  set -- $c
  check "unregistered: no $2" "! q 'HKCR\\$2'"
  check "unregistered: no key for $2" "! q 'HKCR\\CLSID\\$1'"
done
for p in $pages; do check "unregistered: no page $p" "! q 'HKCR\\CLSID\\$p'"; done
check "unregistered: no type library" "! q 'HKCR\\TypeLib\\{64000C4D-B3B0-460E-85BC-05C90B5ADC21}'"

"$env" run "$build" regsvr32 /s "$ocx"; rc=$?
check "regsvr32 /s exits 0" "[ $rc -eq 0 ]"
for c in "${controls[@]}"; do
  set -- $c
  check "registered: $2" "q 'HKCR\\$2\\CLSID'"
  check "registered: control key of $2" "q 'HKCR\\CLSID\\$1\\Control'"
  out=$("$env" run "$build" reg query "HKCR\\CLSID\\$1\\MiscStatus\\1" 2>&1)
  check "MiscStatus\\1 of $2 is $3" "echo \"\$out\" | grep -q $3"
done
for p in $pages; do check "registered: page $p" "q 'HKCR\\CLSID\\$p\\InprocServer32'"; done
check "registered: type library" "q 'HKCR\\TypeLib\\{64000C4D-B3B0-460E-85BC-05C90B5ADC21}\\1.0'"

"$env" run "$build" regsvr32 /u /s "$ocx"
"$env" run "$build" regsvr32 /u /s "$ocx"; rc=$?
check "a second /u fails (the library is gone)" "[ $rc -ne 0 ]"
"$env" run "$build" regsvr32 /s "$ocx"
[ $fail -eq 0 ] && echo "regsvr32: all passed"
exit $fail
