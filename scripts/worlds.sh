#!/usr/bin/env bash
# Runs every test of the release build in worlds other than the developer's; called by ./test. Ends
# with 1 where a test fails in one of them.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

folder=$PWD/build/worlds
rm -rf "$folder"
mkdir -p "$folder/locale"
failed=()
export QT_QPA_PLATFORM=offscreen

# world NAME [command that sets it up...]: all tests in it.
world() {
    local name=$1
    shift
    say "World: $name"
    env "$@" ctest --preset release --parallel "$(nproc)" \
        --output-log "$folder/log" >"$folder/$name.txt" 2>&1 || failed+=("$name")
    sed -n '/tests passed/,$p' "$folder/$name.txt"
}

# A time zone whose summer time begins, or ends, a minute from now.
zone() {
    if [ "$1" = begins ]; then
        echo "WIN0SUM-1,$(TZ=UTC date --date='1 minute' +J%-j/%T),J365/23:59:59"
    else
        echo "WIN0SUM-1,J1/0,$(TZ=SUM-1 date --date='1 minute' +J%-j/%T)"
    fi
}

localedef -i de_DE -f UTF-8 "$folder/locale/de_DE.UTF-8"
world german LOCPATH="$folder/locale" LC_ALL=de_DE.UTF-8 LANG=de_DE.UTF-8
world summer-time-begins TZ="$(zone begins)"
world summer-time-ends TZ="$(zone ends)"
home="$folder/ä ö"
mkdir -p "$home/tmp"
world umlauts-and-blanks -u XDG_CONFIG_HOME -u XDG_DATA_HOME HOME="$home" TMPDIR="$home/tmp"
# A screen of the usual size once each of its points is four.
sed 's/"width": *[0-9]*/"width": 2560/; s/"height": *[0-9]*/"height": 2048/' tests/tour/screen.json \
    >"$folder/screen.json"
world double-scale QT_SCALE_FACTOR=2 "QT_QPA_PLATFORM=offscreen:configfile=$folder/screen.json"
if [ "$(id -u)" = 0 ]; then # the others have run as one who may do all
    # What the test runner itself writes.
    chmod -R a+rwX build/release/Testing build/release/tour "$folder"
    world no-rights setpriv --reuid=nobody --regid=nogroup --clear-groups env HOME=/nonexistent
fi

[ ${#failed[@]} = 0 ] || die "Tests fail in these worlds: ${failed[*]}"
