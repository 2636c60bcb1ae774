# Shared by qt.sh and sqlite.sh: Debian's source packages, built by the cross compiler into a cache.

windows_folder=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
windows_cache=${XDG_CACHE_HOME:-$HOME/.cache}/vantrel-windows

version_of() { dpkg-query -W -f='${Version}' "$1"; }

# key_of PACKAGE... -- FILE...: short for everything that a result depends on.
key_of() {
    {
        while [ "$1" != -- ]; do
            version_of "$1"
            shift
        done
        shift
        cat "$@"
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

# fetch_source PACKAGE[=VERSION] FOLDER: unpacked as FOLDER/PACKAGE.
fetch_source() {
    local package=${1%%=*} folder=$2
    mkdir -p "$folder"
    (cd "$folder" && source_apt --download-only source "$1") &&
        dpkg-source --no-check -x "$folder/$package"_*.dsc "$folder/$package" >/dev/null && return
    rm -rf "$windows_cache/apt" # lists of before may be the reason
    echo "The source package of $package cannot be fetched here." >&2
    return 1
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
