#!/usr/bin/env bash
# The demo as the main job runs it, headless: it must create, connect and fill all six controls (it
# exits 1 and says what failed otherwise, e.g. linetypes that were not loaded), then save the dialog's
# screenshot at the dialog's size and one picture per control. With a DPI, at that screen scale
# (the dialog's layout and the pictures scale with it).
#   demo_test.sh WINE_ENV BUILD_DIR KIVDEMO_EXE [DPI]
set -euo pipefail
env=$1 build=$2 demo=$3 dpi=${4:-96}
out=$build/artifacts/demo-$dpi
rm -rf "$out"
mkdir -p "$out/pictures"
if [ "$dpi" = 96 ]; then
  "$env" run "$build" "$demo" --screenshot "Z:$out/demo-all-controls.png" --pictures "Z:$out/pictures"
else
  "$env" dpi-run "$build" "$dpi" "$demo" --screenshot "Z:$out/demo-all-controls.png" --pictures "Z:$out/pictures"
fi
# A length laid out at 96 dpi at this scale, rounded as MulDiv rounds.
scaled() { echo $(( ($1 * dpi + 48) / 96 )); }

# A PNG's width and height, from its header.
size() { od -An -tu1 -j16 -N8 "$1" | awk '{ printf "%dx%d\n", $1*16777216+$2*65536+$3*256+$4, $5*16777216+$6*65536+$7*256+$8 }'; }
failed=0
check() {
  local file=$1 expected=$2
  if [ ! -s "$file" ]; then echo "FAIL missing: $file"; failed=1; return; fi
  local got
  got=$(size "$file")
  if [ -n "$expected" ] && [ "$got" != "$expected" ]; then echo "FAIL $file is $got, expected $expected"; failed=1; fi
  echo "ok $(basename "$file") $got"
}
check "$out/demo-all-controls.png" "$(scaled 704)x$(scaled 372)"
for picture in colour linetype lineweight hatch linetype-list layer; do
  check "$out/pictures/$picture.png" ""
done
# The controls without a list are pictured at their size in the dialog.
check "$out/pictures/hatch.png" "$(scaled 208)x$(scaled 130)"
check "$out/pictures/layer.png" "$(scaled 208)x$(scaled 130)"
# The linetype list is as high as the list box it moves to the scaled 140 pixels (280 at 192 dpi):
# the hosting guide's "as the demo does".
check "$out/pictures/linetype-list.png" "$(scaled 232)x$(scaled 140)"
exit $failed
