#include "screens/controls/CalibrationForm.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "link/DataAcq.h"
#include "platform/Platform.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "screens/controls/CalibrationTexts.h"
#include "screens/controls/Colours.h"
#include "screens/controls/Placement.h"
#include "settings/mWinInit.h"

#include <QEvent>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QSignalBlocker>

#include <algorithm>

using platform::style::exclamation;
using platform::style::okOnly;

namespace {
constexpr auto elapsedInterval = std::chrono::milliseconds(250);
constexpr auto steadyText = "steady";
} // namespace

CalibrationForm::CalibrationForm(std::string name, std::string complaint, QWidget* parent)
    : QDialog(parent), name_(std::move(name)), complaint_(std::move(complaint)) {
    tmrRead.setParent(this);
    tmrRead.setObjectName("tmrRead");
    connect(&tmrRead, &QTimer::timeout, this,
            [this] { Guarded("tmrRead_Timer", [this] { tmrRead_Timer(); }); });
    tmrElapsed.setParent(this);
    tmrElapsed.setObjectName("tmrElapsed");
    tmrElapsed.setInterval(elapsedInterval);
    connect(&tmrElapsed, &QTimer::timeout, this,
            [this] { Guarded("tmrElapsed_Timer", [this] { tmrElapsed_Timer(); }); });
}

CalibrationForm::~CalibrationForm() = default;

void CalibrationForm::Guarded(const std::string& handler, const std::function<void()>& work) const {
    guard_(name_ + " - " + handler, work);
}

// ---- The controls ----------------------------------------------------------------------------

void CalibrationForm::TakeControls(const ControlArray<QLineEdit>& entries) {
    cboCalibPtrs = findChild<QComboBox*>("cboCalibPtrs");
    cboUnits = findChild<QComboBox*>("cboUnits");
    lblElapsed = findChild<QLabel*>("lblElapsed");
    lblInfo = ControlArray<QLabel>(*this, "lblInfo");
    lblPoint = ControlArray<QLabel>(*this, "lblPoint");
    lblMark = ControlArray<QLabel>(*this, "lblMark");
    cmdSys = ControlArray<QPushButton>(*this, "cmdSys");
    for (const auto& [point, entry] : entries)
        entries_.push_back(entry);
    FillPointCounts();
    FillUnits();
    Mcommon::FitOntoScreen(*this);
}

void CalibrationForm::ConnectControls() {
    cmdSys.Connect(*this, &QPushButton::clicked,
                   [this](int Index) { Guarded("cmdSys_Click", [&] { cmdSys_Click(Index); }); });
    // However a list is changed (mouse, wheel, keys, an assistive tool), the points must follow.
    connect(cboCalibPtrs, &QComboBox::currentIndexChanged, this,
            [this] { Guarded("cboCalibPtrs_Click", [this] { cboCalibPtrs_Click(); }); });
    connect(cboUnits, &QComboBox::currentIndexChanged, this,
            [this] { Guarded("cboUnits_Click", [this] { cboUnits_Click(); }); });
    for (QLineEdit* entry : entries_)
        ConnectEntry(*entry);
}

void CalibrationForm::ConnectEntry(QLineEdit& entry) {
    AcceptCodePageOnly(entry);
    entry.installEventFilter(this);
    // Also what an assistive tool sets counts, not only what is typed.
    connect(&entry, &QLineEdit::textChanged, this,
            [this] { Guarded("txtEntry_Change", [this] { EntryChanged(); }); });
}

// ---- Closing and storing ---------------------------------------------------------------------

void CalibrationForm::reject() {
    Guarded("Form_QueryUnload", [this] {
        closeWanted_ = series_.IsAtWork(); // a form that deletes itself waits for the tick to end
        if (boxOpen_ || closeWanted_ || !Form_QueryUnload())
            return;
        StopReading();
        QDialog::reject();
    });
}

std::int16_t CalibrationForm::Ask(const std::string& question) {
    const QScopedValueRollback open(boxOpen_, true);
    return Mcommon::MessageBoxEx(question, platform::style::yesNo, exclamation,
                                 platform::style::defaultButton2);
}

void CalibrationForm::Store(int channel, CalibrationRecord record, const std::string& date) {
    const auto slot = static_cast<std::size_t>(channel);
    record.CalibrationDate = date;
    mWinInit::Calibration.at(slot) = record;
    const auto losses = mWinInit::SaveCalibrationInfo(mWinInit::ChannelSetup.at(slot).Electrode,
                                                      static_cast<std::int16_t>(channel));
    Q_EMIT CalibrationStored(channel);
    for (const std::string& loss : losses)
        Mcommon::MessageBoxEx(loss, okOnly, exclamation);
}

