#include "screens/frmHistory/frmHistory.h"

#include "app/Mcommon.h"
#include "base/CodePage.h"
#include "base/DateText.h"
#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "chem/TheoreticalSlope.h"
#include "history/Notes.h"
#include "platform/Platform.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "report/HistoryCsv.h"
#include "screens/controls/Colours.h"
#include "screens/controls/Placement.h"
#include "screens/controls/Wiring.h"
#include "settings/CalibrationAge.h"
#include "ui_frmHistory.h"

#include <QHeaderView>

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::size_t chainRowsAtOnce = 500;
constexpr std::size_t mostEvents = 5000; ///< in the table; a shorter time shows the others
constexpr int daysShown = 30;
constexpr int rowSpace_px = 6; ///< above and below a line
constexpr int allKinds = -1;
constexpr auto helpFile = "HistHlp.txt";
constexpr auto csvFilters = "Comma-separated values (*.csv)|*.csv|"
                            "Comma-separated values for spreadsheets (*.csv)|*.csv";

std::string MomentText(const LocalTime& time) {
    return DateText::Date(time) + " " + DateText::TimeOfDay(time);
}

std::string ChannelText(const std::optional<int>& channel) {
    return channel ? std::to_string(*channel + 1) : std::string();
}

std::string Decimal(const std::optional<float>& value) {
    return value ? NumberText::Format(*value, NumberText::Pattern::oneDecimal) : std::string();
}

bool IsUnusual(const History::PastCalibration& past) {
    return past.slope_percent && !TheoreticalSlope::IsUsual(*past.slope_percent);
}

std::array<std::string, 11> CellsOf(const History::PastCalibration& past) {
    return {MomentText(past.at),
            ChannelText(past.channel),
            past.unit,
            past.points,
            past.slopes,
            Decimal(past.slope_percent) + (IsUnusual(past) ? " !" : ""),
            Decimal(past.offset_mV),
            past.temperature_celsius,
            past.reference,
            past.referenceSerialNo,
            past.analyst};
}

std::array<std::string, 7> CellsOf(const History::Entry& entry) {
    return {MomentText(entry.at),
            std::string(History::NameOf(entry.kind)),
            ChannelText(entry.channel),
            entry.text,
            entry.file,
            entry.analyst,
            entry.user};
}

QString NameOf(const History::KnownElectrode& electrode) {
    return Text::ToQt(electrode.electrode +
                      (electrode.serialNo.empty() ? "" : ", " + electrode.serialNo));
}

void SetHeads(QTableWidget& table, const QStringList& heads) {
    table.setColumnCount(static_cast<int>(heads.size()));
    table.setHorizontalHeaderLabels(heads);
    table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + rowSpace_px);
}

/// Fills a row; a marked one is to be looked at.
template <class Cells>
void FillRow(QTableWidget& table, int row, const Cells& cells, bool marked = false) {
    int column = 0;
    for (const std::string& cell : cells) {
        auto* item = new QTableWidgetItem(Text::ToQt(cell)); // the table owns it
        if (marked) {
            QFont bold = item->font();
            bold.setBold(true);
            item->setFont(bold);
            item->setForeground(Colours::Caution(table.palette()));
        }
        table.setItem(row, column++, item);
    }
}

std::string DayText(const QDate& day, const char* time) {
    return day.toString("yyyy-MM-dd").toStdString() + " " + time;
}

} // namespace

frmHistory::frmHistory(History::Log& log, QWidget* parent)
    : QDialog(parent), log_(log), ui_(std::make_unique<Ui::frmHistory>()) {
    ui_->setupUi(this);
    txtAge = ControlArray<QSpinBox>(*this, "txtAge");
    tmrChain_.setParent(this);
    tmrChain_.setObjectName("tmrChain");
    tmrChain_.setInterval(0);
    guard_("frmHistory - Form_Load", [this] { Form_Load(); });
    WireControls(); // comes last, so that loading calls no handler
    Mcommon::FitOntoScreen(*this);
}

frmHistory::~frmHistory() = default;

