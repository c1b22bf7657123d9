#!/usr/bin/env bash
# Activation without registration: the host program that carries an application manifest, and the
# same program without it, each in a folder beside the package's module and its assembly manifest,
# run in the prefix where nothing of the module is registered (KIV_PREFIX=clean).
# Usage: sxs_test.sh WINE_ENV BUILD PACKAGE_DIR HOST_EXE BARE_EXE
set -u
env=$1; build=$2; package=$3; host=$4; bare=$5
export KIV_PREFIX=clean KIV_WINE_TIMEOUT=240
fail=0
for program in "$host" "$bare"; do
  folder=$build/sxs/$(basename "$program" .exe)
  rm -rf "$folder"
  mkdir -p "$folder"
  cp "$package/KivLorqControls8x64.ocx" "$package/KivLorqControls8x64.manifest" "$program" "$folder/"
  if [ "$program" = "$host" ]; then filter='*SideBySide*'; else filter='*WithoutManifest*'; fi
  "$env" run "$build" "$folder/$(basename "$program")" --gtest_filter="$filter" || fail=1
done
exit $fail
