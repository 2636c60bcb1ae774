#!/bin/bash
# The viewer's figures on files of a day, a week and 1 GB at one record a second, each beside
# `wc -l` on the same file in the same run: bench/viewer-figures.sh [--large] [build folder]
# [data folder]. The files are made where they are missing (about 1.4 GB) and kept. With --large a
# file of 3 GB is made, measured and deleted.
set -euo pipefail
runs=(day:86400 week:604800 gigabyte:1830000)
if [[ ${1:-} == --large ]]; then
    runs+=(large:5490000)
    shift
fi
build=${1:-build/release}
data=${2:-${TMPDIR:-/tmp}/vantrel-figures}
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
mkdir -p "$data"

# Shortest of three runs, in ms; the file is in the page cache then, for the viewer as for wc.
wc_ms() {
    local best= start end took
    for _ in 1 2 3; do
        start=$(date +%s%N)
        wc -l "$1" >/dev/null
        end=$(date +%s%N)
        took=$(((end - start) / 1000))
        if [[ -z $best || $took -lt $best ]]; then best=$took; fi
    done
    awk -v us="$best" 'BEGIN { printf "%.1f", us / 1000 }'
}

printf '%-8s %10s %9s %9s %9s %7s %9s %9s %8s %9s %9s\n' file records MB 'wc ms' 'Ready ms' \
    'x wc *' 'graph ms' 'gap ms' 'MiB' '% file' 'find ms'
trap 'rm -f "$data/large.4ch"' EXIT
for run in "${runs[@]}"; do
    name=${run%%:*}
    records=${run##*:}
    file=$data/$name.4ch
    [[ -s $file ]] || "$build/bench/vantrel-generate" "$records" "$file"
    wc=$(wc_ms "$file")
    "$build/bench/bench_viewer" "$file" 2>/dev/null >"$data/$name.figures"
    awk -v name="$name" -v records="$records" -v bytes="$(stat -c %s "$file")" -v wc="$wc" '
        { figure[$1] = $2 }
        END {
            printf "%-8s %10d %9.1f %9.1f %9.1f %7.1f %9.1f %9.1f %8.1f %9.1f %9.2f\n", name,
                records, bytes / 1e6, wc, figure["ready_ms"], (figure["ready_ms"] - 100) / wc,
                figure["graph_ms"], figure["longest_gap_ms"], figure["memory_KiB"] / 1024,
                100 * figure["memory_KiB"] * 1024 / bytes, figure["search_worst_ms"]
        }' "$data/$name.figures"
done
echo '* without the fixed pause of 100 ms before "Ready"'
awk '$1 == "redraw_1500x8_ms" { print "graph of 1500 points by 8 series redrawn in", $2, "ms" }' \
    "$data/week.figures"
