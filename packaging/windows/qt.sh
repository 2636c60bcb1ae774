# Shared by build.sh and ./test: Qt and the drawing engine for Windows, built from Debian's source
# packages by the cross compiler, kept in a cache.
#
#   windows_qt          prints the folder of the finished build; builds what is missing first.
#                       Fails where the sources cannot be fetched; what it says is on standard error.
#   windows_qt_is_kept  whether nothing is missing.

. "$(dirname "${BASH_SOURCE[0]}")/sources.sh"

windows_sources=(qt6-base qcustomplot qtsvg-opensource-src)

# The host's moc and uic must be of the version that is built.
windows_qt_packages=(g++-mingw-w64-x86-64-posix cmake ninja-build dpkg-dev perl python3
    qt6-base-dev qt6-base-dev-tools libqcustomplot-dev)

# Everything that the result depends on: versions, compiler, options, and how it is put together.
windows_qt_key() {
    key_of qt6-base-dev libqcustomplot-dev g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev -- \
        "$windows_folder"/{qt-options.txt,sources.sh,qt.sh,qcustomplot.cmake,svggenerator.cmake} \
        "$windows_folder/../../cmake/mingw-w64.cmake"
}

fetch_windows_sources() {
    local package version
    for package in "${windows_sources[@]}"; do
        version=
        case $package in
        qt6-base) version==$(version_of qt6-base-dev) ;;
        qcustomplot) version==$(dpkg-query -W -f='${source:Version}' libqcustomplot-dev) ;;
        esac
        fetch_source "$package$version" "$1" || return 1
    done
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

# In the folder `windows_work`, which goes with its gigabyte whatever comes of it.
build_windows_qt() {
    local prefix=$1
    rm -rf "$prefix"
    fetch_windows_sources "$windows_work/source" >&2 || return 1
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
    touch "$prefix/complete"
}

windows_qt_folder() {
    echo "$windows_cache/qt-$(version_of qt6-base-dev | cut -d+ -f1)-$(windows_qt_key)"
}

windows_qt_is_kept() { [ -e "$(windows_qt_folder)/complete" ]; }

windows_qt() {
    local windows_work=$windows_cache/work-$$ built=yes
    windows_qt_is_kept || build_windows_qt "$(windows_qt_folder)" || built=no
    rm -rf "$windows_work"
    [ $built = yes ] && windows_qt_folder
}
