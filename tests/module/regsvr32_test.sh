#!/usr/bin/env bash
# regsvr32 at the command line: /u unregisters, /s registers; reg.exe sees the keys
# appear and go. Ends with the module registered. Usage: regsvr32_test.sh WINE_ENV BUILD OCX
set -u
env=$1; build=$2; ocx=$3
fail=0
check() { if eval "$2"; then echo "ok   $1"; else echo "FAIL $1"; fail=1; fi; }
q() { "$env" run "$build" reg query "$1" > /dev/null 2>&1; }
"$env" run "$build" regsvr32 /u /s "$ocx"
check "unregistered: no ProgID" "! q 'HKCR\\KIVLORQCONTROLS.KivColorCtrl.1'"
check "unregistered: no CLSID key" "! q 'HKCR\\CLSID\\{134FFBAD-0ECF-4346-BA9D-1EDC507A8A56}'"
check "unregistered: no type library" "! q 'HKCR\\TypeLib\\{64000C4D-B3B0-460E-85BC-05C90B5ADC21}'"
"$env" run "$build" regsvr32 /s "$ocx"; rc=$?
check "regsvr32 /s exits 0" "[ $rc -eq 0 ]"
check "registered: ProgID" "q 'HKCR\\KIVLORQCONTROLS.KivColorCtrl.1\\CLSID'"
check "registered: control key" "q 'HKCR\\CLSID\\{134FFBAD-0ECF-4346-BA9D-1EDC507A8A56}\\Control'"
check "registered: page" "q 'HKCR\\CLSID\\{13C03DB5-8843-4B08-BCA1-F4032586C767}\\InprocServer32'"
check "registered: type library" "q 'HKCR\\TypeLib\\{64000C4D-B3B0-460E-85BC-05C90B5ADC21}\\1.0'"
out=$("$env" run "$build" reg query 'HKCR\CLSID\{134FFBAD-0ECF-4346-BA9D-1EDC507A8A56}\MiscStatus\1' 2>&1)
check "MiscStatus\\1 is 135569" "echo \"\$out\" | grep -q 135569"
"$env" run "$build" regsvr32 /u /s "$ocx"
"$env" run "$build" regsvr32 /u /s "$ocx"; rc=$?
check "a second /u fails (the library is gone)" "[ $rc -ne 0 ]"
"$env" run "$build" regsvr32 /s "$ocx"
[ $fail -eq 0 ] && echo "regsvr32: all passed"
exit $fail
