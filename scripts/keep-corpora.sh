#!/usr/bin/env bash
# Keeps what the fuzz targets have found: of the inputs in build/fuzz/corpus the few that reach every
# edge, packed into fuzz/corpora, from where ./test --fuzz starts. To be called after a long run.
set -euo pipefail
cd "$(dirname "$0")/.."

longest=4096 # bytes of an input; what is longer finds little that is new and makes each run slow
for source in fuzz/Fuzz*.cpp; do
    target=$(basename "$source" .cpp)
    few=build/fuzz/few/$target
    rm -rf "$few"
    mkdir -p "$few" "build/fuzz/corpus/$target"
    "build/fuzz/fuzz/$target" -merge=1 -max_len=$longest "$few" fuzz/seeds "build/fuzz/corpus/$target" \
        >"$few.log" 2>&1
    tar --create --xz --file "fuzz/corpora/$target.tar.xz" --directory "$few" --sort=name \
        --owner=0 --group=0 --numeric-owner --mode=u=rwX,go=rX --mtime=@0 .
    echo "$target: $(find "$few" -type f | wc -l) inputs"
done
