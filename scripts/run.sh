#!/usr/bin/env bash
# Installs what is needed, builds, and runs the application headless in this terminal: the
# player simulator plays the bundled demo song as Jukora on a private session bus, and
# `versewick-cli follow` finds its lyric in a demo lyrics folder and prints each line as it is
# sung. Everything lives in a temporary home: the user's own settings and lyrics are never
# touched. Set VERSEWICK_DEMO_SECONDS to follow for longer (default 40).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
bash scripts/build.sh >/dev/null
bin=$PWD/build/bin
seconds=${VERSEWICK_DEMO_SECONDS:-40}

demo=$(mktemp -d)
trap 'rm -rf "$demo"' EXIT
export HOME=$demo/home XDG_CONFIG_HOME=$demo/config XDG_DATA_HOME=$demo/data
export XDG_RUNTIME_DIR=$demo/runtime
mkdir -p "$HOME" "$XDG_CONFIG_HOME/morvane" "$XDG_DATA_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
# No online look-ups in the demo: the plug-in is pointed at a closed local port.
printf '[services]\nlrclibUrl=http://127.0.0.1:9\n' >"$XDG_CONFIG_HOME/morvane/Versewick.ini"
"$bin/versewick-cli" store write "The Morvane Players" "Lanterns on the Quay" \
  share/demo/demo.lrc >/dev/null

echo "Following the demo song for $seconds s (Ctrl-C ends it)..."
dbus-run-session -- bash -c '
  { echo launch; echo play; sleep "$2"; echo exit; } |
    "$1/versewick-player" --as jukora --not-running >/dev/null &
  "$1/versewick-cli" follow --for "$2"
  wait' demo "$bin" "$seconds" 2> >(grep -v "Failed to set fd limit" >&2)
