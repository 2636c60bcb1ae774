#include "screens/frmPrint/frmPrint.h"

#include "app/Mcommon.h"
#include "platform/Platform.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/QtPrinter.h"
#include "platform/qt/Text.h"
#include "report/GraphSpan.h"
#include "report/PrintJob.h"
#include "screens/controls/ValueLabel.h"
#include "screens/controls/Wiring.h"
#include "ui_frmPrint.h"

#include <QScopeGuard>

namespace {
constexpr auto section = "Printing";
} // namespace

frmPrint::frmPrint(const Mreport::ViewedFile& file, const Mreport::ShownGraph& shown,
                   QWidget* parent)
    : QDialog(parent), file_(file), shown_(shown), ui_(std::make_unique<Ui::frmPrint>()) {
    ui_->setupUi(this);
    optPrintOpt = ControlArray<QRadioButton>(*this, "optPrintOpt");
    optRange = ControlArray<QRadioButton>(*this, "optRange");
    txtRange = ControlArray<QLineEdit>(*this, "txtRange");
    lblRange = ControlArray<QLabel>(*this, "lblRange");
    const Wiring wire(*this, guard_, "frmPrint");
    wire(ui_->cboList, &QComboBox::currentIndexChanged, "cboList", &frmPrint::cboList_Click);
    wire(optPrintOpt, &QRadioButton::toggled, "optPrintOpt", &frmPrint::optPrintOpt_Click);
    wire(ui_->chkCompact, &QCheckBox::toggled, "chkCompact", &frmPrint::chkCompact_Click);
    wire(ui_->cmdPrint, &QPushButton::clicked, "cmdPrint", &frmPrint::cmdPrint_Click);
    wire(ui_->cmdClose, &QPushButton::clicked, "cmdClose", &frmPrint::cmdClose_Click);
    wire(txtRange, &QLineEdit::textChanged, "txtRange", &frmPrint::txtRange_Change);
    for (const auto& [index, box] : txtRange)
        AcceptCodePageOnly(*box);
    guard_("frmPrint - Form_Load", [this] { Form_Load(); });
}

frmPrint::~frmPrint() = default;

void frmPrint::Form_Load() {
    ui_->graReport->hide(); // it is drawn on paper alone
    for (int page = 0; page <= file_.LastPageIndex(); ++page)
        ui_->cboList->addItem(QString("List %1").arg(page + 1), page);
    ui_->cboList->setCurrentIndex(ui_->cboList->findData(shown_.shownPageIndex));
    ShowBusy({}, {});
    for (const auto& [key, box] : RememberedBoxes())
        box->setChecked(platform::Current().profile.GetInt(section, key, 0) == 1);
    AllowChoices();
}

/// What is chosen of a table, each by its key in the settings file.
std::array<std::pair<const char*, QCheckBox*>, 3> frmPrint::RememberedBoxes() const {
    return {{{"Compact", ui_->chkCompact},
             {"FirstPage", ui_->chkFirstPage},
             {"WholeRecords", ui_->chkWholeRecords}}};
}

void frmPrint::RememberChoices() {
    for (const auto& [key, box] : RememberedBoxes())
        platform::Current().profile.Write(section, key, box->isChecked() ? "1" : "0");
}

int frmPrint::ChosenPage() const {
    return ui_->cboList->currentData().toInt();
}

void frmPrint::cboList_Click() {
    listed_ = Mreport::RecordsOfPage(file_, ChosenPage());
    lblRange(firstBox).setText(QString::number(listed_.first));
    lblRange(lastBox).setText(QString::number(listed_.last));
}

void frmPrint::optPrintOpt_Click(std::size_t /*Index*/) {
    AllowChoices();
}

void frmPrint::chkCompact_Click() {
    AllowChoices();
}

/// The choices are the table's; a compact one keeps its records whole by itself.
void frmPrint::AllowChoices() {
    const bool table = optPrintOpt(asTable).isChecked();
    ui_->chkCompact->setEnabled(table);
    ui_->chkFirstPage->setEnabled(table);
    ui_->chkWholeRecords->setEnabled(table && !ui_->chkCompact->isChecked());
}

/// Who types a number means a range.
void frmPrint::txtRange_Change(std::size_t /*Index*/) {
    optRange(someRecords).setChecked(true);
}

