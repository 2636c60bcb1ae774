#!/usr/bin/env bash
# Makes the program for Windows from a bare Debian 12: a zip to unpack and start, and an installer.
# Qt is built once, which takes about half an hour of processor time, and kept in a cache; what is
# made lies in build/windows-program/package.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/common.sh
. packaging/windows/qt.sh
. packaging/windows/sqlite.sh

install_missing "${build_packages[@]}" "${windows_packages[@]}" "${windows_qt_packages[@]}" \
    "${windows_sqlite_packages[@]}" "${windows_packaging_packages[@]}"
qt=$(windows_qt) && sqlite=$(windows_sqlite) || die "The program for Windows cannot be built here."
build windows-program "-DVANTREL_WINDOWS_QT=$qt" "-DVANTREL_WINDOWS_SQLITE=$sqlite" \
    -DBUILD_TESTING=OFF
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/windows-program/CMakeCache.txt)
say "Packaging"
packaging/windows/package.sh build/windows-program/bin/vantrel.exe \
    build/windows-program/packaging/windows/vantrel.ico "$version" \
    "$PWD/build/windows-program/package" "$qt/licences" "$sqlite/licences"
