#!/usr/bin/env bash
# A follower beside mpv (with Debian's MPRIS plug-in) on a private session bus: its CPU and
# peak memory while following a playing 90 s song with a lyric beside it, then the time from
# a song change in mpv to the new song's first lit line.
#   bash bench/follow-mpv.sh [seconds] [command...]
# The command defaults to "$BUILD/bin/versewick-cli follow --json" (BUILD defaults to build).
# CPU: utime+stime from /proc/PID/stat over the last SECONDS (start-up's first 5 s excluded).
# Memory: VmHWM, the peak resident set, from /proc/PID/status.
# Song change: from just before the IPC "playlist-next" is written to mpv's socket to the
# arrival of the first JSON line event of the new song lit ("song N line 0"); five changes.
# Commands that print no such lines (the desktop application) get "n/a" there.
set -euo pipefail
seconds=${1:-60}
(($# > 0)) && shift
if (($# == 0)); then
  set -- "${BUILD:-build}/bin/versewick-cli" follow --json
fi
if [[ -z "${VERSEWICK_BENCH_BUS:-}" ]]; then
  VERSEWICK_BENCH_BUS=1 exec dbus-run-session -- bash "$0" "$seconds" "$@"
fi
source "$(dirname "$0")/mpv-home.sh"
mkdir -p "$music"

songs=6
ffmpeg -hide_banner -loglevel error -f lavfi -i sine=frequency=440:duration=90 \
  -metadata artist=Ann -metadata title="Song 1" "$music/song1.flac"
for i in $(seq 2 $songs); do
  ffmpeg -hide_banner -loglevel error -i "$music/song1.flac" -c copy \
    -metadata artist=Ann -metadata title="Song $i" "$music/song$i.flac"
done
for i in $(seq 1 $songs); do
  for l in $(seq 0 29); do
    printf '[%02d:%02d.00]song %d line %d\n' $((l * 3 / 60)) $((l * 3 % 60)) "$i" "$l"
  done >"$music/song$i.lrc"
done

# mpv's IPC: one JSON command per call; prints the moment the command was written.
ipc() {
  perl -MIO::Socket::UNIX -MTime::HiRes=time -e '
    my $s = IO::Socket::UNIX->new(Peer => $ARGV[0]) or die "no mpv socket\n";
    $s->autoflush(1);
    printf "%.6f\n", time;
    print $s "$ARGV[1]\n";
    while (my $l = <$s>) { last if $l =~ /"error"/ }' "$home/ipc" "$1"
}

mpv --no-config --ao=null --vo=null --really-quiet --script="$plugin" --loop-file=inf \
  --input-ipc-server="$home/ipc" "$music"/song{1..6}.flac &
pids+=($!)
for _ in $(seq 100); do [[ -S $home/ipc ]] && break; sleep 0.1; done

# The player's signals, stamped the same way: splits a song change into mpv's share (to its
# PropertiesChanged with the new Metadata) and the follower's (from there to the lit line).
dbus-monitor --session "type='signal',path='/org/mpris/MediaPlayer2'" 2>/dev/null |
  perl -MTime::HiRes=time -ne '$| = 1; printf "%.6f %s", time, $_' >"$home/signals.txt" &
pids+=($!)

# Every line the follower prints, stamped with its arrival time.
mkfifo "$home/out.fifo"
perl -MTime::HiRes=time -ne '$| = 1; printf "%.6f %s", time, $_' <"$home/out.fifo" \
  >"$home/out.txt" &
pids+=($!)
"$@" >"$home/out.fifo" &
pid=$!
pids+=("$pid")

sleep 5
ticks() { awk '{print $14 + $15}' "/proc/$pid/stat"; }
before=$(ticks)
sleep "$seconds"
after=$(ticks)
hwm=$(awk '/^VmHWM/ {print $2}' "/proc/$pid/status")
awk -v a="$after" -v b="$before" -v hz="$(getconf CLK_TCK)" -v s="$seconds" -v hwm="$hwm" \
  -v cmd="$*" 'BEGIN {
  cpu = (a - b) / hz
  printf "%s: %.2f s CPU in %d s (%.3f %% of one core), peak resident %.1f MiB\n",
    cmd, cpu, s, 100 * cpu / s, hwm / 1024
}'

for i in $(seq 2 $songs); do
  start=$(ipc '{"command":["playlist-next"]}')
  ms=n/a
  for _ in $(seq 100); do
    lit=$(awk -v t="$start" -v want="\"text\":\"song $i line 0\"" \
      '$1 >= t && index($0, want) { print $1; exit }' "$home/out.txt")
    if [[ -n $lit ]]; then
      ms=$(awk -v a="$start" -v b="$lit" 'BEGIN { printf "%.1f", (b - a) * 1000 }')
      break
    fi
    sleep 0.1
  done
  signal=$(awk -v t="$start" -v want="song$i.flac" '$1 >= t && index($0, want) { print $1; exit }' \
    "$home/signals.txt")
  if [[ $ms != n/a && -n $signal ]]; then
    awk -v a="$start" -v s="$signal" -v m="$ms" 'BEGIN {
      printf "song change: %6.1f ms to the first lit line (mpv to its signal %.1f ms, then %.1f ms)\n",
        m, (s - a) * 1000, m - (s - a) * 1000 }'
  else
    echo "song change: $ms ms to the first lit line"
  fi
  sleep 2
done
echo "lines printed: $(wc -l <"$home/out.txt")"