void CalibrationForm::ShowHelp() const {
    const platform::Services& services = platform::Current();
    services.desktop.ShowHelpText(services.places.ProgramFolder() / CalibrationTexts::helpFile);
}

void CalibrationForm::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    // Whoever opened the form has shown the hourglass while it was loading.
    if (!series_.IsRunning())
        platform::Current().desktop.SetMousePointer(platform::MousePointer::normal);
}

// ---- The entry fields of the standards -------------------------------------------------------

bool CalibrationForm::eventFilter(QObject* watched, QEvent* event) {
    const auto found = std::ranges::find(entries_, watched);
    if (found != entries_.end()) {
        QLineEdit& entry = **found;
        const bool blank = StandardEntry::IsBlank(entry.text().toStdString());
        if (event->type() == QEvent::FocusIn) {
            const int point = static_cast<int>(found - entries_.begin());
            Guarded("txtEntry_GotFocus", [&] { EntryEntered(point); });
            if (blank) // after the mouse click that brought the cursor here has been dealt with
                QTimer::singleShot(0, &entry, [&entry] {
                    if (StandardEntry::IsBlank(entry.text().toStdString()))
                        entry.selectAll();
                });
        }
        if (event->type() == QEvent::KeyPress && blank)
            entry.selectAll(); // what is typed takes the prompt's place
    }
    return QDialog::eventFilter(watched, event);
}

void CalibrationForm::FocusEntry(int point) {
    Entry(point).setFocus(Qt::OtherFocusReason);
    Entry(point).selectAll();
}

bool CalibrationForm::TakeStandard(int point) {
    float standard = 0;
    if (!DataAcq::TryGetSingle(standard, Text::FromQt(Entry(point).text()))) {
        const QScopedValueRollback open(boxOpen_, true);
        Mcommon::MessageBoxEx(complaint_, okOnly, exclamation);
        FocusEntry(point);
        return false;
    }
    session_.SetStandard(point, standard);
    return true;
}

bool CalibrationForm::TakeAllStandards() {
    for (int point = 0; point < session_.PointCount(); ++point)
        if (!TakeStandard(point))
            return false;
    return true;
}

void CalibrationForm::FillPointCounts() {
    for (int count = CalibrationSession::minPoints; count <= CalibrationSession::maxPoints; ++count)
        cboCalibPtrs->addItem(QString::number(count), count);
}

void CalibrationForm::FillUnits() {
    cboUnits->addItem("Concentration (ppm)", static_cast<int>(StandardUnit::ppm));
    cboUnits->addItem("Concentration (mol/l)", static_cast<int>(StandardUnit::mol_per_litre));
}

void CalibrationForm::Select(QComboBox& list, int index) {
    const QSignalBlocker quiet(list);
    list.setCurrentIndex(index);
}

void CalibrationForm::OfferFinish(bool finish, QPushButton& finishButton,
                                  QPushButton& closeButton) {
    // The one goes before the other comes: both together may be wider than a small screen.
    (finish ? closeButton : finishButton).hide();
    (finish ? finishButton : closeButton).show();
}

bool CalibrationForm::CanConvert(float molarMass_g_per_mol) const {
    const auto isNumber = [](const QLineEdit* entry) {
        return NumberText::StrictSingle(entry->text().toStdString()).has_value();
    };
    return molarMass_g_per_mol > 0 || std::ranges::none_of(entries_, isNumber);
}

void CalibrationForm::ChangeUnit(const std::string& electrode, float molarMass_g_per_mol) {
    const auto unit = static_cast<StandardUnit>(cboUnits->currentData().toInt());
    if (unit == session_.Unit())
        return;
    if (!CanConvert(molarMass_g_per_mol)) {
        Select(*cboUnits, cboUnits->findData(static_cast<int>(session_.Unit())));
        Mcommon::MessageBoxEx("The molar mass of " + electrode +
                                  " is not known, so the standards cannot be converted.\nPlease "
                                  "enter it on the setup page first.",
                              okOnly, exclamation);
        return;
    }
    // All or none: a conversion that fails leaves every field, and the list shows its unit again.
    auto unchanged = qScopeGuard(
        [&] { Select(*cboUnits, cboUnits->findData(static_cast<int>(session_.Unit()))); });
    std::vector<QString> texts;
    for (const QLineEdit* entry : entries_)
        texts.push_back(Text::ToQt(
            StandardEntry::Converted(Text::FromQt(entry->text()), unit, molarMass_g_per_mol)));
    unchanged.dismiss();
    session_.SetUnit(unit);
    for (std::size_t i = 0; i < texts.size(); ++i)
        entries_[i]->setText(texts[i]);
}

