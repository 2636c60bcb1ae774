#include "LinkTest.h"

#include "link/Link.h"
#include "link/ReadingSeries.h"
#include "platform/qt/QtSerialControl.h"
#include "screens/controls/FormTimer.h"
#include "support/InstrumentProcess.h"

#include <cstdlib>

using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

/// A link of its own to a simulated instrument of its own, at the line's true speed: several can
/// run side by side.
class PolledLine {
public:
    PolledLine(const fs::path& home, std::int16_t number, std::vector<std::string> arguments) {
        fs::create_directories(home);
        arguments.insert(arguments.begin(), {"--ideal", "--com", std::to_string(number)});
        instrument_ = std::make_unique<InstrumentProcess>(home, arguments);
        timeoutTimer_.setTimerType(Qt::PreciseTimer);
        intervalTimer_.setTimerType(Qt::PreciseTimer);
        CommPort::Controls controls;
        controls.MSComm1 = &control_;
        controls.tmrTimeout = &timeout_;
        controls.tmrTransferInterval = &interval_;
        link.Attach(std::move(controls));
        link.choice = {9600, number};
        QObject::connect(
            &timeoutTimer_, &QTimer::timeout, &control_,
            [this] { link.transfer.tmrTimeout_Timer(); }, Qt::QueuedConnection);
        QObject::connect(&intervalTimer_, &QTimer::timeout, &control_,
                         [this] { link.transfer.tmrTransferInterval_Timer(); });
        observer_ = link.status.Observe([this] { Look(); });
    }
    ~PolledLine() {
        observer_.reset();
        link.Detach();
    }
    PolledLine(const PolledLine&) = delete;
    PolledLine& operator=(const PolledLine&) = delete;

    Link link;
    fs::path Device(int number) const { return instrument_->Link(number); }
    int Answers() const { return answers_; }
    int Failures() const { return failures_; }

private:
    void Look() {
        if (link.status.Text().starts_with("Data transfer completed") &&
            std::exchange(shown_, link.status.Text()) != link.status.Text())
            ++answers_;
        if (link.status.Text().empty())
            shown_.clear();
        if (link.transfer.Outcome() == CommPort::LinkState::failed)
            ++failures_;
    }

    std::unique_ptr<InstrumentProcess> instrument_;
    platform::QtSerialControl control_;
    QTimer timeoutTimer_;
    QTimer intervalTimer_;
    FormTimer timeout_{timeoutTimer_};
    FormTimer interval_{intervalTimer_};
    std::shared_ptr<void> observer_;
    std::string shown_;
    int answers_ = 0;
    int failures_ = 0;
};

/// How long the instruments are polled; longer when asked by hand.
std::chrono::seconds PollingTime() {
    const char* const asked = std::getenv("VANTREL_POLLING_SECONDS");
    return std::chrono::seconds(asked ? std::atoi(asked) : 10);
}

class LineSpeed : public LinkTest {
protected:
    void StartInstrument(std::vector<std::string> arguments = {}) {
        const auto home = platform.folder.Path() / "home";
        fs::create_directories(home);
        arguments.insert(arguments.begin(), "--ideal");
        instrument = std::make_unique<InstrumentProcess>(home, arguments);
        LinkPort(1, instrument->Link());
        StartProgram();
        ASSERT_TRUE(CommPort::PortOK()) << CommPort::StatusText();
    }

    std::unique_ptr<InstrumentProcess> instrument;
};

TEST_F(LineSpeed, Instruments_that_also_send_by_themselves_are_polled_without_a_failure_or_a_box) {
    const std::vector<const char*> periods = {"0.11", "0.23", "0.37", "0.51", "0.73",
                                              "0.97", "1.03", "1.49", "2.17", "3.01"};
    std::vector<std::unique_ptr<PolledLine>> lines;
    std::int16_t number = 0;
    for (const auto* period : periods) {
        ++number;
        const auto home = platform.folder.Path() / ("home" + std::to_string(number));
        lines.push_back(std::make_unique<PolledLine>(
            home, number, std::vector<std::string>{"--unsolicited", period}));
        LinkPort(number, lines.back()->Device(number));
    }
    for (auto& line : lines)
        line->link.transfer.BeginReading();

    QTest::qWait(static_cast<int>(std::chrono::milliseconds(PollingTime()).count()));

    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i]->Failures(), 0) << periods[i] << ": " << lines[i]->link.status.Text();
        EXPECT_GE(lines[i]->Answers(), PollingTime().count() * 7 / 10) << periods[i];
        lines[i]->link.transfer.EndReading();
    }
}

TEST_F(LineSpeed, Back_while_a_request_is_unanswered_and_Measure_at_once_reads_without_a_failure) {
    StartInstrument();
    instrument->Command("fault silence times 1");
    CommPort::BeginReading();
    QTest::qWait(300);
    CommPort::EndReading();

    CommPort::BeginReading();

    EXPECT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }, 1s));
    QTest::qWait(3000); // past the end of the first time-out
    EXPECT_FALSE(CommPort::HasFailed());
    CommPort::EndReading();
}

TEST_F(LineSpeed, A_bad_frame_is_told_once_though_the_next_poll_is_due_before_the_screens_tick) {
    StartInstrument();
    instrument->Command("fault badend");
    ExpectBadFrameMessage();
    QTimer tick;
    FormTimer readTimer(tick);
    ReadingSeries series(readTimer, {1500ms, 1500ms});
    std::array<float, cyclePositions> averages{};
    auto last = ReadingSeries::Tick::nothing;
    QObject::connect(&tick, &QTimer::timeout, &tick, [&] { last = series.OnTimer(averages); });
    series.Start(1);

    EXPECT_TRUE(WaitFor([&] { return last == ReadingSeries::Tick::failed; }));
    QTest::qWait(1500);
    EXPECT_EQ(platform.dialogs.beeps, 1);

    instrument->Command("fault none");
    series.Start(1); // at once, as an impatient analyst does
    EXPECT_TRUE(WaitFor([&] { return last == ReadingSeries::Tick::values; }));
}

TEST_F(LineSpeed, A_bad_frame_behind_good_ones_is_told_once_though_another_poll_is_due_first) {
    StartInstrument();
    QTimer tick;
    FormTimer readTimer(tick);
    ReadingSeries series(readTimer, {500ms, 2500ms}); // two polls between two ticks
    std::array<float, cyclePositions> averages{};
    auto last = ReadingSeries::Tick::nothing;
    QObject::connect(&tick, &QTimer::timeout, &tick, [&] { last = series.OnTimer(averages); });
    series.Start(1);
    ASSERT_TRUE(WaitFor([&] { return last == ReadingSeries::Tick::values; }));

    instrument->Command("fault badend");
    ExpectBadFrameMessage();

    EXPECT_TRUE(WaitFor([&] { return last == ReadingSeries::Tick::failed; }));
    EXPECT_EQ(platform.dialogs.beeps, 1);
}

} // namespace
