#pragma once

#include "link/Controls.h"
#include "link/InstrumentSearch.h"
#include "link/LinkStatus.h"
#include "link/Port.h"
#include "link/PortDisplay.h"
#include "link/Probe.h"
#include "link/Transfer.h"

#include <cstdint>
#include <optional>
#include <string>

/// The program's link to the instrument: which port, its opening and test, and the transfer over
/// it. CommPort is its face.
class Link {
public:
    Link() = default;
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    PortChoice choice;
    Port port;
    LinkStatus status;
    CommPort::Controls controls;
    Transfer transfer{port, choice, controls, status};
    Probe probe{port};
    InstrumentSearch search{port, probe};

    /// Takes the controls into use and connects the serial control's events.
    void Attach(CommPort::Controls newControls);

    /// The controls go away: closes the port and forgets them.
    void Detach();

    /// Start-up: the stored choice, the port opened where possible.
    void Initialize();

    /// Opens the port and ends a transfer under way. Throws as Port::Open.
    void OpenPort(const PortChoice& portChoice);

    /// Port::Scan in the middle of whatever the link does: what was open is open again afterwards.
    void Scan();

    /// Opens the chosen port when the last scan found it, else says in the status why not.
    void CheckForValidPort();

    /// Takes a choice into use: tests it, keeps it when the test succeeds and says so in the
    /// status; otherwise the former choice and its port stay. A store that cannot be written is
    /// told in a box; the choice then holds until the program ends. Where no screen reads, the
    /// instrument is asked then, and its answer told below the status.
    void Test(const PortChoice& portChoice);

    /// Scans, takes the port of the simulated instrument into use for this session alone, says so
    /// in the status and asks it; the store keeps the former choice. False, with the reason in the
    /// status, where the port cannot be opened.
    bool UseSimulated(std::int16_t number);

    /// The simulated instrument has gone: the former choice is in use again, at ShowPresent where a
    /// screen reads.
    void SimulatedEnded();

    /// Tries every port that can be opened at every bit rate; the first instrument that answers is
    /// the choice from then on. Nothing while a screen reads.
    void FindInstrument();

    /// Ends the search; the former port is open again where it was.
    void StopSearch();

    /// A screen starts to read, or one transfer is wanted: a question of the port test or of the
    /// search ends without a word.
    void BeginReading();
    void TransferOnce();

    /// Makes status and text tell the present instead of what an earlier test or reading met: why
    /// the port is not open, or nothing.
    void ShowPresent();

    /// Select the values in force in the two lists; a value without entry leaves the selection.
    void SelectBitRate() const;
    void SelectPort() const;

    /// Port and state for a status line, for example "COM5, 9600 bit/s: the instrument answers".
    std::string Text() const;

    /// On program exit: closes the port and saves the choice, with Test's box where it cannot.
    void Close();

private:
    bool Try(const PortChoice& portChoice);
    bool TryOpen();
    void Reopen();
    void ConnectSearch();
    bool IsScreenReading() const;
    void AskInstrument();
    void SearchEnded(const std::optional<InstrumentSearch::Found>& found);
    void EndProbing();
    void Keep(const PortChoice& portChoice) const;

    PortDisplay display_{controls};
    std::optional<PortChoice> keptChoice_; ///< of the store, while the simulated one is in use
    bool simulatedHasEnded_ = false;       ///< while a screen read
    bool wasOpenBeforeSearch_ = false;
    std::string openProblem_; ///< why the last opening failed; empty where it succeeded
};
