#include "screens/frmMain/MainScreenTest.h"

#include "files/MeasurementReader.h"
#include "link/CommPort.h"
#include "screens/frmPortSettings/frmPortSettings.h"
#include "screens/link/CourseInstrument.h"
#include "support/FakeBoxes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <iostream>

using namespace std::chrono_literals;

namespace {

namespace fs = std::filesystem;

/// Boxes of the measuring page: each prompt is handed to the test, and a file is chosen where one
/// is asked for.
class CourseBoxes : public fake::Boxes {
public:
    std::function<void(const std::string&)> opened;
    fs::path target;

    int ShowMessage(const std::string& prompt, int style, const std::string& caption) override {
        opened(prompt);
        return fake::Boxes::ShowMessage(prompt, style, caption);
    }
    std::optional<fs::path> ChooseFile(const platform::FileDialogRequest& /*request*/) override {
        return target;
    }
};

/// The measuring page over a pseudo-terminal with the forms' own timers, while by a fixed seed the
/// analyst presses what he can and the instrument does what it likes, also under a box.
class FormCourse : public MainScreenTest {
protected:
    FormCourse() {
        link.reset();
        boxes.whileOpen = [this] { InBox(); };
        boxes.opened = [this](const std::string& prompt) { JudgeBox(prompt); };
        boxes.target = platform.folder.Path() / "course.4ch";
        port = std::make_unique<frmPortSettings>();
        CommPort::fncInitializeComPort();
    }
    ~FormCourse() override { form.reset(); }

    std::string Place() const {
        return "seed " + std::to_string(instrument.seed) + ", step " + std::to_string(steps);
    }

    QTimer& Timer(const QObject& owner, const char* name) {
        return *owner.findChild<QTimer*>(name);
    }

    /// A timer that runs comes to its end now.
    void Hasten(const QObject& owner, const char* name) {
        if (Timer(owner, name).isActive())
            Timer(owner, name).start(1ms);
    }

    QAbstractButton& Button(std::size_t index) {
        return Element<QAbstractButton>(*form, "cmdPage", index);
    }

    /// A press of the analyst, where he can.
    void Press(std::size_t index) {
        if (Button(index).isEnabled() && Button(index).isVisibleTo(form.get()))
            QTest::mouseClick(&Button(index), Qt::LeftButton);
    }

    bool IsMeasuring() { return form->ShownPage() == frmMain::Page::measuring; }

    void Step() {
        ++steps;
        switch (instrument.Below(5)) {
        case 0:
            AnalystActs();
            break;
        case 1:
            Hasten(*form, "tmrRead");
            break;
        default:
            InstrumentActs();
        }
        Pass();
    }

    void AnalystActs() {
        switch (instrument.Below(5)) {
        case 0:
            Press(frmMain::switchPage);
            break;
        case 1:
            if (IsMeasuring()) {
                Find<QCheckBox>(*form, "chkResume").click();
                chosenAfterFailure = CommPort::HasFailed();
            }
            break;
        case 2:
            if (auto& mode = Find<QComboBox>(*form, "cboAcqr"); IsMeasuring() && mode.isEnabled())
                mode.setCurrentText(instrument.Below(2) == 0 ? "Manual" : "Automatic");
            break;
        default:
            Press(frmMain::run);
        }
    }

    void InstrumentActs() {
        switch (instrument.Below(6)) {
        case 0:
            instrument.manner = static_cast<Manner>(instrument.Below(instrument.manners));
            break;
        case 1:
            instrument.SendByItself();
            break;
        case 2:
            Hasten(*port, "tmrTimeout");
            break;
        case 3:
            if (instrument.Below(4) == 0)
                instrument.Unplug();
            break;
        case 4:
            instrument.Plug();
            break;
        default:
            Hasten(*port, "tmrTransferInterval");
        }
    }

    void Pass() {
        platform.clock.monotonic += 100ms; // an automatic run comes to its records
        QTest::qWait(static_cast<int>(instrument.Below(8)));
        EXPECT_TRUE(!CommPort::Busy() || Timer(*port, "tmrTimeout").isActive() || boxOpen ||
                    TimeOutHasRun())
            << "busy without an end, " << Place();
        if (!calm)
            JudgeValues();
    }

    /// The time-out runs a pass of the event loop after its timer has ended.
    bool TimeOutHasRun() {
        QCoreApplication::processEvents();
        return !CommPort::Busy() || Timer(*port, "tmrTimeout").isActive();
    }

    /// What stands in a mV cell, in tenths; nothing in an empty one.
    std::optional<int> Tenths(const QString& cell) {
        if (cell.trimmed().isEmpty())
            return std::nullopt;
        return static_cast<int>(std::lround(cell.trimmed().toDouble() * 10));
    }

