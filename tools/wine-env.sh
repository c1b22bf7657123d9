#!/usr/bin/env bash
# The private Wine environment of one cross build tree: a WINEPREFIX and an Xvfb display inside the
# build tree, never the user's own.
#   wine-env.sh setup BUILD      start Xvfb and a persistent wineserver; create the prefix once
#   wine-env.sh prefix BUILD     create the prefix once (no display)
#   wine-env.sh tool BUILD EXE [ARGS...]   a build step under Wine
#   wine-env.sh teardown BUILD   stop both (the prefix stays for the next run)
#   wine-env.sh run BUILD EXE [ARGS...]   run a Windows program there, with a time limit
#   wine-env.sh dpi-run BUILD N EXE [ARGS...]   run a program at N dots per inch, then restore 96
# KIV_PREFIX=NAME selects another prefix of the same tree (made the same way, sharing the display):
# "clean" is one where the module is never registered by the tests that rely on registration.
set -u
cmd=$1; build=$(cd "$2" && pwd); shift 2
state=$build/wine
export WINEPREFIX=$state/${KIV_PREFIX:-prefix}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
export WINEARCH=win64
WINE=/usr/lib/wine/wine64
[ -x "$WINE" ] || WINE=$(command -v wine64 || command -v wine)
WINESERVER=/usr/lib/wine/wineserver64
[ -x "$WINESERVER" ] || WINESERVER=$(command -v wineserver)

use_display() {
  if [ -f "$state/display" ]; then export DISPLAY=":$(cat "$state/display")"; fi
}

case "$cmd" in
setup)
  mkdir -p "$state"
  if ! { [ -f "$state/xvfb.pid" ] && kill -0 "$(cat "$state/xvfb.pid")" 2>/dev/null; }; then
    exec 3> "$state/display.tmp"
    Xvfb -displayfd 3 -screen 0 1920x1200x24 -nolisten tcp > "$state/xvfb.log" 2>&1 &
    echo $! > "$state/xvfb.pid"
    exec 3>&-
    for _ in $(seq 100); do [ -s "$state/display.tmp" ] && break; sleep 0.1; done
    mv "$state/display.tmp" "$state/display"
  fi
  use_display
  "$0" prefix "$build" || exit 1
  "$WINESERVER" -p > /dev/null 2>&1 < /dev/null || true
  echo "wine-env: ready (DISPLAY=$DISPLAY, WINEPREFIX=$WINEPREFIX)"
  ;;
prefix)
  mkdir -p "$state"
  # The marker names the settings below: a prefix made with older settings is brought up to date.
  if [ ! -f "$WINEPREFIX/.kiv-ready-2" ]; then
    created=
    if [ ! -f "$WINEPREFIX/.kiv-ready" ]; then
      created=1
      echo "wine-env: creating the private prefix (first time only)"
      timeout 300 "$WINE" wineboot -i > "$state/wineboot.log" 2>&1 < /dev/null || { echo "wineboot failed"; cat "$state/wineboot.log"; exit 1; }
      "$WINESERVER" -w
    fi
    timeout 60 "$WINE" reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f > /dev/null 2>&1
    timeout 60 "$WINE" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d 96 /f > /dev/null 2>&1
    # Top-level windows not handed to a window manager: there is none on the private display, and
    # Wine would wait two seconds for one each time a window is hidden or destroyed.
    # The demo's window stays managed, so that on a real display it can be moved and closed.
    timeout 60 "$WINE" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d N /f > /dev/null 2>&1
    timeout 60 "$WINE" reg add 'HKCU\Software\Wine\AppDefaults\kivdemo.exe\X11 Driver' /v Managed /t REG_SZ /d Y /f > /dev/null 2>&1
    # Saved to the prefix when the server ends (a persistent one of `setup` already holds them).
    [ -n "$created" ] && "$WINESERVER" -w
    touch "$WINEPREFIX/.kiv-ready" "$WINEPREFIX/.kiv-ready-2"
  fi
  ;;
teardown)
  for prefix in "$state"/*/; do
    [ -f "$prefix/system.reg" ] && WINEPREFIX=${prefix%/} "$WINESERVER" -k 2>/dev/null
  done
  if [ -f "$state/xvfb.pid" ]; then kill "$(cat "$state/xvfb.pid")" 2>/dev/null || true; rm -f "$state/xvfb.pid"; fi
  ;;
tool)
  # A build step under Wine (no display needed): creates the prefix first when it is missing.
  "$0" prefix "$build" || exit 1
  exe=$1; shift
  timeout -k 5 120 "$WINE" "$exe" "$@" < /dev/null
  exit $?
  ;;
run)
  use_display
  exe=$1; shift
  # A crash, hang or forgotten dialog ends in this time limit, never in a blocked run. Output goes
  # through a file: Wine's helper processes (services, explorer) inherit the program's descriptors
  # and outlive it, and must not hold ctest's pipe open.
  log=$(mktemp "$state/run.XXXXXX")
  timeout -k 5 "${KIV_WINE_TIMEOUT:-90}" "$WINE" "$exe" "$@" > "$log" 2>&1 < /dev/null
  rc=$?
  cat "$log"; rm -f "$log"
  if [ $rc -eq 124 ]; then
    echo "wine-env: $exe timed out"
    # The Windows process can outlive its killed loader (a modal loop stays in the server): end
    # every process of the prefix, so that none of it lingers into the next program's run.
    "$WINESERVER" -k 2>/dev/null || true
  fi
  exit $rc
  ;;
dpi-run)
  # Runs one program with the prefix set to another dpi (LogPixels), then restores 96. Tests that
  # use it must run alone (ctest RUN_SERIAL): every Wine process started meanwhile sees that dpi.
  use_display
  dpi=$1; shift
  set_dpi() { timeout 60 "$WINE" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f > /dev/null 2>&1 < /dev/null; }
  set_dpi "$dpi"
  KIV_EXPECT_DPI=$dpi "$0" run "$build" "$@"
  rc=$?
  set_dpi 96
  exit $rc
  ;;
*) echo "usage: wine-env.sh setup|teardown|run|dpi-run BUILD ..." >&2; exit 2 ;;
esac
