#include "screens/frmVerify/frmVerify.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "report/HistorySeal.h"
#include "report/ViewedFile.h"
#include "report/WholeRun.h"
#include "screens/controls/Placement.h"
#include "screens/controls/SliceTime.h"
#include "screens/controls/Wiring.h"
#include "ui_frmVerify.h"

#include <QElapsedTimer>

#include <utility>

namespace {

constexpr std::uint64_t verifiedAtOnce_bytes = std::uint64_t{64} * 1024;
constexpr int percent = 100;
constexpr auto sealCaption = "Seal: ";

std::array<std::string, 6> CellsOf(const Mreport::Divergence& found) {
    return {NumberText::Plain(found.number),
            Mreport::ChannelName(found.channel),
            std::string(Quantities::Label(found.quantity)),
            found.potential,
            found.recorded,
            found.expected};
}

} // namespace

frmVerify::frmVerify(const Mreport::ViewedFile& file, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmVerify>()), file_(file),
      verification_(std::make_unique<Mreport::Verification>(file)) {
    ui_->setupUi(this);
    setWindowTitle("Verify File - " + Text::ToQt(CodePage::NameOf(file.path.filename())));
    const QStringList columns{"Record", "Channel", "Unit", "mV", "Recorded", "Computed"};
    ui_->tblDiverged->setColumnCount(static_cast<int>(columns.size()));
    ui_->tblDiverged->setHorizontalHeaderLabels(columns);
    ui_->tblDiverged->hide();
    ui_->lblReasons->hide();
    ui_->lblSeal->hide();
    ui_->lblHistory->hide();
    ui_->cmdSeal->setEnabled(false);
    tmrVerify_.setObjectName("tmrVerify");
    tmrVerify_.setInterval(0);
    const Wiring wire(*this, guard_, "frmVerify");
    wire(&tmrVerify_, &QTimer::timeout, "tmrVerify", &frmVerify::tmrVerify_Timer);
    wire(ui_->cmdSeal, &QPushButton::clicked, "cmdSeal", &frmVerify::cmdSeal_Click);
    wire(ui_->cmdClose, &QPushButton::clicked, "cmdClose", &frmVerify::cmdClose_Click);
    // A click on the row that is chosen already changes no current cell.
    wire(ui_->tblDiverged, &QTableWidget::currentCellChanged, "tblDiverged",
         &frmVerify::tblDiverged_Click);
    wire(ui_->tblDiverged, &QTableWidget::cellClicked, "tblDiverged",
         &frmVerify::tblDiverged_Click);
    Mcommon::FitOntoScreen(*this);
    ShowProgress();
    tmrVerify_.start();
}

frmVerify::~frmVerify() = default;

void frmVerify::tmrVerify_Timer() {
    QElapsedTimer clock;
    clock.start();
    while (Work())
        if (clock.elapsed() >= sliceTime_ms)
            return ShowProgress();
    tmrVerify_.stop();
    ui_->cmdSeal->setEnabled(true);
}

/// Goes on with what is at work; false where nothing is.
bool frmVerify::Work() {
    if (verification_) {
        if (!verification_->Step(verifiedAtOnce_bytes))
            FinishVerification();
    } else if (!checks_.empty()) {
        WorkOnCheck();
    } else if (sealing_) {
        if (!sealing_->Step(verifiedAtOnce_bytes))
            FinishSealing();
    } else {
        return false;
    }
    return true;
}

void frmVerify::FinishVerification() {
    const auto result = std::exchange(verification_, nullptr)->Result();
    ShowVerdict(result, result.diverged == 0 ? QString() : QString("Values diverge: "));
    LookForSeals();
}

void frmVerify::LookForSeals() {
    Hold([this] { return Mreport::LoadSeal(Mreport::SealBeside(file_.path)); }, *ui_->lblSeal,
         sealCaption);
    Hold([this] { return Mreport::SealFromHistory(file_.path); }, *ui_->lblHistory, "History: ");
}

void frmVerify::Hold(const std::function<std::optional<Mreport::Seal>()>& find, QLabel& label,
                     const QString& caption) {
    try {
        if (auto seal = find())
            checks_.push_back({std::make_unique<Mreport::SealCheck>(file_.pages.Source(), *seal),
                               label, caption});
    } catch (const RunTimeError& error) {
        label.setText(caption + Text::ToQt(error.what()));
        label.show();
    }
}