    /// Events run between the channels of a reading, so each may be of another frame.
    void JudgeValues() {
        for (std::size_t channel = 0; channel < usedChannels; ++channel) {
            const auto shown = Tenths(CellText(firstCell_mV + channel));
            auto& judged = judged_.at(channel);
            EXPECT_TRUE(!shown || shown == judged || instrument.HasCarried(*shown))
                << *shown << " tenths of a mV were in no frame, " << Place();
            judged = shown;
        }
    }

    void JudgeBox(const std::string& prompt) {
        ++boxesSeen;
        EXPECT_FALSE(boxOpen) << "two boxes, " << Place() << ": " << prompt;
        EXPECT_TRUE(prompt.starts_with("Data transmission uncompleted: ") ||
                    prompt.starts_with("There are some problem on connection."))
            << prompt << ", " << Place();
        // A failure from before the choice is told all the same, and so is the end of a request
        // that was out when the page was left.
        EXPECT_TRUE(!IsMeasuring() || !Find<QCheckBox>(*form, "chkResume").isChecked() ||
                    std::exchange(chosenAfterFailure, false))
            << "a box though the run goes on, " << Place() << ": " << prompt;
    }

    /// While a box is open the analyst reaches nothing else.
    void InBox() {
        boxOpen = true;
        for (int i = 0; i < 4 && !calm; ++i) {
            ++steps;
            InstrumentActs();
            Pass();
        }
        boxOpen = false;
    }

    /// Whatever has happened, a good instrument is read after "&Start", or "Measure >".
    void JudgeRecovery() {
        calm = true;
        instrument.manner = Manner::good;
        instrument.Plug();
        QTest::qWait(10); // what is on its way from earlier faults, and the boxes that it brings
        if (RunButton() == "&Stop" && IsMeasuring())
            Press(frmMain::run);
        if (IsMeasuring() && RunButton() != "&Start")
            Press(frmMain::switchPage);
        instrument.Forget();
        Press(IsMeasuring() ? frmMain::run : frmMain::switchPage);
        const auto isRead = [this] {
            Hasten(*form, "tmrRead");
            const auto shown = Tenths(CellText(firstCell_mV));
            return shown && instrument.HasCarried(*shown);
        };
        EXPECT_TRUE(QTest::qWaitFor(isRead, 3000)) << CommPort::StatusText() << ", " << Place();
        EXPECT_EQ(RunButton(), "&Record") << Place();
        EXPECT_EQ(CommPort::State(), CommPort::LinkState::answered) << Place();
        ++recoveries;
        calm = false;
    }

    void JudgeRecords() {
        if (!fs::exists(boxes.target))
            return;
        const auto file = FileOpr::ReadMeasurementFile(boxes.target);
        EXPECT_TRUE(file.complete) << Place();
        records = file.records.size();
        for (const auto& record : file.records)
            for (std::size_t channel = 0; channel < usedChannels; ++channel) {
                const auto& cell = record.cells[channel][Quantity::mV];
                const auto recorded = Tenths(QString::fromStdString(cell));
                EXPECT_TRUE(recorded && instrument.HasEverCarried(*recorded))
                    << "\"" << cell << "\" was recorded and in no frame, " << Place();
            }
    }

    using Manner = CourseInstrument::Manner;
    static constexpr int firstCell_mV = 16;
    static constexpr int usedChannels = 3; ///< the fourth is "None" and not measured

    CourseBoxes boxes;
    fake::ServicesWithBoxes services{platform, boxes};
    CourseInstrument instrument{platform.places.ConfigurationFolder() / "ports" / "com1"};
    std::unique_ptr<frmPortSettings> port;
    std::array<std::optional<int>, usedChannels> judged_; ///< what was shown last
    std::size_t records = 0;
    int steps = 0;
    int recoveries = 0;
    int boxesSeen = 0;
    bool boxOpen = false;
    bool chosenAfterFailure = false; ///< going on was, and its box is still to come
    bool calm = false;               ///< boxes are answered and nothing else happens
};

} // namespace

TEST_F(FormCourse, Whatever_happens_a_good_instrument_is_read_again_and_no_value_is_made_up) {
    Open();
    const auto begin = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - begin < search::Length(20s) && !HasFailure()) {
        for (int i = 0; i < 30; ++i)
            Step();
        JudgeRecovery();
    }
    Press(frmMain::switchPage); // brings the records into their file
    JudgeRecords();
    std::cout << "seed " << instrument.seed << ": " << steps << " steps, " << recoveries
              << " recoveries, " << boxesSeen << " boxes, " << records << " records\n";
    EXPECT_GT(recoveries, 5);
    EXPECT_GT(boxesSeen, 0);
    EXPECT_GT(records, 0U);
}
