#!/usr/bin/env bash
# The main job: builds the module, registers it in the project's private Wine prefix and opens a
# demo container window hosting the colour control. With a display (DISPLAY set, not CI) the window
# stays until closed; headless, it runs under a private Xvfb. Either way a screenshot of the control,
# dropped, is saved and its path printed.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
tools/install-deps.sh
build=build/win
mkdir -p build
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake > build/demo.configure.log
ninja -C "$build" KivLorqControls8x64 kivdemo > build/demo.build.log
ocx=$(pwd)/$build/module/KivLorqControls8x64.ocx
demo=$(pwd)/$build/tools/kivdemo.exe
shot=$(pwd)/$build/artifacts/demo-colour-control.png
mkdir -p "$(dirname "$shot")"

if [ -n "${DISPLAY:-}" ] && [ -z "${CI:-}" ] && xdpyinfo > /dev/null 2>&1; then
  # A real display: the prefix is still the project's own, the windows appear on that display.
  tools/wine-env.sh prefix "$build"
  WINEPREFIX=$(pwd)/$build/wine/prefix WINEDEBUG=-all /usr/lib/wine/wine64 regsvr32 /s "Z:$ocx"
  WINEPREFIX=$(pwd)/$build/wine/prefix WINEDEBUG=-all /usr/lib/wine/wine64 "$demo" --screenshot "Z:$shot"
  echo "screenshot: $shot"
  echo "opening the demo window (close it to finish)"
  WINEPREFIX=$(pwd)/$build/wine/prefix WINEDEBUG=-all /usr/lib/wine/wine64 "$demo"
else
  tools/wine-env.sh setup "$build" > /dev/null
  trap 'tools/wine-env.sh teardown "$build"' EXIT
  tools/wine-env.sh run "$build" regsvr32 /s "Z:$ocx"
  tools/wine-env.sh run "$build" "$demo" --screenshot "Z:$shot"
  echo "screenshot: $shot"
fi
