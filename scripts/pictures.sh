#!/usr/bin/env bash
# Takes the README's pictures anew on a tour through the program, and notes which forms they show.
#
# usage: scripts/pictures.sh [PROGRAM]    the tour's program, at first build/release/bin/vantrel-tour
#        scripts/pictures.sh --check      are the pictures those of the forms as they stand?
set -euo pipefail
cd "$(dirname "$0")/.."
project=$PWD

pictures=docs/pictures
forms=$pictures/forms.sha256

# A picture of the README and the one of the tour that it is, without its number.
shown=(setup=setup calibration=calibration-pH-summary measuring=recording-by-clock notice=notice
    alarm=alarm report=report-ppm)

# The forms that the README shows, and what stands in them.
list_forms() {
    (cd screens && find frmMain frmCalib Report calibration controls -name '*.ui') |
        LC_ALL=C sort | sed 's|^|screens/|' | xargs sha256sum
}

# The folders that the pictures show are those of any analyst, not those of this computer. They are
# there for the tour alone.
tour() {
    mount -t tmpfs none /mnt
    mkdir -p /mnt/analyst/tour
    VANTREL_TOUR_HOME=/mnt/analyst VANTREL_TOUR_FOLDER=/mnt/analyst/tour \
        QT_QPA_PLATFORM=offscreen:configfile=$project/tests/tour/screen.json "$1"
    for pair in "${shown[@]}"; do
        cp /mnt/analyst/tour/[0-9][0-9]-"${pair#*=}.png" "$pictures/${pair%=*}.png"
    done
}

case ${1:-} in
--check)
    list_forms | diff "$forms" - ||
        { echo "The pictures are older than these forms: take them anew with scripts/pictures.sh"; exit 1; }
    ;;
--tour)
    tour "$2"
    ;;
*)
    program=$(realpath "${1:-build/release/bin/vantrel-tour}")
    apart=(unshare --user --map-root-user --mount)
    "${apart[@]}" true 2>/dev/null || apart=(unshare --mount)
    "${apart[@]}" bash "$0" --tour "$program"
    list_forms >"$forms"
    ;;
esac
