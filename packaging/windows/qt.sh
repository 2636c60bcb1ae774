# Shared by build.sh and ./test: Qt and the drawing engine for Windows, built from Debian's source
# packages by the cross compiler, kept in a cache.
#
#   windows_qt      prints the folder of the finished build; builds what is missing first.
#                   Fails where the sources cannot be fetched; what it says is on standard error.

windows_folder=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
windows_cache=${XDG_CACHE_HOME:-$HOME/.cache}/vantrel-windows
windows_sources=(qt6-base qcustomplot qtsvg-opensource-src)

# The host's moc and uic must be of the version that is built.
windows_qt_packages=(g++-mingw-w64-x86-64-posix cmake ninja-build dpkg-dev perl python3
    qt6-base-dev qt6-base-dev-tools libqcustomplot-dev)

version_of() { dpkg-query -W -f='${Version}' "$1"; }

# Everything that the result depends on: versions, compiler, options, and how it is put together.
windows_qt_key() {
    {
        version_of qt6-base-dev
        version_of libqcustomplot-dev
        version_of g++-mingw-w64-x86-64-posix
        version_of mingw-w64-x86-64-dev
        cat "$windows_folder/qt-options.txt" "$windows_folder/qt.sh" \
            "$windows_folder/qcustomplot.cmake" "$windows_folder/svggenerator.cmake" \
            "$windows_folder/../../cmake/mingw-w64.cmake"
    } | sha256sum | cut -c1-16
}

# apt with source packages switched on, in a folder of its own: the machine's setup stays as it is.
# The places are those from which the machine has its own Debian packages.
source_apt() {
    local folder=$windows_cache/apt
    mkdir -p "$folder"/{parts,lists/partial,cache/archives/partial}
    local options=(-qq -o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$folder/parts"
        -o "Dir::State::Lists=$folder/lists" -o "Dir::Cache=$folder/cache" -o APT::Sandbox::User=root)
    if [ ! -s "$folder/parts/sources.list" ]; then
        apt-get indextargets --format 'deb-src $(REPO_URI) $(RELEASE) $(COMPONENT)' \
            'Created-By: Packages' 'Origin: Debian' | sort -u >"$folder/parts/sources.list"
        [ -s "$folder/parts/sources.list" ] || return 1
        apt-get "${options[@]}" update || return 1
    fi
    apt-get "${options[@]}" "$@"
}

fetch_windows_sources() {
    local folder=$1 package version
    mkdir -p "$folder"
    for package in "${windows_sources[@]}"; do
        version=
        case $package in
        qt6-base) version==$(version_of qt6-base-dev) ;;
        qcustomplot) version==$(dpkg-query -W -f='${source:Version}' libqcustomplot-dev) ;;
        esac
        (cd "$folder" && source_apt --download-only source "$package$version") || return 1
        dpkg-source --no-check -x "$folder/$package"_*.dsc "$folder/$package" >/dev/null || return 1
    done
}

# cross_build NAME SOURCE PREFIX [option...]: configures, builds and installs one of them.
cross_build() {
    local name=$1 source=$2 prefix=$3 work=$windows_work/build-$1
    shift 3
    {
        cmake -S "$source" -B "$work" -G Ninja -DCMAKE_INSTALL_PREFIX="$prefix" \
            -DCMAKE_TOOLCHAIN_FILE="$windows_folder/../../cmake/mingw-w64.cmake" "$@" &&
            cmake --build "$work" --parallel "${VANTREL_JOBS:-$(nproc)}" &&
            cmake --install "$work"
    } >"$windows_work/$name.log" 2>&1 && return
    echo "Building $name for Windows failed:" >&2
    tail -n 40 "$windows_work/$name.log" >&2
    return 1
}

# The licence texts of what the program carries.
collect_licences() {
    local source=$1 folder=$2 package
    mkdir -p "$folder"
    cp "$source"/qt6-base/LICENSES/*.txt "$folder"
    for package in "${windows_sources[@]}"; do
        cp "$source/$package/debian/copyright" "$folder/$package.txt"
    done
    for package in gcc-mingw-w64-x86-64-posix-runtime mingw-w64-x86-64-dev; do
        cp "/usr/share/doc/$package/copyright" "$folder/$package.txt"
    done
}

build_windows_qt() {
    local prefix=$1
    local windows_work=$windows_cache/work-$$
    rm -rf "$prefix" "$windows_work"
    fetch_windows_sources "$windows_work/source" >&2 || {
        rm -rf "$windows_work" "$windows_cache/apt"
        echo "The source packages of ${windows_sources[*]} cannot be fetched here." >&2
        return 1
    }
    echo "Building Qt for Windows, once: about half an hour of processor time" >&2
    cross_build qt6-base "$windows_work/source/qt6-base" "$prefix" \
        $(cat "$windows_folder/qt-options.txt") || return 1
    local piece
    for piece in qcustomplot svggenerator; do
        mkdir -p "$windows_work/$piece"
        cp "$windows_folder/$piece.cmake" "$windows_work/$piece/CMakeLists.txt"
        cross_build "$piece" "$windows_work/$piece" "$prefix" -DCMAKE_BUILD_TYPE=Release \
            "-DVANTREL_WINDOWS_QT=$prefix" "-DSOURCES=$windows_work/source" || return 1
    done
    collect_licences "$windows_work/source" "$prefix/licences"
    rm -rf "$windows_work"
    touch "$prefix/complete"
}

windows_qt() {
    local prefix
    prefix=$windows_cache/qt-$(version_of qt6-base-dev | cut -d+ -f1)-$(windows_qt_key)
    [ -e "$prefix/complete" ] || build_windows_qt "$prefix" || return 1
    echo "$prefix"
}
