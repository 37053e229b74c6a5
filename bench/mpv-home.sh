# Sourced by the mpv benchmarks (after they re-ran themselves on a private session bus):
# finds mpv's MPRIS plug-in ($plugin), makes a throw-away home ($home, $music) removed on exit
# with every process in $pids, and points the application's folders into it.
plugin=
for p in /usr/lib/mpv-mpris/mpris.so /etc/mpv/scripts/mpris.so; do
  [[ -e $p ]] && plugin=$p && break
done
if [[ -z $plugin ]] || ! command -v mpv >/dev/null; then
  echo "needs mpv and mpv-mpris" >&2
  exit 2
fi

home=$(mktemp -d)
pids=()
cleanup() {
  for p in "${pids[@]}"; do kill "$p" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$home"
}
trap cleanup EXIT
export HOME=$home XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_DATA_DIRS=$home/none
export VERSEWICK_QQMUSIC_PORT=1
[[ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]] && export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
music=$home/music
