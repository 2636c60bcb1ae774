#include "link/Link.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "base/RunTimeError.h"

#include <chrono>
#include <utility>

namespace {

constexpr std::chrono::milliseconds initialInterval{1000};

} // namespace

void Link::Attach(CommPort::Controls newControls) {
    controls = std::move(newControls);
    port.Attach(controls.MSComm1);
    status.Show = controls.SetStatusText;
    auto& control = port.Control();
    control.OnComm = [this](platform::SerialControl::Event event) {
        transfer.MSComm1_OnComm(event);
    };
    control.OnArrival = [this] {
        if (probe.IsRunning())
            probe.OnArrival();
        else
            transfer.MSComm1_OnArrival();
    };
    probe.Attach(controls.tmrProbe);
    ConnectSearch();
}

void Link::ConnectSearch() {
    search.TellStep = [this](const std::string& step) { status.Set(step); };
    search.TellEnd = [this](const std::optional<InstrumentSearch::Found>& found) {
        SearchEnded(found);
    };
}

void Link::Detach() {
    search.Stop();
    probe.Stop();
    probe.Attach(nullptr);
    transfer.EndReading();
    transfer.Cancel();
    if (port.IsAttached()) {
        port.Close();
        port.Control().OnComm = nullptr;
        port.Control().OnArrival = nullptr;
    }
    port.PortOK = false;
    port.Attach(nullptr);
    status.Show = nullptr;
    controls = {};
}

void Link::Initialize() {
    transfer.Readings.fill(0);
    if (auto* timer = controls.tmrTransferInterval)
        timer->SetInterval(initialInterval);
    choice = LoadPortChoice();
    keptChoice_.reset();
    if (!TryOpen())
        transfer.Fail(openProblem_);
    display_.Select(choice, port.AvailablePorts());
}

void Link::OpenPort(const PortChoice& portChoice) {
    EndProbing();
    transfer.Cancel();
    port.Open(portChoice);
    transfer.PortOpened();
}

/// Opens the choice in force, with its time-outs; the outcome is in PortOK, the reason of a failure
/// in openProblem_.
bool Link::TryOpen() {
    EndProbing();
    transfer.Cancel();
    openProblem_.clear();
    try {
        port.OpenWithTimeouts(choice);
    } catch (const RunTimeError& error) {
        openProblem_ = error.what();
        return false;
    }
    transfer.PortOpened();
    return true;
}

/// Back to the port that was open before a scan or a failed test.
void Link::Reopen() {
    if (!TryOpen())
        transfer.Fail(openProblem_);
}

void Link::Scan() {
    const bool wasOpen = search.IsRunning() ? wasOpenBeforeSearch_ : port.IsOpen();
    EndProbing();
    port.Scan();
    if (wasOpen)
        Reopen();
    display_.ShowPorts(port.AvailablePorts());
}

void Link::CheckForValidPort() {
    port.PortOK = false;
    const auto number = choice.PortNumber;
    if (number < 1) {
        status.Set("Please select a COM port.");
        return;
    }
    if (!port.IsAvailable(number)) {
        status.Set(PortName::Of(number) + " is unavailable. Please select a different port.");
        return;
    }
    if (!TryOpen())
        status.Set(openProblem_);
}

void Link::Test(const PortChoice& portChoice) {
    if (!Try(portChoice))
        return;
    keptChoice_.reset();
    status.Set("The test on Comm" + std::to_string(choice.PortNumber) + " is successful.");
    Keep(choice);
    AskInstrument();
}

/// Takes a choice into use; where that fails, the former one and its port stay and the status says
/// why.
bool Link::Try(const PortChoice& portChoice) {
    const bool wasOpen = port.IsOpen();
    const auto former = std::exchange(choice, portChoice);
    status.Set("");
    CheckForValidPort();
    if (port.PortOK)
        return true;
    choice = former;
    if (wasOpen && !port.IsOpen()) {
        // What the test was about; opening the port writes another text.
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const std::string result = status.Text();
        Reopen();
        status.Set(result);
    }
    port.PortOK = port.IsOpen();
    return false;
}

bool Link::UseSimulated(std::int16_t number) {
    const auto former = choice;
    Scan();
    if (!Try({choice.BitRate, number}))
        return false;
    if (!keptChoice_)
        keptChoice_ = former;
    simulatedHasEnded_ = false;
    SelectPort();
    status.Set("The simulated instrument is " + PortName::Of(number) + " until this program ends.");
    AskInstrument();
    return true;
}

