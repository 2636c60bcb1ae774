#!/usr/bin/env bash
# Makes the zip and the installer from a built program.
#
#   package.sh PROGRAM ICON VERSION OUTPUT-FOLDER LICENCES...
#
# LICENCES are the folders of the licence texts of what the program is linked with.
set -euo pipefail
project=$(cd "$(dirname "$0")/../.." && pwd)
program=$1 icon=$2 version=$3 output=$4
shift 4

staged=$output/Vantrel
rm -rf "$staged"
mkdir -p "$staged/licences"
cp "$icon" "$output/vantrel.ico"
cp "$program" "$staged/vantrel.exe"
x86_64-w64-mingw32-strip "$staged/vantrel.exe"
# For NotePad: with a byte order mark, the lines ending in CR LF.
for text in "$project"/help/*.txt; do
    { printf '\xEF\xBB\xBF'; sed 's/$/\r/' "$text"; } >"$staged/$(basename "$text")"
done
sed 's/$/\r/' "$project/LICENSE" >"$staged/LICENSE.txt"
for licences; do
    cp -r "$licences/." "$staged/licences/"
done

# The uninstaller removes what was installed and nothing else.
(
    cd "$staged"
    find . -type f -printf '%P\n' | sed 's|/|\\|g; s|.*|Delete "$INSTDIR\\&"|'
    find . -mindepth 1 -depth -type d -printf '%P\n' | sed 's|/|\\|g; s|.*|RMDir "$INSTDIR\\&"|'
) >"$output/installed.nsh"

rm -f "$output/vantrel-$version-windows.zip"
(cd "$output" && zip -q -9 -r "vantrel-$version-windows.zip" Vantrel)
makensis -V2 "-DVERSION=$version" "-DFOLDER=$staged" "-DFILE_LIST=$output/installed.nsh" \
    "-DOUTPUT=$output/vantrel-$version-setup.exe" "$project/packaging/windows/vantrel.nsi"
ls -l "$output"/vantrel-*
