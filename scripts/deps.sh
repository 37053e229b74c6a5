#!/usr/bin/env bash
# Installs the Debian 12 packages the build, the tests, the fuzzers and the benchmarks need.
# Quick when everything is there already: it asks dpkg first and runs apt-get only if needed.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config git ccache
  qt6-base-dev qt6-base-dev-tools qt6-svg-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
  qt6-translations-l10n
  qt6-httpserver-dev qt6-websockets-dev
  libicu-dev libxml2-dev zlib1g-dev libtag1-dev libsystemd-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  clang libclang-rt-14-dev
  xvfb xauth dbus fonts-dejavu-core fonts-wqy-microhei
  libxcb1-dev
  ffmpeg mpv mpv-mpris
  lintian desktop-file-utils appstream python3
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
