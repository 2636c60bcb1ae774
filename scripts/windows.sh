# Shared by ./test and packaging/windows: Wine as the tests need it.

wine_folder=$project/build/wine
export WINEPREFIX=$wine_folder WINEDEBUG=-all

# The simulated instrument, a program of this system, and the port at whose far end it answers.
serial_port=3
serial_link=$project/build/wine-com$serial_port
below=$project/build/windows-below

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
    } >"$wine_folder/ports.reg"
    # What Wine's server prints at its end must not come between the tests' lines.
    {
        wineboot --init
        wine regedit /S "$wine_folder/ports.reg"
        wineserver -k -w
    } >/dev/null 2>&1 </dev/null
    export VANTREL_INSTRUMENT=$below/bin/vantrel-instrument VANTREL_SERIAL_LINK=$serial_link
}
