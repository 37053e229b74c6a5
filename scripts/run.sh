#!/usr/bin/env bash
# Installs what is needed, builds, and starts the desktop application on a demo: the player
# simulator plays three short bundled songs as Jukora on a private session bus, and the lyric
# panel shows their lyrics, found in a demo lyrics folder, in time with the music. Everything
# lives in a temporary home: the user's own settings and lyrics are never touched.
#
# With a display (DISPLAY or WAYLAND_DISPLAY) the application runs there until you choose Quit
# in its menu (the tray icon, or a right click on the lyric panel) or press Ctrl-C. Without one
# it runs under Xvfb for VERSEWICK_DEMO_SECONDS (default 40) and `versewick-cli follow` prints
# the sung lines in this terminal.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
if [ ! -f build/build.ninja ]; then
  cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
fi
cmake --build build --target versewick versewick-cli versewick-player lrclib_plugin >/dev/null
bin=$PWD/build/bin
seconds=${VERSEWICK_DEMO_SECONDS:-40}

source scripts/demo-home.sh

# The player's commands: play the playlist, and append it again before it runs out. (A file:
# xvfb-run's shell would drop an exported function.)
cat >"$demo/commands.sh" <<'END'
echo play
while sleep 150; do
  echo "add The Morvane Players | Lanterns on the Quay | Harbour Songs | 75"
  echo "add Juniper Lane | Paper Kites | Small Weather | 41"
  echo "add Mira Calder | Night Tram Home | Last Stop | 40"
done
END
export VERSEWICK_DEMO_COMMANDS=$demo/commands.sh

quiet() { grep -v "Failed to set fd limit" >&2 || true; }

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  echo "Versewick is starting with the demo songs; quit it from its menu or with Ctrl-C."
  dbus-run-session -- bash -c '
    bash "$VERSEWICK_DEMO_COMMANDS" | "$1/versewick-player" --as jukora --playlist share/demo/playlist.json >/dev/null &
    player=$!
    "$1/versewick"
    kill "$player" 2>/dev/null || true' demo "$bin" 2> >(quiet)
else
  echo "No display: running Versewick under Xvfb for $seconds s; the sung lines follow."
  xvfb-run -a -s "-screen 0 1600x900x24" dbus-run-session -- bash -c '
    bash "$VERSEWICK_DEMO_COMMANDS" | "$1/versewick-player" --as jukora --playlist share/demo/playlist.json >/dev/null &
    player=$!
    "$1/versewick" &
    app=$!
    "$1/versewick-cli" follow --for "$2"
    dbus-send --session --dest=com.morvane.Versewick --type=method_call \
      /com/morvane/Versewick com.morvane.Versewick.Lyrics.Quit 2>/dev/null || kill "$app"
    wait "$app" || true
    kill "$player" 2>/dev/null || true' demo "$bin" "$seconds" 2> >(quiet)
fi