void frmVerify::WorkOnCheck() {
    const HeldAgainst& held = checks_.front();
    if (held.check->Step(verifiedAtOnce_bytes))
        return;
    held.label.setText(held.caption + Text::ToQt(held.check->Text()));
    held.label.show();
    checks_.pop_front();
}

void frmVerify::FinishSealing() {
    const auto sealing = std::exchange(sealing_, nullptr);
    ShowSeal("not saved"); // where the next fails
    const auto seal = Mreport::SaveSeal(sealFile_, file_.path, sealing->Points());
    ShowSeal(
        QString("saved as %1 at %2")
            .arg(Text::ToQt(CodePage::NameOf(sealFile_.filename())), Text::ToQt(seal.sealedAt)));
}

void frmVerify::cmdSeal_Click() {
    const auto beside = Mreport::SealBeside(file_.path);
    platform::FileDialogRequest request;
    request.kind = platform::FileDialogRequest::Kind::save;
    request.title = "Save Seal";
    request.fileName = CodePage::FromPath(beside.filename()).value_or("run.seal");
    request.defaultExtension = "seal";
    request.filter = "Seals (*.seal)|*.seal";
    request.initialFolder = beside.parent_path();
    const auto target = platform::Current().dialogs.ChooseFile(request);
    if (!target)
        return;
    sealFile_ = *target;
    Mreport::TextSource& source = file_.pages.Source();
    sealing_ = std::make_unique<Mreport::Sealing>(source, source.Size(),
                                                  Mreport::WholeRun::Records(file_.pages));
    ui_->cmdSeal->setEnabled(false);
    ShowSeal("being made. [Press ESC to stop]");
    tmrVerify_.start();
}

void frmVerify::ShowSeal(const QString& text) {
    ui_->lblSeal->setText(sealCaption + text);
    ui_->lblSeal->show();
}

void frmVerify::Stop() {
    tmrVerify_.stop();
    ui_->cmdSeal->setEnabled(true);
    for (const HeldAgainst& held : std::exchange(checks_, {})) {
        held.label.setText(held.caption + "stopped");
        held.label.show();
    }
    if (std::exchange(sealing_, nullptr))
        ShowSeal("stopped");
    if (!verification_)
        return;
    const auto share = qRound(verification_->Share() * percent);
    const auto result = std::exchange(verification_, nullptr)->Result();
    ShowVerdict(result, QString("Stopped at %1 %. So far: ").arg(share));
}

void frmVerify::reject() {
    if (Working())
        Stop();
    else
        QDialog::reject();
}

void frmVerify::cmdClose_Click() {
    Stop();
    QDialog::reject();
}

void frmVerify::ShowProgress() {
    if (!verification_)
        return;
    ui_->lblVerdict->setText(QString("Verifying, %1 % complete. [Press ESC to stop]")
                                 .arg(static_cast<int>(verification_->Share() * percent)));
}

void frmVerify::ShowVerdict(const Mreport::VerifyResult& result, const QString& before) {
    ui_->lblVerdict->setText(before + Text::ToQt(VerdictText(result)));
    ShowReasons(result);
    listed_ = result.divergences;
    if (!listed_.empty())
        ShowList();
}

void frmVerify::ShowReasons(const Mreport::VerifyResult& result) {
    QStringList lines;
    for (const auto& reason : result.reasons)
        lines << Text::ToQt(ReasonText(reason));
    const auto listed = static_cast<std::int64_t>(result.divergences.size());
    if (listed < result.diverged)
        lines << QString("The list shows the first %1 of what diverged.").arg(listed);
    ui_->lblReasons->setText(lines.join('\n'));
    ui_->lblReasons->setVisible(!lines.isEmpty());
}

void frmVerify::ShowList() {
    const QSignalBlocker quiet(ui_->tblDiverged);
    QTableWidget& table = *ui_->tblDiverged;
    table.setRowCount(static_cast<int>(listed_.size()));
    for (int row = 0; row < table.rowCount(); ++row) {
        int column = 0;
        for (const std::string& cell : CellsOf(listed_[static_cast<std::size_t>(row)]))
            table.setItem(row, column++, new QTableWidgetItem(Text::ToQt(cell)));
    }
    table.setCurrentCell(-1, -1);
    table.resizeColumnsToContents();
    table.show();
}

/// Row -1 is none: the list has been emptied.
void frmVerify::tblDiverged_Click(int row) {
    if (row < 0 || static_cast<std::size_t>(row) >= listed_.size())
        return;
    const auto& found = listed_[static_cast<std::size_t>(row)];
    Q_EMIT RecordWanted(found.place, found.offset);
}
