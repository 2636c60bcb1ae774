#!/bin/bash
# How soon a week at one record a second is seen whole, in one quantity: the viewer out of the
# measurement file, kst and gnuplot out of columns of numbers that were made of it before. Each from
# its start to the picture, in turns with `wc -l` of the measurement file, best of five.
# bench/peers.sh [build folder] [data folder]; it needs the Debian packages kst and gnuplot-nox.
# On a busy machine: FIRST='chrt -f 50' bench/peers.sh, which puts all four ahead of the others.
set -euo pipefail
build=${1:-build/release}
data=${2:-${TMPDIR:-/tmp}/vantrel-figures}
export QT_QPA_PLATFORM=offscreen
read -ra first <<<"${FIRST:-}"
mkdir -p "$data"
file=$data/week.4ch
columns=$data/week-mV.txt
[[ -s $file ]] || "$build/bench/vantrel-generate" 604800 "$file"

now() { date +%s%N; }
tell() { awk -v what="$1" -v ns=$(($(now) - $2)) 'BEGIN { print what, ns / 1e6 }'; }

start=$(now)
LC_ALL=C awk '/^mV/ { print ++record, $2, $3, $4, $5 }' "$file" >"$columns"
tell columns "$start"

run_wc() { "${first[@]}" wc -l "$file" >/dev/null; }
run_kst() {
    "${first[@]}" kst2 "$columns" -x 1 -y 2 -y 3 -y 4 -y 5 --png "$data/kst.png" >/dev/null 2>&1
    [[ -s $data/kst.png ]]
}
run_gnuplot() {
    "${first[@]}" gnuplot -e "set terminal png size 1280,600; set output '$data/gnuplot.png';
        plot for [column = 2:5] '$columns' using 1:column with lines" 2>/dev/null
    [[ -s $data/gnuplot.png ]]
}
# The viewer goes on with its other figures behind the whole run; its clock stops there.
run_viewer() {
    local name
    while read -r name _; do
        [[ $name != overview_ms ]] || tell viewer "$1"
    done < <("${first[@]}" stdbuf -oL "$build/bench/bench_viewer" "$file" 2>/dev/null)
}

for _ in 1 2 3 4 5; do
    for peer in wc kst gnuplot; do
        rm -f "$data/kst.png" "$data/gnuplot.png"
        start=$(now)
        "run_$peer"
        tell "$peer" "$start"
    done
    run_viewer "$(now)"
done >"$data/peers.figures"
awk '!($1 in best) || $2 < best[$1] { best[$1] = $2 }
     END {
         for (peer in best)
             printf "%-8s %7.0f ms %5.1f times wc -l\n", peer, best[peer], best[peer] / best["wc"]
     }' "$data/peers.figures" | sort -k2n
