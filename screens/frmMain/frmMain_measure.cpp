#include "app/Mcommon.h"
#include "files/FileOpr.h"
#include "link/CommPort.h"
#include "link/DataAcq.h"
#include "platform/Platform.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "screens/controls/BusyPointer.h"
#include "screens/controls/Colours.h"
#include "screens/frmMain/frmMain.h"
#include "settings/mWinInit.h"
#include "ui_frmMain.h"

#include <QResizeEvent>
#include <QScopeGuard>

namespace {

constexpr int titleLabel = 47;

constexpr const char* widestReading = "-8.88E+88";
constexpr int smallestFigure_pt = 16; ///< as the form is designed
constexpr int largestFigure_pt = 36;

/// Offsets of the channels' labels in lblEntry, in the order of the cells: mV, pH, ppm, mol/l, °C.
constexpr PerQuantity<int> cellLabels = {16, 24, 32, 64, 56};

int ChannelCount() {
    return mWinInit::HardwareSettings.ChannelCount;
}

QString OrElse(const std::string& text, const char* fallback) {
    return text.empty() ? QString(fallback) : Text::ToQt(text);
}

} // namespace

void frmMain::PrepareMeasuringPage() {
    AcceptCodePageOnly(*ui_->txtTimer);
    AcceptCodePageOnly(*ui_->txtComment);
    for (int i = 0; i < maxChannels; ++i) {
        for (const int offset : cellLabels) {
            QLabel& cell = lblEntry(offset + i);
            // Wide enough for any reading; the layout alone decides beyond that, never the text, so
            // that nothing moves when a figure changes.
            const QFontMetrics metrics = cell.fontMetrics();
            const int frame = 2 * (cell.margin() + cell.frameWidth());
            cell.setMinimumSize(metrics.horizontalAdvance(widestReading) + frame,
                                metrics.height() + frame);
            cell.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
            cell.setBackgroundRole(QPalette::Base);
            cell.setVisible(i < ChannelCount());
        }
        for (QLabel* label : {&lblChannel(i), &lblElectrode(i), &lblSerialNo(i), &lblSensor(i)})
            label->setVisible(i < ChannelCount());
    }
    lblEntry(cellLabels[Quantity::mV]).installEventFilter(this); // FitFigures
    ShowColours();
}

/// The largest figures that cells of this size hold.
void frmMain::FitFigures(QSize cellSize) {
    const QLabel& sample = lblEntry(cellLabels[Quantity::mV]);
    const int frame = 2 * (sample.margin() + sample.frameWidth());
    QFont font = sample.font();
    font.setBold(false);
    for (int size = largestFigure_pt; size >= smallestFigure_pt; --size) {
        font.setPointSize(size);
        const QFontMetrics metrics(font);
        if (metrics.horizontalAdvance(widestReading) + frame <= cellSize.width() &&
            metrics.height() + frame <= cellSize.height())
            break;
    }
    for (int i = 0; i < maxChannels; ++i)
        for (const int offset : cellLabels) {
            QLabel& cell = lblEntry(offset + i);
            font.setBold(cell.font().bold());
            cell.setFont(font);
        }
}

void frmMain::EnterMeasuringPage() {
    StoreEntries();
    MeasuringCycle::Source cycle{mWinInit::ConversionTables(), {}, {}, {}};
    for (int i = 0; i < ChannelCount(); ++i) {
        const auto position = static_cast<std::size_t>(i);
        cycle.selected[position] = chkSelect(i).isChecked() ? -1 : 0;
        cycle.tempSensor[position] = mWinInit::ChannelSetup[position].TempSensor;
        cycle.molarMass_g_per_mol[position] = mWinInit::ChannelSetup[position].MolarMass;
        ShowCells(i, {});
    }
    cycle_ = cycle;
    ShowChannelLabels();
    ui_->lblRec->setText("0");
    ui_->txtComment->clear();
    FileOpr::measuring = true;
    ShowPage(Page::measuring);
    tmrTime_Timer();
    tmrTime.start();
    StartReading();
    cmdPage(1).setFocus(Qt::OtherFocusReason);
}

void frmMain::LeaveMeasuringPage() {
    StopReading();
    FileOpr::measuring = false;
    tmrTime.stop();
    // Records that cannot be moved now stay in the temporary file; the next move takes them along.
    guard_("frmMain - FlushTempFile", [] {
        const BusyPointer busy;
        FileOpr::FlushTempFile();
    });
    ShowPage(Page::setup);
    cmdPage(0).setFocus(Qt::OtherFocusReason);
}

void frmMain::ShowChannelLabels() {
    for (int i = 0; i < ChannelCount(); ++i) {
        const auto& setup = mWinInit::ChannelSetup[static_cast<std::size_t>(i)];
        lblElectrode(i).setText(OrElse(setup.Electrode, "None"));
        lblSerialNo(i).setText(OrElse(setup.SerialNo, "N/A"));
        lblSensor(i).setText(setup.TempSensor > 0 ? QString::number(setup.TempSensor) : "0");
        for (QLabel* label : {&lblChannel(i), &lblElectrode(i), &lblSerialNo(i), &lblSensor(i)})
            label->setEnabled(chkSelect(i).isChecked());
    }
    ui_->lblAverage->setText(QString::number(mWinInit::HardwareSettings.AveragingForMeasurement));
}

