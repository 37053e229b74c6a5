# Sourced by the demo scripts: a temporary home (removed on exit) with a demo lyrics folder
# holding the bundled songs' lyrics, and no online look-ups (the plug-in is pointed at a
# closed local port). Needs $bin, the folder of the built programs.
demo=$(mktemp -d)
trap 'rm -rf "$demo"' EXIT
export HOME=$demo/home XDG_CONFIG_HOME=$demo/config XDG_DATA_HOME=$demo/data
export XDG_RUNTIME_DIR=$demo/runtime
mkdir -p "$HOME" "$XDG_CONFIG_HOME/morvane" "$XDG_DATA_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
printf '[services]\nlrclibUrl=http://127.0.0.1:9\n' >"$XDG_CONFIG_HOME/morvane/Versewick.ini"
demo_store() { "$bin/versewick-cli" store write "$1" "$2" "share/demo/$3" >/dev/null; }
demo_store "The Morvane Players" "Lanterns on the Quay" demo.lrc
demo_store "Juniper Lane" "Paper Kites" paper-kites.lrc
demo_store "Mira Calder" "Night Tram Home" night-tram.lrc
