#!/usr/bin/env bash
# CPU used by `versewick-cli follow` while it follows a playing song, measured from
# /proc/<pid>/stat between two samples (start-up excluded). Runs on a private session bus:
#   bash bench/follow_cpu.sh [build-dir] [seconds]
set -euo pipefail
build=${1:-build}
seconds=${2:-60}
if [[ -z "${VERSEWICK_FOLLOW_BUS:-}" ]]; then
  VERSEWICK_FOLLOW_BUS=1 exec dbus-run-session -- bash "$0" "$build" "$seconds"
fi
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME=$home XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_DATA_DIRS=$home/none
export VERSEWICK_QQMUSIC_PORT=1 QT_QPA_PLATFORM=offscreen
mkdir -p "$XDG_DATA_HOME/Versewick/lyrics.lrcs"
for i in $(seq 0 59); do
  printf '[%02d:%02d.00]line %d of the song\n' $((i * 3 / 60)) $((i * 3 % 60)) "$i"
done >"$XDG_DATA_HOME/Versewick/lyrics.lrcs/Ann--Rain.lrc"

# The simulator plays the demo's second song ("Ann - Rain") as Jukora.
coproc PLAYER { "$build/bin/versewick-player" --as jukora; }
echo next >&"${PLAYER[1]}"
echo play >&"${PLAYER[1]}"
"$build/bin/versewick-cli" follow >"$home/out.txt" &
pid=$!
sleep 5
ticks() { awk '{print $14 + $15}' "/proc/$pid/stat"; }
before=$(ticks)
sleep "$seconds"
after=$(ticks)
kill -TERM "$pid"
wait "$pid"
echo exit >&"${PLAYER[1]}"
hz=$(getconf CLK_TCK)
awk -v a="$after" -v b="$before" -v hz="$hz" -v s="$seconds" 'BEGIN {
  cpu = (a - b) / hz
  printf "follow: %.2f s CPU in %d s (%.3f %% of one core)\n", cpu, s, 100 * cpu / s
}'
echo "lines printed: $(wc -l <"$home/out.txt")"