void frmPrint::cmdClose_Click() {
    reject();
}

void frmPrint::cmdPrint_Click() {
    const std::optional<Mreport::RecordRange> range = ChosenRange();
    if (!range)
        return;
    const bool graph = optPrintOpt(asGraph).isChecked();
    if (!graph)
        RememberChoices();
    ShowBusy(QString("Please be patient, printing the report ") +
                 (graph ? "in graph..." : "in text..."),
             "Loading...");
    // A failure must leave the form as ready as before.
    auto ready = qScopeGuard([this] { ShowBusy({}, {}); });
    const platform::PrintOutcome outcome = graph ? PrintGraph(*range) : PrintTable(*range);
    if (outcome == platform::PrintOutcome::printed)
        accept();
    if (outcome != platform::PrintOutcome::stopped)
        return;
    ready.dismiss();
    ShowBusy({}, "Printing was stopped.");
}

std::optional<Mreport::RecordRange> frmPrint::ChosenRange() {
    Mreport::RecordRange range = listed_;
    if (optRange(someRecords).isChecked())
        range = {Mreport::TypedRecordNumber(Text::FromQt(txtRange(firstBox).text())),
                 Mreport::TypedRecordNumber(Text::FromQt(txtRange(lastBox).text()))};
    if (const std::string_view message = Mreport::RefuseRange(range, listed_); !message.empty()) {
        const bool firstFits = range.first >= listed_.first && range.first <= listed_.last;
        Refuse(message, firstFits && range.first != 0 ? lastBox : firstBox);
        return std::nullopt;
    }
    if (!optPrintOpt(asGraph).isChecked())
        return range;
    if (const std::string_view message = Mreport::RefuseGraphRange(range); !message.empty()) {
        optRange(someRecords).setChecked(true);
        Refuse(message, firstBox);
        return std::nullopt;
    }
    return range;
}

void frmPrint::Refuse(std::string_view message, std::size_t box) {
    Mcommon::Warn(message);
    txtRange(box).setFocus();
    txtRange(box).selectAll();
}

platform::PrintOutcome frmPrint::PrintTable(Mreport::RecordRange range) {
    shownPercent_ = -1;
    const Mreport::TableChoices choices{ui_->chkCompact->isChecked(),
                                        ui_->chkWholeRecords->isChecked(),
                                        ui_->chkFirstPage->isChecked()};
    return Mreport::PrintPageTable(
        file_, ChosenPage(), range, choices,
        [this](const Mreport::TableProgress& progress) { ShowProgress(progress); });
}

platform::PrintOutcome frmPrint::PrintGraph(Mreport::RecordRange range) {
    GraphControl& graph = *ui_->graReport;
    graph.SetNumSets(static_cast<int>(Mreport::Series(file_, shown_).size()));
    graph.SetLeftTitle(Mreport::UnitText(shown_.unitCode));
    graph.SetGraphTitle(Mreport::ReportTitle(file_, Mreport::PrintKind::graph));
    Mreport::Span span;
    span.page = ChosenPage();
    span.endRecord = Mreport::PageRecordRange(file_.pages, span.page).InPage({range.last});
    span.numPoints = static_cast<std::int32_t>(range.Count());
    Mreport::UpdateGraph(graph, file_, shown_, span);
    const auto asOnScreen = qScopeGuard([&graph] { graph.SetNumPoints(Mreport::spanLength); });
    const platform::QtPicture picture(
        [&graph](QPainter& painter, const QRectF& area) { graph.PaintOnPaper(painter, area); });
    return Mreport::PrintGraph(file_, picture);
}

void frmPrint::ShowBusy(const QString& busy, const QString& status) {
    ui_->lblBusy->setText(busy);
    ShowValue(*ui_->lblStatus, status);
}

void frmPrint::ShowProgress(const Mreport::TableProgress& progress) {
    const int percent = static_cast<int>(100 * progress.linesPrinted / progress.linesTotal);
    if (percent == shownPercent_)
        return;
    shownPercent_ = percent;
    ShowValue(*ui_->lblStatus, QString("Page %1, %2% complete. [Press ESC to stop printing]")
                                   .arg(progress.page)
                                   .arg(percent));
}
