#!/usr/bin/env bash
# Whole-process time of `versewick-cli lrc readable` against clrc, the fastest LRC parser
# for JavaScript on npm, on the same 8 MiB lyric (bench/LargeLrc.h). clrc goes into a
# temporary folder, never into the repository. The JavaScript side does what the command
# does: read the file, parse it, sort the timed lines by start time, print their texts.
#
#   cmake --build build --target versewick-cli lrc_generate
#   bash bench/compare-clrc.sh [RUNS]          (BUILD_DIR=... for another build folder)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${BUILD_DIR:-$root/build}
runs=${1:-10}
cli=$build/bin/versewick-cli
generate=$build/bin/lrc_generate
for program in "$cli" "$generate"; do
    if [[ ! -x $program ]]; then
        echo "missing $program: cmake --build $build --target versewick-cli lrc_generate" >&2
        exit 1
    fi
done
command -v node >/dev/null && command -v npm >/dev/null || {
    echo "node and npm are needed (apt-get install nodejs npm)" >&2
    exit 1
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$generate" "$work/large.lrc"
(cd "$work" && npm init -y >/dev/null && npm install --no-audit --no-fund --silent clrc@3 >/dev/null)
cat >"$work/readable.js" <<'JS'
const fs = require('fs');
const { parse, LineType } = require('clrc');
const lines = parse(fs.readFileSync(process.argv[2], 'utf8'))
  .filter((line) => line.type === LineType.LYRIC)
  .sort((a, b) => a.startMillisecond - b.startMillisecond); // stable, like ours
process.stdout.write(lines.map((line) => line.content + '\n').join(''));
JS

ours=("$cli" lrc readable "$work/large.lrc")
theirs=(node "$work/readable.js" "$work/large.lrc")
clrc_version=$(node -p "require('$work/node_modules/clrc/package.json').version")
echo "file: $(stat -c %s "$work/large.lrc") bytes; clrc $clrc_version, node $(node --version)"
echo "lines printed: versewick $("${ours[@]}" | wc -l), clrc $("${theirs[@]}" | wc -l)"

# Median wall time of a command in milliseconds, output discarded.
median_ms() {
    local samples=() start end
    "$@" >/dev/null # warm-up
    for ((i = 0; i < runs; i++)); do
        start=$(date +%s%N)
        "$@" >/dev/null
        end=$(date +%s%N)
        samples+=($(((end - start) / 1000)))
    done
    printf '%s\n' "${samples[@]}" | sort -n |
        awk '{ v[NR] = $1 } END { m = (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2; printf "%.1f", m / 1000 }'
}

if command -v hyperfine >/dev/null; then
    hyperfine --warmup 2 --runs "$runs" --style basic --export-json "$work/times.json" \
        -n versewick "${ours[*]}" -n clrc "${theirs[*]}" >&2
    read -r ours_ms theirs_ms < <(node -p "const r = require('$work/times.json').results;
        (r[0].median * 1000).toFixed(1) + ' ' + (r[1].median * 1000).toFixed(1)")
    how="hyperfine, median of $runs runs"
else
    ours_ms=$(median_ms "${ours[@]}")
    theirs_ms=$(median_ms "${theirs[@]}")
    how="date +%s%N loop, median of $runs runs"
fi
echo "versewick-cli lrc readable: $ours_ms ms"
echo "clrc (node):                $theirs_ms ms"
awk -v a="$theirs_ms" -v b="$ours_ms" -v how="$how" \
    'BEGIN { printf "ratio clrc / versewick: %.2f (%s)\n", a / b, how }'
