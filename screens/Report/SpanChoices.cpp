#include "screens/Report/SpanChoices.h"

#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "report/ShownGraph.h"
#include "screens/controls/Wiring.h"
#include "ui_SpanChoices.h"

#include <QSignalBlocker>

namespace {

const std::string reportSection = "Report";
const std::string keyAxis = "Axis";
const std::string keyLog = "Log";
const std::string keyOwnScales = "OwnScales";
const std::string keyStatistics = "Statistics";

} // namespace

SpanChoices::SpanChoices(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::SpanChoices>()) {
    ui_->setupUi(this);
    ConnectControls();
}

SpanChoices::~SpanChoices() = default;

void SpanChoices::ConnectControls() {
    const Wiring wire(*this, guard_, "Report");
    wire(ui_->cboQuantity, &QComboBox::currentIndexChanged, "cboQuantity",
         &SpanChoices::cboQuantity_Click);
    wire(ui_->cboAxis, &QComboBox::currentIndexChanged, "cboAxis", &SpanChoices::AnyChoice_Click);
    wire(ui_->chkLog, &QCheckBox::toggled, "chkLog", &SpanChoices::AnyChoice_Click);
    wire(ui_->chkOwnScales, &QCheckBox::toggled, "chkOwnScales", &SpanChoices::AnyChoice_Click);
    wire(ui_->chkStatistics, &QCheckBox::toggled, "chkStatistics", &SpanChoices::AnyChoice_Click);
}

void SpanChoices::Recall() {
    const platform::ProfileFile& profile = platform::Current().profile;
    const auto chosen = [&profile](const std::string& key) {
        return profile.GetInt(reportSection, key, 0) == 1;
    };
    const QSignalBlocker axis(ui_->cboAxis);
    const QSignalBlocker log(ui_->chkLog);
    const QSignalBlocker ownScales(ui_->chkOwnScales);
    const QSignalBlocker statistics(ui_->chkStatistics);
    ui_->cboAxis->setCurrentIndex(chosen(keyAxis) ? axisTime : axisRecord);
    ui_->chkLog->setChecked(chosen(keyLog));
    ui_->chkOwnScales->setChecked(chosen(keyOwnScales));
    ui_->chkStatistics->setChecked(chosen(keyStatistics));
}

void SpanChoices::Remember() {
    platform::ProfileFile& profile = platform::Current().profile;
    const auto write = [&profile](const std::string& key, bool chosen) {
        profile.Write(reportSection, key, chosen ? "1" : "0");
    };
    write(keyAxis, ui_->cboAxis->currentIndex() == axisTime);
    write(keyLog, ui_->chkLog->isChecked());
    write(keyOwnScales, ui_->chkOwnScales->isChecked());
    write(keyStatistics, ui_->chkStatistics->isChecked());
}

void SpanChoices::ShowQuantities(const std::vector<Quantity>& offered, Quantity inForce) {
    const QSignalBlocker quiet(ui_->cboQuantity);
    ui_->cboQuantity->clear();
    for (const Quantity quantity : offered)
        ui_->cboQuantity->addItem(Text::ToQt(Mreport::UnitText(quantity)),
                                  static_cast<int>(quantity));
    ui_->cboQuantity->setCurrentIndex(ui_->cboQuantity->findData(static_cast<int>(inForce)));
    ui_->chkLog->setEnabled(inForce == Quantity::ppm || inForce == Quantity::mol_l);
}

Mreport::RunAxis SpanChoices::Axis() const {
    return ui_->cboAxis->currentIndex() == axisTime ? Mreport::RunAxis::time
                                                    : Mreport::RunAxis::record;
}

bool SpanChoices::Log() const {
    return ui_->chkLog->isEnabledTo(this) && ui_->chkLog->isChecked();
}

bool SpanChoices::OwnScales() const {
    return ui_->chkOwnScales->isChecked();
}

bool SpanChoices::Statistics() const {
    return ui_->chkStatistics->isChecked();
}

bool SpanChoices::WantsOtherDrawing() const {
    return Axis() == Mreport::RunAxis::time || OwnScales() || Log();
}

void SpanChoices::cboQuantity_Click(int Index) {
    if (Index >= 0)
        Q_EMIT QuantityChosen(static_cast<Quantity>(ui_->cboQuantity->itemData(Index).toInt()));
}

void SpanChoices::AnyChoice_Click() {
    Remember();
    Q_EMIT Changed();
}