/// A screen that reads keeps its port, so that it never goes on with another instrument's values.
void Link::SimulatedEnded() {
    if (!keptChoice_)
        return;
    simulatedHasEnded_ = IsScreenReading();
    if (simulatedHasEnded_)
        return;
    choice = *std::exchange(keptChoice_, std::nullopt);
    Reopen();
    display_.Select(choice, port.AvailablePorts());
}

/// Also while the link is lost and the screen's polling goes on.
bool Link::IsScreenReading() const {
    return transfer.IsReading() || transfer.IsLost();
}

void Link::AskInstrument() {
    if (IsScreenReading()) // its own polling shows the answer
        return;
    display_.ShowAnswer("The instrument is asked...");
    probe.Start(CommPort::transferTimeout,
                [this](const Probe::Answer& answer) { display_.ShowAnswer(TextOf(answer)); });
}

void Link::FindInstrument() {
    if (!controls.tmrProbe || IsScreenReading())
        return;
    wasOpenBeforeSearch_ = port.IsOpen();
    Scan();
    display_.ShowAnswer({});
    display_.ShowSearching(true);
    search.Start(choice.BitRate);
}

void Link::StopSearch() {
    if (!search.IsRunning())
        return;
    search.Stop();
    display_.ShowSearching(false);
    if (wasOpenBeforeSearch_)
        Reopen();
    status.Set("The search was stopped.");
}

void Link::SearchEnded(const std::optional<InstrumentSearch::Found>& found) {
    display_.ShowSearching(false);
    if (!found) {
        if (wasOpenBeforeSearch_)
            Reopen();
        status.Set("No instrument answered on any port.");
        return;
    }
    choice = found->choice;
    keptChoice_.reset();
    transfer.PortOpened();
    display_.Select(choice, port.AvailablePorts());
    status.Set("The instrument was found on " + PortName::Of(choice.PortNumber) + " at " +
               NumberText::Plain(choice.BitRate) + " bit/s.");
    display_.ShowAnswer(TextOf(found->values));
    Keep(choice);
}

/// Before the port is opened, scanned or closed for something else.
void Link::EndProbing() {
    if (search.IsRunning())
        display_.ShowSearching(false);
    search.Stop();
    if (!probe.IsRunning())
        return;
    probe.Stop();
    display_.ShowAnswer({});
}

void Link::BeginReading() {
    EndProbing();
    transfer.BeginReading();
}

void Link::TransferOnce() {
    EndProbing();
    transfer.TransferOnce();
}

void Link::Keep(const PortChoice& portChoice) const {
    try {
        SavePortChoice(portChoice);
    } catch (const RunTimeError& error) {
        Mcommon::Warn("The port settings hold for now, but could not be kept: " +
                      std::string(error.what()));
    }
}

void Link::ShowPresent() {
    if (simulatedHasEnded_)
        SimulatedEnded();
    display_.ShowAnswer({});
    transfer.ForgetOutcome();
    if (!transfer.IsReading())
        status.Set(port.IsOpen() ? std::string() : openProblem_);
}

void Link::SelectBitRate() const {
    display_.SelectBitRate(choice);
}

void Link::SelectPort() const {
    display_.SelectPort(choice, port.AvailablePorts());
}

/// That the instrument answers is said only while it is asked.
std::string Link::Text() const {
    const auto text = PortName::Of(choice.PortNumber) + (keptChoice_ ? " (simulated), " : ", ") +
                      NumberText::Plain(choice.BitRate) + " bit/s: ";
    const auto outcome = transfer.Outcome();
    if (port.PortOK && outcome == CommPort::LinkState::failed)
        return text + "no connection";
    if (!port.PortOK || !port.IsOpen())
        return text + "not open";
    if (!transfer.IsReading())
        return text + "open";
    const bool answered = outcome == CommPort::LinkState::answered;
    return text + (answered ? "the instrument answers" : "waiting for the instrument");
}

void Link::Close() {
    EndProbing();
    transfer.EndReading();
    transfer.Cancel();
    port.Close();
    status.TellObservers();
    Keep(keptChoice_.value_or(choice));
}
