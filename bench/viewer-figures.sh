#!/bin/bash
# The viewer's figures on files of a day, a week and 1 GB at one record a second, each beside
# `wc -l` on the same file in the same run: bench/viewer-figures.sh [--large] [build folder]
# [data folder]. Both run in turns, five times; the best counts. The files are made where they are
# missing (about 1.4 GB) and kept. With --large a file of 3 GB is made, measured and deleted. On a
# busy machine: FIRST='chrt -f 50' bench/viewer-figures.sh, which puts both ahead of the others.
set -euo pipefail
runs=(day:86400 week:604800 gigabyte:1830000)
if [[ ${1:-} == --large ]]; then
    runs+=(large:5490000)
    shift
fi
build=${1:-build/release}
data=${2:-${TMPDIR:-/tmp}/vantrel-figures}
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
read -ra first <<<"${FIRST:-}"
mkdir -p "$data"

# "wc_ms" and a time; the file is in the page cache from the first round on, for both.
wc_ms() {
    local start end
    start=$(date +%s%N)
    "${first[@]}" wc -l "$1" >/dev/null
    end=$(date +%s%N)
    awk -v ns=$((end - start)) 'BEGIN { print "wc_ms", ns / 1e6 }'
}

printf '%-8s %9s %7s %6s %7s %6s %9s %6s %9s %6s %6s %6s %6s %6s %8s\n' file records MB 'wc ms' \
    'Ready' 'x wc*' 'overview' 'x wc' 'quantity' 'x wc' 'graph' 'gap' 'MiB' '% file' 'find ms'
trap 'rm -f "$data/large.4ch"' EXIT
for run in "${runs[@]}"; do
    name=${run%%:*}
    records=${run##*:}
    file=$data/$name.4ch
    [[ -s $file ]] || "$build/bench/vantrel-generate" "$records" "$file"
    for _ in 1 2 3 4 5; do
        wc_ms "$file"
        "${first[@]}" "$build/bench/bench_viewer" "$file" 2>/dev/null
    done >"$data/$name.figures"
    awk -v name="$name" -v records="$records" -v bytes="$(stat -c %s "$file")" '
        !($1 in best) || $2 < best[$1] { best[$1] = $2 }
        END {
            wc = best["wc_ms"]
            gap = best["longest_gap_ms"]
            if (best["overview_gap_ms"] > gap) gap = best["overview_gap_ms"]
            if (best["quantity_gap_ms"] > gap) gap = best["quantity_gap_ms"]
            printf "%-8s %9d %7.1f %6.1f %7.1f %6.1f %9.1f %6.1f %9.1f %6.1f %6.1f %6.1f %6.1f %6.1f %8.2f\n",
                name, records, bytes / 1e6, wc, best["ready_ms"], (best["ready_ms"] - 100) / wc,
                best["overview_ms"], best["overview_ms"] / wc, best["quantity_ms"],
                best["quantity_ms"] / wc, best["graph_ms"], gap, best["memory_KiB"] / 1024,
                100 * best["memory_KiB"] * 1024 / bytes, best["search_worst_ms"]
        }' "$data/$name.figures"
done
echo 'Times in ms. * without the fixed pause of 100 ms before "Ready"'
awk '($1 == "redraw_1500x8_ms" || $1 == "preview_gap_ms") && (!($1 in best) || $2 < best[$1]) {
         best[$1] = $2
     }
     END {
         print "graph of 1500 points by 8 series redrawn in", best["redraw_1500x8_ms"], "ms"
         print "longest gap while a list page is previewed for print:", best["preview_gap_ms"], "ms"
     }' "$data/week.figures"
