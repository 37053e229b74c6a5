#!/usr/bin/env bash
# Start-up and steady-state figures of the desktop application under Xvfb, in a temporary home:
#  1. time from exec to the lyric panel's first paint, over RUNS starts (default 5);
#  2. following a playing song (the player simulator as Jukora) in stream mode with the panel
#     shown for SECONDS (default 60): CPU % of one core and resident memory.
# Usage: bash scripts/measure-desktop.sh [RUNS] [SECONDS]   (after a build in build/)
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$PWD/build/bin
runs=${1:-5}
seconds=${2:-60}

source scripts/demo-home.sh

xvfb-run -a -s "-screen 0 1600x900x24" dbus-run-session -- bash -c '
  bin=$1 runs=$2 seconds=$3
  quit() {
    dbus-send --session --dest=com.morvane.Versewick --type=method_call \
      /com/morvane/Versewick com.morvane.Versewick.Lyrics.Quit >/dev/null 2>&1
  }
  owned() {
    dbus-send --session --print-reply --dest=org.freedesktop.DBus / \
      org.freedesktop.DBus.NameHasOwner string:com.morvane.Versewick 2>/dev/null |
      grep -q "boolean true"
  }
  echo "== exec to first paint of the lyric panel (ms), $runs starts"
  for i in $(seq "$runs"); do
    VERSEWICK_REPORT_FIRST_PAINT=1 "$bin/versewick" 2>&1 >/dev/null |
      sed -n "s/.*first painted \([0-9]*\) ms.*/\1/p" &
    until owned; do sleep 0.1; done
    sleep 1; quit; wait
  done

  echo "== following a playing song in stream mode for $seconds s"
  { echo play; sleep $((seconds + 30)); echo exit; } |
    "$bin/versewick-player" --as jukora >/dev/null &
  "$bin/versewick" 2>/dev/null &
  app=$!
  sleep 5 # start-up and the lyric search are not part of the steady state
  tck=$(getconf CLK_TCK)
  cpu() { awk "{print \$14 + \$15}" /proc/$app/stat; }
  before=$(cpu); start=$(date +%s.%N)
  sleep "$seconds"
  after=$(cpu); end=$(date +%s.%N)
  awk -v a="$after" -v b="$before" -v t="$tck" -v s="$start" -v e="$end" \
    "BEGIN { printf \"CPU: %.2f %% of one core\\n\", 100 * (a - b) / t / (e - s) }"
  grep -E "VmRSS|VmHWM" /proc/$app/status
  quit; wait "$app" || true
' measure "$bin" "$runs" "$seconds" 2> >(grep -v "Failed to set fd limit" >&2)
