#!/usr/bin/env bash
# Installs, starts and uninstalls the program under Wine, and checks that nothing is left.
#
#   test-installer.sh INSTALLER
set -euo pipefail
. "$(dirname "$0")/../../scripts/common.sh"
. "$project/scripts/windows.sh"
installer=$1
programs=$(wine cmd /c 'echo %LOCALAPPDATA%' 2>/dev/null </dev/null | tr -d '\r')
installed=$(winepath -u "$programs" 2>/dev/null)/Programs/Vantrel
menu=$(winepath -u "$(wine cmd /c 'echo %APPDATA%' 2>/dev/null </dev/null | tr -d '\r')" 2>/dev/null)
menu="$menu/Microsoft/Windows/Start Menu/Programs/Vantrel"
quiet() { "$@" >/dev/null 2>&1 </dev/null; }
has_key() { quiet wine reg query "$1"; }
type_key='HKCU\Software\Classes\Vantrel.Measurement'
ending_key='HKCU\Software\Classes\.4ch'
list_key='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Vantrel'

say "Installing $(basename "$installer")"
quiet wine "$installer" /S
for file in vantrel.exe uninstall.exe SetupHlp.txt LICENSE.txt; do
    [ -s "$installed/$file" ] || die "$file was not installed"
done
[ -n "$(ls "$menu"/*.lnk)" ] || die "the Start menu has no entry"
for key in "$type_key" "$ending_key" "$list_key"; do
    has_key "$key" || die "the registry has no $key"
done

say "Starting the installed program"
wine "$installed/vantrel.exe" >/dev/null 2>&1 </dev/null &
program=$!
sleep "${VANTREL_START_SECONDS:-5}"
kill -0 "$program" 2>/dev/null || die "the installed program has ended by itself"
quiet wine taskkill /f /im vantrel.exe || true
wait "$program" || true

say "Uninstalling"
touch "$installed/of-the-user.txt"
quiet wine "$installed/uninstall.exe" /S "_?=$(winepath -w "$installed" 2>/dev/null)"
rm "$installed/of-the-user.txt" || die "the uninstaller has removed a file of the user's"
rm -f "$installed/uninstall.exe" # called so, it stays behind
rmdir "$installed" || die "the uninstaller has left files: $(ls "$installed")"
[ ! -e "$menu" ] || die "the uninstaller has left its Start menu"
for key in "$type_key" "$ending_key" "$list_key"; do
    ! has_key "$key" || die "the uninstaller has left $key"
done
echo "Installed, started and uninstalled; nothing is left."
