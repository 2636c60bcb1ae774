#!/bin/bash
# What vantrel-file costs on a week's file at one record a second, beside `wc -l` on the same file in
# the same run: bench/file-figures.sh [build folder] [data folder]. All run in turns, five times; the
# best processor time counts. The file is made where it is missing (331 MB) and kept.
set -euo pipefail
build=${1:-build/release}
data=${2:-${TMPDIR:-/tmp}/vantrel-figures}
mkdir -p "$data"
file=$data/measured.4ch
[[ -s $file ]] || "$build/bench/vantrel-generate" 604800 "$file" measured

# The name, processor time and time on the clock of a command, in ms.
cost() {
    local name=$1
    shift
    local TIMEFORMAT="$name %U %S %R"
    { time "$@" >/dev/null; } 2>&1 | awk '{ print $1, ($2 + $3) * 1000, $4 * 1000 }'
}

for _ in 1 2 3 4 5; do
    cost wc wc -l "$file"
    cost info "$build/bin/vantrel-file" info "$file"
    cost verify "$build/bin/vantrel-file" verify "$file"
    cost csv "$build/bin/vantrel-file" csv -o - "$file"
    cost seal "$build/bin/vantrel-file" seal --force "$file"
    rm -f "$file.seal"
done | awk '
    !($1 in cpu) { order[++count] = $1 }
    !($1 in cpu) || $2 < cpu[$1] { cpu[$1] = $2 }
    !($1 in clock) || $3 < clock[$1] { clock[$1] = $3 }
    END {
        printf "%-8s %8s %8s %9s\n", "what", "cpu ms", "x wc", "clock ms"
        for (i = 1; i <= count; ++i)
            printf "%-8s %8.0f %8.1f %9.0f\n", order[i], cpu[order[i]], cpu[order[i]] / cpu["wc"],
                clock[order[i]]
    }'
uptime
