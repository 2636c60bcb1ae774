#include "screens/frmCommon/frmCommon.h"

#include "app/Mcommon.h"
#include "platform/qt/Text.h"
#include "report/ReportGraph.h"
#include "screens/controls/Wiring.h"
#include "ui_frmCommon.h"

#include <QScopeGuard>

#include <array>

namespace {

constexpr int heading = 8; ///< of lblChan
constexpr auto busyTick = std::chrono::milliseconds(100);
constexpr std::array busyCycle = {"/", "--", "\\", "|"};

} // namespace

frmCommon::frmCommon(const Mreport::ViewedFile& file, Mreport::ShownGraph& shown,
                     Mreport::ReportGraph& graph, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmCommon>()), shown_(shown), graph_(graph),
      selection_(file, shown) {
    ui_->setupUi(this);
    Timer1.setObjectName("Timer1");
    Timer1.setParent(this);
    Timer1.setInterval(busyTick);
    optData = ControlArray<QRadioButton>(*this, "optData");
    chkChan = ControlArray<QCheckBox>(*this, "chkChan");
    lblChan = ControlArray<QLabel>(*this, "lblChan");
    cmdBtn = ControlArray<QPushButton>(*this, "cmdBtn");
    optData(static_cast<std::size_t>(selection_.Unit())).setChecked(true);
    ShowBoxes();

    const Wiring wire(*this, guard_, "frmCommon");
    wire(optData, &QRadioButton::toggled, "optData", &frmCommon::optData_Click);
    wire(chkChan, &QCheckBox::toggled, "chkChan", &frmCommon::chkChan_Click);
    wire(cmdBtn, &QPushButton::clicked, "cmdBtn", &frmCommon::cmdBtn_Click);
    wire(&Timer1, &QTimer::timeout, "Timer1", &frmCommon::Timer1_Timer);
}

frmCommon::~frmCommon() = default;

void frmCommon::optData_Click(std::size_t Index) {
    const auto unit = static_cast<Quantity>(Index);
    if (!optData(Index).isChecked() || unit == selection_.Unit())
        return;
    selection_.ChooseUnit(unit);
    ShowBoxes();
}

void frmCommon::chkChan_Click(std::size_t Index) {
    selection_.Check(Index, chkChan(Index).isChecked());
}

void frmCommon::ShowBoxes() {
    lblChan(heading).setText(Text::ToQt(selection_.Heading()));
    for (const std::size_t index : chkChan.Indices()) {
        const Mreport::Selection::Box& box = selection_.BoxAt(index);
        const QString caption = Text::ToQt(selection_.Caption(index));
        chkChan(index).setVisible(box.visible);
        chkChan(index).setEnabled(box.enabled);
        chkChan(index).setChecked(box.checked);
        chkChan(index).setAccessibleName(caption);
        lblChan(index).setVisible(box.visible);
        lblChan(index).setEnabled(box.enabled);
        lblChan(index).setText(QString(caption).insert(caption.size() - 1, '&'));
    }
}

void frmCommon::cmdBtn_Click(std::size_t Index) {
    if (Index == acceptButton)
        AcceptSelection();
    else
        reject();
}

void frmCommon::AcceptSelection() {
    if (!selection_.Fits(graph_.NumPoints())) {
        Mcommon::Warn(Mreport::tooManyPointsText);
        return;
    }
    selection_.Accept(shown_);
    graph_.SetNumSets(selection_.CheckedCount());
    graph_.SetLeftTitle(selection_.UnitName());
    ShowBusy(true);
    const auto ready = qScopeGuard([this] { ShowBusy(false); });
    Redraw();
    accept();
}

void frmCommon::ShowBusy(bool busy) {
    cmdBtn(acceptButton).setEnabled(!busy);
    ui_->Label1->setText(busy ? busyCycle[0] : "");
    if (busy)
        Timer1.start();
    else
        Timer1.stop();
}

void frmCommon::Timer1_Timer() {
    for (std::size_t step = 0; step < busyCycle.size(); ++step)
        if (ui_->Label1->text() == busyCycle[step])
            return ui_->Label1->setText(busyCycle[(step + 1) % busyCycle.size()]);
}
