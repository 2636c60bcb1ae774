# The library that keeps the history, for Windows: SQLiteCpp, whose source brings SQLite along.
#
#   windows_sqlite  prints the folder of the finished build; builds what is missing first, in a minute.
#                   Fails where the source cannot be fetched; what it says is on standard error.

. "$(dirname "${BASH_SOURCE[0]}")/sources.sh"

windows_sqlite_packages=(g++-mingw-w64-x86-64-posix cmake ninja-build dpkg-dev libsqlitecpp-dev)

build_windows_sqlite() {
    local prefix=$1
    local windows_work=$windows_cache/work-sqlite-$$
    local source=$windows_work/source
    rm -rf "$prefix"
    fetch_source "sqlitecpp=$(version_of libsqlitecpp-dev | sed 's/+b[0-9]*$//')" "$source" >&2 &&
        cross_build sqlitecpp "$source/sqlitecpp" "$prefix" -DCMAKE_BUILD_TYPE=Release \
            -DSQLITECPP_RUN_CPPLINT=OFF -DSQLITECPP_RUN_CPPCHECK=OFF &&
        mkdir -p "$prefix/licences" &&
        cp "$source/sqlitecpp/debian/copyright" "$prefix/licences/sqlitecpp.txt" &&
        touch "$prefix/complete"
    local done=$?
    rm -rf "$windows_work"
    return $done
}

windows_sqlite() {
    local prefix
    prefix=$windows_cache/sqlite-$(key_of libsqlitecpp-dev g++-mingw-w64-x86-64-posix \
        mingw-w64-x86-64-dev -- "$windows_folder"/{sources,sqlite}.sh \
        "$windows_folder/../../cmake/mingw-w64.cmake")
    [ -e "$prefix/complete" ] || build_windows_sqlite "$prefix" || return 1
    echo "$prefix"
}
