#!/usr/bin/env bash
# Builds the Debian package from a build folder, checks it, installs it, starts what it holds and
# removes it again. Installs and removes packages of this computer: for CI and for throw-away systems.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh
build_folder=${1:-build/release}

say "Building the package"
rm -f "$build_folder"/vantrel_*.deb
(cd "$build_folder" && cpack -G DEB >cpack.log) || { cat "$build_folder/cpack.log"; exit 1; }
package=$(readlink -f "$build_folder"/vantrel_*.deb)
dpkg-deb --info "$package"
dpkg-deb --contents "$package"

say "Checking its files"
unpacked=$(mktemp -d)
trap 'rm -rf "$unpacked"' EXIT
dpkg-deb --extract "$package" "$unpacked"
desktop-file-validate "$unpacked"/usr/share/applications/vantrel.desktop
appstreamcli validate --no-net --pedantic "$unpacked"/usr/share/metainfo/*.metainfo.xml
as_lintian=(lintian --fail-on error,warning)
[ "$(id -u)" = 0 ] && as_lintian+=(--allow-root)
"${as_lintian[@]}" "$package"
# As the package system does behind the installation.
update-mime-database "$unpacked/usr/share/mime"
grep -q '^application/x-vantrel-measurement:\*\.4ch$' "$unpacked/usr/share/mime/globs" ||
    die "Measurement files have no type"
for text in SetupHlp AcqurHlp CalibHlp ViewHlp HistHlp; do
    [ -s "$unpacked/usr/share/vantrel/$text.txt" ] || die "$text.txt is missing"
done

say "Installing it"
as_root apt-get update -qq
as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "$package" >/dev/null
mapfile -t installed < <(dpkg -L vantrel)

# remove_package MODE: afterwards nothing of the package may be left.
remove_package() {
    as_root dpkg "$1" vantrel
    local left=() path
    for path in "${installed[@]}"; do
        # Folders that other packages share stay.
        if [ -f "$path" ] || [ -L "$path" ] || [[ $path == */vantrel && -d $path ]]; then
            left+=("$path")
        fi
    done
    [ ${#left[@]} = 0 ] || die "Left behind: ${left[*]}"
}

say "Starting the simulated instrument"
vantrel-instrument --help >"$unpacked/help" && sed -n 1,3p "$unpacked/help"
vantrel-instrument --version

say "Starting the program for measurement files"
vantrel-file --version
[ -s /usr/share/bash-completion/completions/vantrel-file ] || die "Its completion is missing"
[ -s /usr/share/man/man1/vantrel-file.1.gz ] || die "Its manual page is missing"

say "Starting the program as a new user"
home=$unpacked/home
mkdir -p "$home"
seconds=5
status=0
env -i PATH="$PATH" HOME="$home" LANG=C.UTF-8 xvfb-run -a \
    timeout --signal=TERM "$seconds" vantrel >"$unpacked/log" 2>&1 || status=$?
cat "$unpacked/log"
# 124: it was still running when its time was over.
[ "$status" = 124 ] || die "The program ended by itself with status $status"
[ -d "$home/.config/Vantrel" ] || die "The program has made no configuration folder"

say "Removing and purging it"
remove_package --remove
remove_package --purge
[ -d "$home/.config/Vantrel" ] || die "The user's own files were removed"
say "The package is in order: $package"
