#!/usr/bin/env bash
# Installs every system package the builds and tests need (Debian 12), idempotently:
# does nothing when all is present. Run as root (or with sudo available).
set -euo pipefail

packages=(
  # native build and unit tests
  g++ cmake ninja-build googletest libgtest-dev libgmock-dev
  # cross build of the Windows module and test programs
  mingw-w64 g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64
  # Windows runtime for the Windows tests
  wine64 wine xvfb x11-utils
  # pictures of the controls (optipng: the README's pictures, made by tools/demo.sh --pictures)
  libpng-dev optipng
  # kivdoctor's contact sheet (tools/kivdoctor/): its labels' font library and font
  libfreetype-dev fonts-dejavu-core
  # benchmarks (bench/)
  libbenchmark-dev
  # fuzzing (tests/fuzz/, tools/fuzz.sh): clang's libFuzzer with AddressSanitizer and UBSan
  clang libfuzzer-14-dev
  # a German locale, to prove number parsing does not depend on the process locale
  locales-all
  # the release (tools/release.sh): the installer (wixl, and msitools to read it back) and the zip
  wixl msitools zip unzip
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "install-deps: installing ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
