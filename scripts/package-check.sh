#!/usr/bin/env bash
# Proves the Debian package of a built tree: makes it with CPack, lints it, validates the desktop
# entry and the AppStream metadata, installs it with apt-get, runs the installed programs, checks
# that the application finds its plug-in and its translation, then removes it again.
# Usage: scripts/package-check.sh [BUILD_DIR]   (default build/; runs as root or with sudo).
# apt-get waits up to 5 minutes for a dpkg lock another apt-get holds.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
started=$SECONDS

echo "-- the package (cpack -G DEB in $build)"
# A no-op after the test suite's build; it makes sure every installed file is there.
cmake --build "$build" >/dev/null
rm -f "$build"/versewick_*.deb
(cd "$build" && cpack -G DEB >/dev/null)
debs=("$build"/versewick_*.deb)
deb=$(realpath "${debs[0]}")
echo "$deb"

echo "-- lintian"
# Errors fail the step; warnings are shown.
status=0
report=$(lintian --fail-on error --tag-display-limit 0 "$deb" 2>&1) || status=$?
grep -v 'running with root privileges' <<<"$report" || true
[ "$status" -eq 0 ] || { echo "lintian reports errors"; exit 1; }

echo "-- desktop entry and AppStream metadata"
desktop-file-validate share/applications/com.morvane.Versewick.desktop
appstreamcli validate --no-net share/metainfo/com.morvane.Versewick.metainfo.xml

echo "-- install"
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq -o DPkg::Lock::Timeout=300 "$deb" >/dev/null
# Whatever happens below, the package does not stay on the machine.
trap 'DEBIAN_FRONTEND=noninteractive $sudo apt-get remove -y -qq -o DPkg::Lock::Timeout=300 versewick >/dev/null 2>&1 || true' EXIT

echo "-- the installed programs"
/usr/bin/versewick-cli --help | head -n 1
QT_QPA_PLATFORM=offscreen /usr/bin/versewick --version
# A temporary home: no plug-in of the user's can stand in for the package's own.
home=$(mktemp -d)
HOME=$home XDG_CONFIG_HOME=$home/.config XDG_DATA_HOME=$home/.local/share \
  QT_QPA_PLATFORM=offscreen /usr/bin/versewick --self-test
rm -rf "$home"

echo "-- remove"
trap - EXIT
DEBIAN_FRONTEND=noninteractive $sudo apt-get remove -y -qq -o DPkg::Lock::Timeout=300 versewick >/dev/null
if [ -e /usr/bin/versewick ] || dpkg-query -W -f='${Status}' versewick 2>/dev/null |
  grep -q "install ok installed"; then
  echo "/usr/bin/versewick is still there after apt-get remove"
  exit 1
fi
echo "package check passed in $((SECONDS - started)) s"
