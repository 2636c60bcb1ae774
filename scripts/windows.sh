# Shared by ./test and packaging/windows: what is built for Windows, and Wine as the tests need it.

. "$project/packaging/windows/qt.sh"
. "$project/packaging/windows/sqlite.sh"

wine_folder=$project/build/wine
export WINEPREFIX=$wine_folder WINEDEBUG=-all

# The simulated instrument, a program of this system, and the port at whose far end it answers.
serial_port=3
serial_link=$project/build/wine-com$serial_port
below=$project/build/windows-below

# Sets `windows_preset` and `windows_options`: the whole program where Qt for Windows is there or can
# be built, else the core; with a history where its library can be. What lacks is said.
choose_windows_build() {
    local sqlite qt
    windows_preset=windows windows_options=()
    if sqlite=$(windows_sqlite); then
        windows_options+=("-DVANTREL_WINDOWS_SQLITE=$sqlite")
    else
        say "Without the library of the history: no test of it runs"
    fi
    if [ "${VANTREL_BUILD_QT:-yes}" = no ] && ! windows_qt_is_kept; then
        say "No Qt for Windows is kept here: the core alone is tested, no screen is"
    elif qt=$(windows_qt); then
        windows_preset=windows-program
        windows_options+=("-DVANTREL_WINDOWS_QT=$qt" -DBUILD_TESTING=ON)
    else
        say "Without Qt for Windows: the core alone is tested, no screen is"
    fi
}

# Every file with tests is in the build, or stands with its reason in a list of those that are not.
check_left_out() {
    local list=$project/tests/left-out-on-windows.txt left
    left=$(cd "$project" && comm -23 \
        <(git ls-files 'tests/*.cpp' | xargs grep -lE '^TEST(_F|_P)?\(' | sort) \
        <(sed -n 's|.*"file": ".*/\(tests/.*\)".*|\1|p' "build/$windows_preset/compile_commands.json" |
            sort -u))
    say "$(wc -l <<<"$left") files of tests are not built for Windows"
    if [ "$windows_preset" != windows-program ] || [ ${#windows_options[@]} -lt 3 ]; then
        printf '%s\n' "$left"
    elif ! diff <(grep -o '^tests/[^ ]*' "$list" | sort) <(printf '%s\n' "$left"); then
        die "They are not those that ${list#"$project/"} gives the reasons for."
    fi
}

build_instrument() {
    say "Building the simulated instrument"
    cmake -S "$project" -B "$below" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVANTREL_SCREENS=OFF \
        -DBUILD_TESTING=OFF -DVANTREL_BENCH=OFF >/dev/null
    cmake --build "$below" --target vantrel-instrument -- --quiet
}

# Ports that this machine has are no business of the tests: one alone leads somewhere.
prepare_wine() {
    local number target
    mkdir -p "$wine_folder"
    {
        printf 'REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\Software\\Wine\\Ports]\n'
        for number in {1..16}; do
            target=/nowhere
            [ "$number" = "$serial_port" ] && target=$serial_link
            printf '"COM%d"="%s"\n' "$number" "$target"
        done
        # Wine hands on no variable of Qt's but from here. The screens' tests bring their fonts.
        printf '\n[HKEY_CURRENT_USER\\Environment]\n"QT_QPA_FONTDIR"="%s"\n' \
            'Z:\\usr\\share\\fonts\\truetype\\dejavu'
    } >"$wine_folder/tests.reg"
    # What Wine's server prints at its end must not come between the tests' lines.
    {
        wineboot --init
        wine regedit /S "$wine_folder/tests.reg"
        wineserver -k -w
    } >/dev/null 2>&1 </dev/null
    export VANTREL_INSTRUMENT=$below/bin/vantrel-instrument VANTREL_SERIAL_LINK=$serial_link
    # A run that was ended by force may have left its own at work.
    "$VANTREL_INSTRUMENT" --link "$serial_link" --send quit >/dev/null 2>&1 || true
}
