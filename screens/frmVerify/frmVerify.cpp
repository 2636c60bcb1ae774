#include "screens/frmVerify/frmVerify.h"

#include "base/CodePage.h"
#include "platform/qt/Text.h"
#include "report/ViewedFile.h"
#include "screens/controls/Placement.h"
#include "screens/controls/Wiring.h"
#include "ui_frmVerify.h"

#include <QElapsedTimer>

namespace {

constexpr std::uint64_t sliceBytes = std::uint64_t{64} * 1024;
constexpr qint64 sliceTime_ms = 8;
constexpr int percent = 100;

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
    : QDialog(parent), ui_(std::make_unique<Ui::frmVerify>()),
      verification_(std::make_unique<Mreport::Verification>(file)) {
    ui_->setupUi(this);
    setWindowTitle("Verify File - " + Text::ToQt(CodePage::NameOf(file.path.filename())));
    ui_->tblDiverged->hide();
    ui_->lblReasons->hide();
    tmrVerify_.setObjectName("tmrVerify");
    tmrVerify_.setInterval(0);
    const Wiring wire(*this, guard_, "frmVerify");
    wire(&tmrVerify_, &QTimer::timeout, "tmrVerify", &frmVerify::tmrVerify_Timer);
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
    while (verification_ && verification_->Step(sliceBytes))
        if (clock.elapsed() >= sliceTime_ms)
            return ShowProgress();
    tmrVerify_.stop();
    if (!verification_)
        return;
    const auto result = verification_->Result();
    verification_.reset();
    ShowVerdict(result, result.diverged == 0 ? QString() : QString("Values diverge: "));
}

void frmVerify::Stop() {
    tmrVerify_.stop();
    if (!verification_)
        return;
    const auto result = verification_->Result();
    const auto share = qRound(verification_->Share() * percent);
    verification_.reset();
    ShowVerdict(result, QString("Stopped at %1 %. So far: ").arg(share));
}

void frmVerify::reject() {
    if (verification_)
        Stop();
    else
        QDialog::reject();
}

void frmVerify::cmdClose_Click() {
    Stop();
    QDialog::reject();
}

void frmVerify::ShowProgress() {
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