void frmHistory::WireControls() {
    const Wiring wire(*this, guard_, "frmHistory");
    wire(ui_->cboElectrode, &QComboBox::currentIndexChanged, "cboElectrode",
         &frmHistory::cboElectrode_Click);
    wire(ui_->cboKind, &QComboBox::currentIndexChanged, "cboKind", &frmHistory::ShowEvents);
    wire(ui_->txtFrom, &QDateEdit::dateChanged, "txtFrom", &frmHistory::ShowEvents);
    wire(ui_->txtTo, &QDateEdit::dateChanged, "txtTo", &frmHistory::ShowEvents);
    wire(ui_->txtSearch, &QLineEdit::textChanged, "txtSearch", &frmHistory::ShowEvents);
    wire(txtAge, &QSpinBox::valueChanged, "txtAge", &frmHistory::txtAge_Change);
    wire(ui_->cmdCsv, &QPushButton::clicked, "cmdCsv", &frmHistory::cmdCsv_Click);
    wire(ui_->cmdHelp, &QPushButton::clicked, "cmdHelp", &frmHistory::cmdHelp_Click);
    wire(&tmrChain_, &QTimer::timeout, "tmrChain", &frmHistory::tmrChain_Timer);
    connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

void frmHistory::Form_Load() {
    FillLists();
    ShowAges();
    try {
        chain_.emplace(log_.Opened());
        electrodes_ = History::CalibratedElectrodes(log_);
    } catch (const RunTimeError& error) {
        ui_->lblChain->setText("There is no history to show: " + Text::ToQt(error.what()));
        ui_->graHistory->ShowCalibrations({}, "There is no history to show.");
        ui_->tabHistory->setEnabled(false);
        ui_->cmdCsv->setEnabled(false);
        return;
    }
    for (const auto& electrode : electrodes_)
        ui_->cboElectrode->addItem(NameOf(electrode));
    ShowCalibrations();
    ShowEvents();
    ui_->lblChain->setText("Walking through all entries...");
    tmrChain_.start();
}

void frmHistory::FillLists() {
    SetHeads(*ui_->tblCalib, {"Time", "Channel", "Unit", "Points (standard mV)", "Slopes, mV",
                              "% of theory", "Offset, mV",
                              QString::fromLatin1("\xB0"
                                                  "C"),
                              "Reference", "Ref. S/N", "Analyst"});
    SetHeads(*ui_->tblEvents,
             {"Time", "Event", "Channel", "What happened", "File", "Analyst", "User"});
    ui_->cboKind->addItem("All", allKinds);
    for (const History::Kind kind : History::allKinds)
        ui_->cboKind->addItem(Text::ToQt(std::string(History::NameOf(kind))),
                              static_cast<int>(kind));
    const LocalTime now = platform::Current().clock.Now();
    const QDate today(now.year, now.month, now.day);
    for (QDateEdit* box : {ui_->txtFrom, ui_->txtTo}) {
        box->setLocale(QLocale::c()); // English months everywhere
        box->setDate(today);
    }
    ui_->txtFrom->setDate(today.addDays(-daysShown));
    AcceptCodePageOnly(*ui_->txtSearch);
}

void frmHistory::ShowElectrode(const History::KnownElectrode& electrode) {
    ui_->tabHistory->setCurrentWidget(ui_->pagCalibrations);
    const auto found = std::ranges::find(electrodes_, electrode);
    const int place = static_cast<int>(found - electrodes_.begin());
    if (found == electrodes_.end()) {
        electrodes_.push_back(electrode);
        ui_->cboElectrode->addItem(NameOf(electrode));
    }
    ui_->cboElectrode->setCurrentIndex(place);
}

void frmHistory::cboElectrode_Click() {
    ShowCalibrations();
}

/// The latest on top, as in the list of events; over time from left to right.
void frmHistory::ShowCalibrations() {
    const int chosen = ui_->cboElectrode->currentIndex();
    calibrations_.clear();
    if (chosen >= 0)
        calibrations_ =
            History::CalibrationsOf(log_, electrodes_.at(static_cast<std::size_t>(chosen)));
    ui_->graHistory->ShowCalibrations(
        calibrations_, chosen >= 0 ? "No calibration of this electrode has been taken down."
                                   : "No calibration has been taken down yet.");
    QTableWidget& table = *ui_->tblCalib;
    const int count = static_cast<int>(calibrations_.size());
    table.setRowCount(count);
    for (int row = 0; row < count; ++row) {
        const auto& past = calibrations_[calibrations_.size() - 1 - static_cast<std::size_t>(row)];
        FillRow(table, row, CellsOf(past), IsUnusual(past));
    }
    table.resizeColumnsToContents();
}

History::Wish frmHistory::WishNow() const {
    History::Wish wish;
    wish.from = DayText(ui_->txtFrom->date(), "00:00:00");
    wish.to = DayText(ui_->txtTo->date(), "23:59:59");
    wish.newestFirst = true;
    if (const int kind = ui_->cboKind->currentData().toInt(); kind != allKinds)
        wish.kind = static_cast<History::Kind>(kind);
    return wish;
}

void frmHistory::ShowEvents() {
    events_ = History::EventsWith(log_, WishNow(), Text::FromQt(ui_->txtSearch->text()));
    if (events_.size() > mostEvents)
        events_.resize(mostEvents);
    QTableWidget& table = *ui_->tblEvents;
    table.setRowCount(static_cast<int>(events_.size()));
    int row = 0;
    for (const History::NumberedEntry& event : events_)
        FillRow(table, row++, CellsOf(event.entry));
    table.resizeColumnsToContents();
}

void frmHistory::ShowAges() {
    const auto ages = mWinInit::LoadCalibrationAges();
    for (const auto& [index, hours] : {std::pair(pH, ages.pH_hours), std::pair(ion, ages.ion_hours),
                                       std::pair(redox, ages.redox_hours)}) {
        txtAge(index).setRange(0, mWinInit::CalibrationAges::longest_hours);
        txtAge(index).setSuffix(" h");
        txtAge(index).setSpecialValueText("never");
        txtAge(index).setKeyboardTracking(false); // a number is kept when it is whole
        txtAge(index).setValue(hours);
    }
}

void frmHistory::txtAge_Change(std::size_t /*Index*/) {
    const auto messages = mWinInit::SaveCalibrationAges(
        {txtAge(pH).value(), txtAge(ion).value(), txtAge(redox).value()});
    for (const std::string& message : messages)
        Mcommon::Warn(message);
    History::NoteSettings();
    Q_EMIT AgesChanged();
}

void frmHistory::tmrChain_Timer() {
    if (chain_->Step(chainRowsAtOnce))
        return;
    tmrChain_.stop();
    ui_->lblChain->setText(Text::ToQt(chain_->Text()));
    Colours::MarkError(*ui_->lblChain, chain_->Wrong().has_value());
}

void frmHistory::cmdCsv_Click() {
    const bool ofEvents = ui_->tabHistory->currentWidget() == ui_->pagEvents;
    std::size_t filter = 0;
    platform::FileDialogRequest request;
    request.kind = platform::FileDialogRequest::Kind::save;
    request.title = "Save CSV";
    request.fileName = ofEvents ? "events.csv" : "calibrations.csv";
    request.defaultExtension = "csv";
    request.filter = csvFilters;
    request.chosenFilter = &filter;
    auto target = platform::Current().dialogs.ChooseFile(request);
    if (!target)
        return;
    if (!target->has_extension())
        target->replace_extension(request.defaultExtension);
    Mreport::SaveCsv(
        *target, ofEvents ? Mreport::EventsCsv(events_) : Mreport::CalibrationsCsv(calibrations_),
        filter == 0 ? Mreport::CsvReader::any : Mreport::CsvReader::spreadsheet);
}

void frmHistory::cmdHelp_Click() {
    platform::Current().desktop.ShowHelpText(platform::Current().places.ProgramFolder() / helpFile);
}
