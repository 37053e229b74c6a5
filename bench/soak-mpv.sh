#!/usr/bin/env bash
# A long run beside mpv: the desktop application follows a looping mpv playlist of 2 s songs
# (a song change every 2 s, each with a lyric beside it or in the lyrics folder, every third
# with none) on a private session bus, and its resident memory and open descriptors are
# sampled every 10 s. The application must answer its D-Bus service throughout.
#   bash bench/soak-mpv.sh [seconds] [command...]
# The command defaults to "$BUILD/bin/versewick" (BUILD defaults to build), on the offscreen
# platform unless a display is set.
set -euo pipefail
seconds=${1:-600}
(($# > 0)) && shift
if (($# == 0)); then
  set -- "${BUILD:-build}/bin/versewick"
fi
if [[ -z "${VERSEWICK_BENCH_BUS:-}" ]]; then
  VERSEWICK_BENCH_BUS=1 exec dbus-run-session -- bash "$0" "$seconds" "$@"
fi
source "$(dirname "$0")/mpv-home.sh"
lyrics=$home/data/Versewick/lyrics.lrcs
mkdir -p "$music" "$lyrics"

songs=12
ffmpeg -hide_banner -loglevel error -f lavfi -i sine=frequency=440:duration=2 \
  -metadata artist=Ann -metadata title="Song 1" "$music/song1.flac"
for i in $(seq 2 $songs); do
  ffmpeg -hide_banner -loglevel error -i "$music/song1.flac" -c copy \
    -metadata artist=Ann -metadata title="Song $i" "$music/song$i.flac"
done
for i in $(seq 1 $songs); do
  lrc=$(for l in 0 1 2 3; do printf '[00:00.%02d]song %d line %d\n' $((l * 40)) "$i" "$l"; done)
  case $((i % 3)) in
  0) ;;                                  # no lyric anywhere: "lyric is not available"
  1) printf '%s\n' "$lrc" >"$music/song$i.lrc" ;;
  2) printf '%s\n' "$lrc" >"$lyrics/Ann - Song $i.lrc" ;;
  esac
done

mpv --no-config --ao=null --vo=null --really-quiet --script="$plugin" --loop-playlist=inf \
  "$music"/song{1..12}.flac &
pids+=($!)
"$@" >"$home/app.log" 2>&1 &
pid=$!
pids+=("$pid")

answer() {
  local t0 t1
  t0=$(date +%s.%N)
  dbus-send --session --print-reply --reply-timeout=5000 --dest=com.morvane.Versewick \
    /com/morvane/Versewick org.freedesktop.DBus.Properties.Get \
    string:com.morvane.Versewick.Lyrics string:Title >/dev/null 2>&1 || echo "no answer" >&2
  t1=$(date +%s.%N)
  awk -v a="$t0" -v b="$t1" 'BEGIN { printf "%.0f", (b - a) * 1000 }'
}

sleep 5
printf '%6s %10s %5s %8s\n' "s" "RSS KiB" "fds" "answer"
start=$SECONDS
worst=0
while ((SECONDS - start < seconds)); do
  rss=$(awk '/^VmRSS/ {print $2}' "/proc/$pid/status")
  fds=$(ls "/proc/$pid/fd" | wc -l)
  ms=$(answer)
  ((ms > worst)) && worst=$ms
  printf '%6d %10d %5d %6d ms\n' $((SECONDS - start)) "$rss" "$fds" "$ms"
  sleep 10
done
hwm=$(awk '/^VmHWM/ {print $2}' "/proc/$pid/status")
awk -v h="$hwm" -v w="$worst" 'BEGIN { printf "peak resident %.1f MiB; slowest answer %d ms\n", h / 1024, w }'
