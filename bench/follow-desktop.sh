#!/usr/bin/env bash
# CPU of the desktop application following a playing song in stream mode (the lyric panel
# shown), under Xvfb 1600x900 with openbox, in a temporary demo home, measured from
# /proc/<pid>/stat over SECONDS after 5 s of start-up. With SHOT=FILE.png, a screenshot of the
# screen is taken at the end; with PERF=FILE, `perf record` samples the application meanwhile;
# with MODE=1 the single-line strip is measured instead of the panel; SCREEN=3840x2160 (with
# QT_SCALE_FACTOR=2) for a large screen; KARAOKE=1 plays the first song with word timing.
# Usage: bash bench/follow-desktop.sh [SECONDS] [BIN-DIR]   (default 60, build/bin)
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
bin=$(realpath "${2:-build/bin}")

source scripts/demo-home.sh
[[ -z "${KARAOKE:-}" ]] || "$bin/versewick-cli" store write "The Morvane Players" \
  "Lanterns on the Quay" share/demo/demo-karaoke.lrc --overwrite >/dev/null

# A random first display number: helpers starting servers at once must not share one.
xvfb-run -a -n $((100 + RANDOM % 800)) -s "-screen 0 ${SCREEN:-1600x900}x24" dbus-run-session -- bash -c '
  bin=$1 seconds=$2
  openbox >/dev/null 2>&1 &
  wm=$!
  sleep 1 # a window mapped while the window manager starts can stay unseen
  coproc PLAYER { "$bin/versewick-player" --as jukora >/dev/null; }
  echo play >&"${PLAYER[1]}"
  "$bin/versewick" 2>/dev/null &
  app=$!
  sleep 5 # start-up and the lyric search are not part of the steady state
  if [[ "${MODE:-0}" == 1 ]]; then
    dbus-send --session --dest=com.morvane.Versewick --type=method_call \
      /com/morvane/Versewick com.morvane.Versewick.Lyrics.SetMode int32:1 >/dev/null
    sleep 1
  fi
  if [[ -n "${PERF:-}" ]]; then
    perf record ${PERF_ARGS:--g} -o "$PERF" -p "$app" -- sleep "$seconds" >/dev/null 2>&1 &
  fi
  tck=$(getconf CLK_TCK)
  cpu() { awk "{print \$14 + \$15}" /proc/$app/stat; }
  before=$(cpu); start=$(date +%s.%N)
  sleep "$seconds"
  after=$(cpu); end=$(date +%s.%N)
  awk -v a="$after" -v b="$before" -v t="$tck" -v s="$start" -v e="$end" \
    "BEGIN { printf \"CPU: %.3f %% of one core over %.1f s\\n\", 100 * (a - b) / t / (e - s), e - s }"
  shot=${SHOT:-/tmp/follow-desktop-$$.png}
  import -window root "$shot"
  if [[ $(convert "$shot" -format "%[fx:maxima > 0]" info:) != 1 ]]; then
    echo "nothing was shown: this run does not count" >&2
  fi
  [[ -n "${SHOT:-}" ]] || rm -f "$shot"
  dbus-send --session --dest=com.morvane.Versewick --type=method_call \
    /com/morvane/Versewick com.morvane.Versewick.Lyrics.Quit >/dev/null 2>&1
  wait "$app" || true
  echo exit >&"${PLAYER[1]}"
  kill "$wm" 2>/dev/null || true
  wait
' follow "$bin" "$seconds" 2> >(grep -v "Failed to set fd limit" >&2)
