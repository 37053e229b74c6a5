#!/usr/bin/env bash
# Installs what is needed, builds, and runs the application. Until the tray application
# lands, that is the command-line companion on the bundled demo lyric.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
bash scripts/build.sh >/dev/null
cli=build/bin/versewick-cli
demo=share/demo/demo.lrc
echo "== versewick-cli lrc readable $demo"
"$cli" lrc readable "$demo"
echo "== versewick-cli lrc at $demo 0 6 15 70"
"$cli" lrc at "$demo" 0 6 15 70
