#!/usr/bin/env bash
# Runs a fuzz target of the fuzz build for some seconds, from what was found before; called by ./test. Tells
# what it has reached when it ends, with 1 where it found an input that harms.
#
#   fuzz.sh TARGET SECONDS
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

target=$1
corpus=build/fuzz/corpus/$target
mkdir -p "$corpus"
found_before=fuzz/corpora/$target.tar.xz
[ ! -f "$found_before" ] || tar -xf "$found_before" -C "$corpus" # a new target has none
"build/fuzz/fuzz/$target" -max_total_time="$2" -print_final_stats=1 "$corpus" fuzz/seeds \
    -artifact_prefix="$corpus-" >"$corpus.log" 2>&1 || found=$?
say "$target for $2 seconds
$(grep -E 'ERROR|SUMMARY|number_of_executed_units' "$corpus.log")
edges reached: $(grep -oE 'cov: [0-9]+' "$corpus.log" | tail -n 1 | tr -dc '[:digit:]')"
[ "${found:-0}" = 0 ] || die "$target found an input that harms"
