#pragma once

// What differs between the systems that the tour is taken on.

#include "link/PortChoice.h"
#include "tour/TourPlaces.h"

#ifdef _WIN32

#include "support/Win32Instrument.h"

/// Under Wine: the instrument is a program of the system below, at a port of its own.
class TourInstrument : public Win32Instrument {
public:
    explicit TourInstrument(const TourPlaces&) : Win32Instrument({"--fast"}) {}

    static constexpr int port = portNumber;

    /// Makes the port that it answers at the program's choice.
    static void ChoosePort() { SavePortChoice({9600, port}); }
};

/// The print dialog is the system's own, which no test can fill in.
inline constexpr bool printDialogIsOurs = false;
inline constexpr bool systemHasSimulatedInstrument = false;

#else

#include "support/InstrumentProcess.h"

/// At COM1, the program's own choice at first.
class TourInstrument : public InstrumentProcess {
public:
    explicit TourInstrument(const TourPlaces& places)
        : InstrumentProcess(places.ConfigurationFolder().parent_path(), {"--ideal", "--fast"}) {}

    static constexpr int port = 1;

    static void ChoosePort() {}
};

inline constexpr bool printDialogIsOurs = true;
inline constexpr bool systemHasSimulatedInstrument = true;

#endif