void frmMain::StartReading() {
    reading_ = true;
    valuesShown_ = false;
    ShowRunState();
    BeginSeries();
    tmrRead.start();
    CommPort::BeginReading();
}

/// A new series of averages; the hourglass shows until its first set is there.
void frmMain::BeginSeries() {
    waiting_ = true;
    platform::Current().desktop.SetMousePointer(platform::MousePointer::hourglass);
    DataAcq::StartSeries(mWinInit::HardwareSettings.AveragingForMeasurement);
}

void frmMain::EndWaiting() {
    if (std::exchange(waiting_, false))
        platform::Current().desktop.SetMousePointer(platform::MousePointer::normal);
}

void frmMain::StopReading() {
    if (!std::exchange(reading_, false))
        return;
    tmrRead.stop();
    DataAcq::Reader().ReadingEnabled = false;
    CommPort::EndReading();
    EndWaiting();
    BlinkTitle(false);
    ShowProblem({}); // it is about readings that no longer come
}

void frmMain::tmrRead_Timer() {
    if (readTickAtWork_ || !reading_)
        return;
    readTickAtWork_ = true;
    const auto done = qScopeGuard([this] { readTickAtWork_ = false; });
    BlinkTitle(!titleRed_);
    if (CommPort::HasFailed())
        ReadingFailed();
    else if (CommPort::State() == CommPort::LinkState::answered)
        ReadAndShow();
}

void frmMain::BlinkTitle(bool red) {
    titleRed_ = red;
    QLabel& title = lblEntry(titleLabel);
    QPalette colours = title.palette();
    colours.setColor(QPalette::WindowText,
                     red ? Colours::BlinkOn(palette()) : Colours::BlinkOff(palette()));
    title.setPalette(colours);
}

void frmMain::ReadAndShow() {
    std::array<float, cyclePositions> averages{};
    DataAcq::ReadChannels(averages);
    // Events ran meanwhile: the read may have been abandoned, or a new series begun.
    if (!DataAcq::Reader().ReadingEnabled || !DataAcq::Reader().AveragePrimed)
        return;
    const MeasuringCycle::Outcome outcome = MeasuringCycle::Run(*cycle_, averages);
    for (int i = 0; i < ChannelCount(); ++i)
        ShowCells(i, outcome.cells[static_cast<std::size_t>(i)]);
    valuesShown_ = true;
    EndWaiting();
    ShowProblem(Text::ToQt(outcome.problem));
}

void frmMain::ShowProblem(const QString& problem) {
    if (problem == problemShown_)
        return;
    problemShown_ = problem;
    ui_->statusbar->showMessage(problem);
}

void frmMain::ShowCells(int channel, const ChannelDisplay::Cells& cells) {
    for (const auto& row : Quantities::table) {
        const Quantity kind = row.quantity;
        QLabel& label = lblEntry(cellLabels[kind] + channel);
        displayed_[static_cast<std::size_t>(channel)][kind] = cells[kind].text;
        const QString text = Text::ToQt(cells[kind].text);
        if (label.text() != text) {
            label.setText(text);
            label.setAccessibleDescription(text);
        }
        bool& marked = errorShown_[static_cast<std::size_t>(channel)][kind];
        if (std::exchange(marked, cells[kind].error) != cells[kind].error)
            Colours::MarkError(label, cells[kind].error);
    }
}

void frmMain::ShowColours() {
    BlinkTitle(titleRed_);
    for (std::size_t channel = 0; channel < errorShown_.size(); ++channel)
        for (const auto& row : Quantities::table)
            Colours::MarkError(lblEntry(cellLabels[row.quantity] + static_cast<int>(channel)),
                               errorShown_[channel][row.quantity]);
}

void frmMain::ReadingFailed() {
    StopReading();
    recording_.Stop();
    ShowRunState();
    Mcommon::MessageBoxEx(std::string(DataAcq::connectionMessage), platform::style::okOnly,
                          platform::style::exclamation);
}

void frmMain::AskAveraging() {
    const std::string answer = Mcommon::TrimControl(platform::Current().dialogs.AskText(
        "Input new averaging number for the measuring.", std::string(Mcommon::applicationTitle),
        Text::FromQt(ui_->lblAverage->text())));
    if (answer.empty())
        return;
    const auto averaging = SetupChecks::Averaging(answer);
    if (!averaging) {
        Mcommon::MessageBoxEx(std::string(SetupChecks::averagingRange), platform::style::okOnly,
                              platform::style::information);
        return;
    }
    mWinInit::HardwareSettings.AveragingForMeasurement = *averaging;
    if (reading_)
        BeginSeries();
    ui_->lblAverage->setText(Text::ToQt(answer));
    txtEntry(1).setText(Text::ToQt(answer));
}
