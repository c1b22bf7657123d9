#!/usr/bin/env bash
# kivdoctor's command line: the documented exit status and messages for good files, bad files and
# bad usage; JSON that parses; a sheet that is a PNG.
#   cli_test.sh KIVDOCTOR SHARED_DATA
set -uo pipefail
doctor=$1 data=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
# expect STATUS TEXT ARGS...: runs the doctor, checks its exit status and that its output (both
# streams) holds TEXT.
expect() {
  local status=$1 text=$2
  shift 2
  "$doctor" "$@" > "$work/out" 2>&1
  local got=$?
  if [ "$got" -ne "$status" ] || ! grep -qF -- "$text" "$work/out"; then
    echo "FAIL: kivdoctor $* -> status $got (expected $status), output:"
    sed 's/^/  /' "$work/out" | head -8
    failed=1
  fi
}

expect 0 "50 load as themselves, 0 do not" lin "$data/lin/qcad__qcadiso.lin"
expect 1 "is not written in capitals" lin "$data/lin/CadZinho__default.lin"
expect 0 "loads as \"Border\"" lin "$data/lin/qcad__qcadiso.lin" BORDER
expect 1 "The file has no header \"*NOSUCH\"." lin "$data/lin/qcad__qcadiso.lin" NOSUCH
expect 1 "very first byte of the file" pat "$data/pat/qcad__imperial_ansi31.pat"
expect 0 "232 of 232 families load" pat "$data/pat/ACadSharp__ALL_4patterns.pat" HVEGE100
expect 0 "usage: kivdoctor lin FILE" --help

expect 2 "kivdoctor: a command is needed: lin or pat"
expect 2 "kivdoctor: unknown command 'draw' (lin or pat)" draw x.lin
expect 2 "kivdoctor: a .lin file is needed" lin
expect 2 "kivdoctor: unknown option '--colour'" lin "$data/lin/qcad__qcadiso.lin" --colour
expect 2 "kivdoctor: --zoom needs a number above 0 and at most 1000" pat "$data/pat/qcad__imperial_ansi31.pat" --zoom 0
expect 2 "kivdoctor: --zoom needs a number above 0 and at most 1000" pat "$data/pat/qcad__imperial_ansi31.pat" --zoom abc
expect 2 "kivdoctor: --sheet needs a file name" lin "$data/lin/qcad__qcadiso.lin" --sheet
expect 2 "kivdoctor: --zoom, --metric and --inch are for pat" lin "$data/lin/qcad__qcadiso.lin" --inch
expect 2 "kivdoctor: $work/missing.lin: no such file" lin "$work/missing.lin"
: > "$work/empty.lin"
expect 2 "the file is empty" lin "$work/empty.lin"
printf '*A,b\n\0\1\2' > "$work/binary.lin"
expect 2 "holds binary data" lin "$work/binary.lin"
truncate -s 17M "$work/huge.pat"
expect 2 "is larger than a linetype or pattern library can be (16 MB)" pat "$work/huge.pat"
expect 2 "not a regular file" pat "$work"

# JSON that parses, with the findings.
"$doctor" lin "$data/lin/CadZinho__default.lin" --json > "$work/out.json"
python3 -c 'import json,sys; d=json.load(open(sys.argv[1])); assert d["kind"]=="lin" and len(d["entries"])==8 and not d["entries"][0]["loads"], d' \
  "$work/out.json" || { echo "FAIL: --json"; failed=1; }
"$doctor" pat "$data/pat/ACadSharp__ALL_4patterns.pat" --json > "$work/pat.json"
python3 -c 'import json,sys; d=json.load(open(sys.argv[1])); assert [e["familiesLoaded"] for e in d["entries"]]==[0,69,55,232], d' \
  "$work/pat.json" || { echo "FAIL: pat --json"; failed=1; }

# A sheet is a PNG of the sheet's size.
expect 0 "sheet: $work/sheet.png" pat "$data/pat/ACadSharp__ALL_4patterns.pat" HVEGE100 --sheet "$work/sheet.png" --zoom 0.5
[ "$(head -c 8 "$work/sheet.png" | od -An -tx1 | tr -d ' \n')" = "89504e470d0a1a0a" ] || { echo "FAIL: the sheet is not a PNG"; failed=1; }

[ $failed -eq 0 ] && echo "kivdoctor command line: every case as documented"
exit $failed