// ---- The main button -------------------------------------------------------------------------

std::string_view CalibrationForm::MainCaption(bool onSummary) const {
    if (onSummary)
        return CalibrationTexts::print;
    switch (session_.MainAction()) {
    case CalibrationSession::Action::read:
        return CalibrationTexts::read;
    case CalibrationSession::Action::record:
        return CalibrationTexts::record;
    case CalibrationSession::Action::showSummary:
        break;
    }
    return CalibrationTexts::showSummary;
}

void CalibrationForm::MainButton(bool onSummary) {
    if (onSummary) {
        PrintSummary();
        return;
    }
    switch (session_.MainAction()) {
    case CalibrationSession::Action::read:
        if (TakeStandard(session_.CurrentPoint()))
            BeginReading();
        break;
    case CalibrationSession::Action::record:
        RecordPoint();
        break;
    case CalibrationSession::Action::showSummary:
        ShowSummary();
        break;
    }
}

// ---- Reading ---------------------------------------------------------------------------------

void CalibrationForm::BeginReading() {
    session_.BeginReading();
    StartMarks();
    series_.Start(mWinInit::HardwareSettings.AveragingForCalibration);
    tmrElapsed_Timer();
    tmrElapsed.start();
    ShowState();
}

void CalibrationForm::StopReading() {
    tmrElapsed.stop();
    lblElapsed->clear();
    series_.Stop();
    session_.StopReading();
}

void CalibrationForm::RestartAveraging() {
    if (!series_.IsRunning())
        return;
    StartMarks();
    series_.RestartAveraging(mWinInit::HardwareSettings.AveragingForCalibration);
}

void CalibrationForm::StartMarks() {
    const auto now = platform::Current().clock.Monotonic();
    for (StabilityMark& mark : marks_)
        mark.Start(now);
}

void CalibrationForm::tmrRead_Timer() {
    if (boxOpen_) // boxes do not pile up; reading goes on when this one is answered
        return;
    std::array<float, cyclePositions> averages{};
    switch (series_.OnTimer(averages)) {
    case ReadingSeries::Tick::nothing:
        break;
    case ReadingSeries::Tick::values:
        ShowAverages(averages);
        break;
    case ReadingSeries::Tick::failed: {
        StopReading();
        ShowState();
        const QScopedValueRollback open(boxOpen_, true);
        Mcommon::MessageBoxEx(std::string(DataAcq::connectionMessage), okOnly, exclamation);
        break;
    }
    }
    if (closeWanted_)
        reject();
}

void CalibrationForm::ShowAverages(std::span<const float, cyclePositions> averages) {
    const auto now = platform::Current().clock.Monotonic();
    for (const int channel : session_.Channels()) {
        const auto slot = static_cast<std::size_t>(channel);
        session_.SetLive(channel, averages[slot]);
        marks_.at(slot).Add(averages[slot], now);
    }
    ShowState();
}

QString CalibrationForm::MarkText(int channel) const {
    return session_.IsReading() && session_.HasLive()
               ? Text::ToQt(marks_.at(static_cast<std::size_t>(channel)).Text())
               : QString();
}

void CalibrationForm::ShowMark(QLabel& label, const QString& text) {
    if (label.text() == text)
        return;
    const bool steady = text == steadyText;
    QPalette palette = label.palette();
    const QPalette around = label.parentWidget()->palette();
    palette.setColor(QPalette::WindowText,
                     steady ? Colours::Good(around) : around.color(QPalette::WindowText));
    label.setPalette(palette);
    QFont font = label.font();
    font.setBold(steady);
    label.setFont(font);
    label.setText(text);
}

void CalibrationForm::ShowEntryState(int point, bool chosen) {
    QLineEdit& entry = Entry(point);
    const bool beingRead = session_.IsReading() && point == session_.CurrentPoint();
    entry.setVisible(chosen);
    entry.setEnabled(!session_.IsReading() || beingRead);
    entry.setReadOnly(beingRead);
    // The standards of the other points stay legible while they wait.
    QPalette palette = entry.palette();
    const QColor text = entry.parentWidget()->palette().color(QPalette::Active, QPalette::Text);
    if (palette.color(QPalette::Disabled, QPalette::Text) == text)
        return;
    palette.setColor(QPalette::Disabled, QPalette::Text, text);
    entry.setPalette(palette);
}

void CalibrationForm::tmrElapsed_Timer() {
    const auto elapsed = marks_.front().Elapsed(platform::Current().clock.Monotonic());
    lblElapsed->setText(Text::ToQt(MinutesAndSeconds(elapsed) + " since Read"));
}
