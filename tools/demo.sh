#!/usr/bin/env bash
# The main job: builds the module, registers it in the project's private Wine prefix and opens the
# demo dialog hosting all six controls, filled from the real .lin and .pat files of the shared data.
# With a display (DISPLAY set, not CI) the dialog stays until closed; headless, it runs under a
# private Xvfb. Either way one screenshot of the dialog, the colour and linetype lists dropped open,
# is saved and its path printed.
#   tools/demo.sh [--pictures FOLDER]   --pictures: also save one PNG per control and the screenshot
#                                       there, compressed (the README's pictures, docs/images), and
#                                       headless the screenshot at 144 and 192 dpi too
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
pictures=() folder=
if [ "${1:-}" = "--pictures" ] && [ -n "${2:-}" ]; then
  mkdir -p "$2"
  folder=$(cd "$2" && pwd)
  pictures=(--pictures "Z:$folder")
fi
tools/install-deps.sh
build=build/win
mkdir -p build
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake > build/demo.configure.log
ninja -C "$build" KivLorqControls8x64 kivdemo > build/demo.build.log
ocx=$(pwd)/$build/module/KivLorqControls8x64.ocx
demo=$(pwd)/$build/tools/kivdemo.exe
shot=$(pwd)/$build/artifacts/demo-all-controls.png
mkdir -p "$(dirname "$shot")"

if [ -n "${DISPLAY:-}" ] && [ -z "${CI:-}" ] && xdpyinfo > /dev/null 2>&1; then
  # A real display: the prefix is still the project's own, the windows appear on that display.
  tools/wine-env.sh prefix "$build"
  WINEPREFIX=$(pwd)/$build/wine/prefix WINEDEBUG=-all /usr/lib/wine/wine64 regsvr32 /s "Z:$ocx"
  WINEPREFIX=$(pwd)/$build/wine/prefix WINEDEBUG=-all /usr/lib/wine/wine64 "$demo" --screenshot "Z:$shot" "${pictures[@]}"
  echo "screenshot: $shot"
  echo "opening the demo window (close it to finish)"
  WINEPREFIX=$(pwd)/$build/wine/prefix WINEDEBUG=-all /usr/lib/wine/wine64 "$demo"
else
  tools/wine-env.sh setup "$build" > /dev/null
  trap 'tools/wine-env.sh teardown "$build"' EXIT
  tools/wine-env.sh run "$build" regsvr32 /s "Z:$ocx"
  tools/wine-env.sh run "$build" "$demo" --screenshot "Z:$shot" "${pictures[@]}"
  echo "screenshot: $shot"
  if [ -n "$folder" ]; then
    # The same dialog at the two higher screen scales, one screenshot each.
    for dpi in 144 192; do
      tools/wine-env.sh dpi-run "$build" "$dpi" "$demo" --screenshot "Z:$folder/demo-all-controls-$dpi.png"
    done
  fi
fi
if [ -n "$folder" ]; then
  cp "$shot" "$folder/"
  optipng -quiet -o2 "$folder"/*.png
  echo "pictures: $folder"
fi
