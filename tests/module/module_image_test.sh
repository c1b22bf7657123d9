#!/usr/bin/env bash
# The release module as it ships: it imports only Windows system DLLs, is stripped (no symbol table,
# no debug sections), and its size is at most 1 MiB. Usage: module_image_test.sh OCX OBJDUMP
set -u
ocx=$1; objdump=$2
fail=0
check() { if eval "$2"; then echo "ok   $1"; else echo "FAIL $1"; fail=1; fi; }
system="ADVAPI32.dll comdlg32.dll GDI32.dll KERNEL32.dll msvcrt.dll ole32.dll OLEAUT32.dll USER32.dll comctl32.dll"
imports=$("$objdump" -p "$ocx" | sed -n 's/^[[:space:]]*DLL Name: //p')
check "imports found" "[ -n \"\$imports\" ]"
for dll in $imports; do
  known=0
  for s in $system; do [ "${dll,,}" = "${s,,}" ] && known=1; done
  check "imports $dll, a Windows system DLL" "[ $known -eq 1 ]"
done
headers=$("$objdump" -h "$ocx")
check "no debug sections" "! echo \"\$headers\" | grep -q '\.debug'"
check "no symbol table" "\"$objdump\" -t \"$ocx\" 2>&1 | grep -q 'no symbols'"
size=$(stat -c %s "$ocx")
check "size $size bytes is at most 1 MiB" "[ $size -le 1048576 ]"
[ $fail -eq 0 ] && echo "module image: all passed"
exit $fail
