# Shared by ./run, ./test and .ci/run: the packages of each task, and how they are installed.

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export LC_ALL=C.UTF-8

build_packages=(g++ cmake ninja-build qt6-base-dev qt6-serialport-dev qt6-svg-dev libqcustomplot-dev
    libqcustomplot2.1-qt6 nettle-dev libsqlitecpp-dev libsqlite3-dev libgtest-dev libbenchmark-dev)
# Qt's offscreen and X11 platforms need fonts; xvfb gives a display where there is none.
run_packages=(xvfb xauth fonts-dejavu-core libqt6svg6)
test_packages=(poppler-utils cups cups-client cups-filters ghostscript dbus-daemon shared-mime-info
    at-spi2-core openbox libfaketime)
clang_packages=(clang clang-tidy clang-format libclang-rt-14-dev lld)
mutation_packages=(clang libclang1-14 python3 python3-clang-14)
# Two of them draw the program's icon.
windows_packages=(g++-mingw-w64-x86-64-posix googletest wine wine64 librsvg2-bin icoutils)
windows_packaging_packages=(nsis zip)
packaging_packages=(dpkg-dev fakeroot file lintian appstream desktop-file-utils shared-mime-info)

say() { printf '\n== %s\n' "$*"; }
die() { printf '%s\n' "$*" >&2; exit 1; }

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "Packages are missing and this user may not install them. As root: $*"
    fi
}

install_missing() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
            missing+=("$package")
    done
    [ ${#missing[@]} = 0 ] && return
    say "Installing ${missing[*]}"
    as_root apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null
}

# A build folder that came along with a copy of the project belongs to the place it was made in.
refuse_copied_build() {
    local folder=$1 home
    [ -f "$folder/CMakeCache.txt" ] || return 0
    home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$folder/CMakeCache.txt")
    [ "$home" -ef "$project" ] ||
        die "The folder $folder was built in another place ($home)." \
            "Remove it, and start again:  rm -r '$folder'"
}

# build PRESET [cmake option...]: configures and builds everything of a preset.
build() {
    local preset=$1
    shift
    refuse_copied_build "$project/build/$preset"
    say "Building ($preset)"
    local launcher=()
    command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    cmake --preset "$preset" "${launcher[@]}" "$@" >/dev/null
    cmake --build --preset "$preset" -- --quiet
}
