#include "screens/frmSrch/frmSrch.h"

#include "platform/qt/Text.h"
#include "report/ShownGraph.h"
#include "screens/controls/ValueLabel.h"
#include "screens/controls/Wiring.h"
#include "screens/frmSrch/RunSearchPane.h"
#include "ui_frmSrch.h"

#include <QRegularExpressionValidator>
#include <QShortcut>

#include <exception>

frmSrch::frmSrch(const Mreport::ViewedFile& file, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmSrch>()), search_(file) {
    ui_->setupUi(this);
    // Digits alone; every other key is discarded.
    ui_->txtEntry->setValidator(
        new QRegularExpressionValidator(QRegularExpression("[0-9]*"), ui_->txtEntry));
    AllowChoice(false);
    ShowStatus("Ready");
    MakeSearchPane(file);
    const Wiring wire(*this, guard_, "frmSrch");
    wire(ui_->txtEntry, &QLineEdit::textChanged, "txtEntry", &frmSrch::txtEntry_Change);
    wire(ui_->txtEntry, &QLineEdit::returnPressed, "txtEntry", &frmSrch::txtEntry_KeyPress);
    wire(ui_->cmdFind, &QPushButton::clicked, "cmdFind", &frmSrch::txtEntry_KeyPress);
    wire(ui_->cboChan, &QComboBox::currentIndexChanged, "cboChan", &frmSrch::cboChan_Click);
    wire(ui_->cboUnit, &QComboBox::currentIndexChanged, "cboUnit", &frmSrch::cboUnit_Click);
    wire(ui_->cmdClose, &QPushButton::clicked, "cmdClose", &frmSrch::cmdClose_Click);
}

frmSrch::~frmSrch() = default;

void frmSrch::MakeSearchPane(const Mreport::ViewedFile& file) {
    pane_ = new RunSearchPane(file, this); // the form owns it
    ui_->laySearch->addWidget(pane_);
    const Wiring wire(*this, guard_, "frmSrch");
    wire(pane_, &RunSearchPane::ByNumberChanged, "optSearch", &frmSrch::ShowEntry);
    wire(pane_, &RunSearchPane::Found, "optSearch", &frmSrch::ShowFoundAt);
    wire(pane_, &RunSearchPane::NotFound, "optSearch", &frmSrch::ShowNotFound);
    auto* next = new QShortcut(QKeySequence::FindNext, this);
    wire(next, &QShortcut::activated, "optSearch", &frmSrch::FindNext);
    connect(pane_, &RunSearchPane::Searching, this,
            [this] { ShowStatus("Searching the record..."); });
    connect(pane_, &RunSearchPane::Stopped, this, [this] { ShowStatus("Ready"); });
    connect(pane_, &RunSearchPane::Refused, this, &frmSrch::ShowStatus);
}

void frmSrch::ShowEntry(bool byNumber) {
    for (QWidget* part :
         {static_cast<QWidget*>(ui_->lblTitle), static_cast<QWidget*>(ui_->txtEntry),
          static_cast<QWidget*>(ui_->cmdFind)})
        part->setVisible(byNumber);
}

void frmSrch::ShowFoundAt(const Mreport::LinePlace& place) {
    search_.TakeRecordAt(place);
    ShowFound();
}

void frmSrch::StopSearch() {
    pane_->Stop();
}

void frmSrch::FindNext() {
    if (pane_->ByNumber())
        txtEntry_KeyPress();
    else
        pane_->FindNext();
}

void frmSrch::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    FillChannels();
    ui_->txtEntry->setFocus();
    ui_->txtEntry->selectAll();
}

void frmSrch::AllowChoice(bool allowed) {
    ui_->cboChan->setEnabled(allowed);
    ui_->cboUnit->setEnabled(allowed);
}

void frmSrch::txtEntry_Change() {
    AllowChoice(false);
}

/// Enter starts the search.
void frmSrch::txtEntry_KeyPress() {
    if (ui_->txtEntry->text().isEmpty())
        return;
    ui_->txtEntry->selectAll();
    SearchRecord();
}

void frmSrch::SearchRecord() {
    ShowStatus("Searching the record...");
    ui_->lblStatus->repaint();
    bool found = false;
    try {
        found = search_.Find(Mreport::RecordNumberOf(Text::FromQt(ui_->txtEntry->text())));
    } catch (const std::exception&) {
        found = false; // whatever goes wrong in a search, the record was not found
    }
    if (found)
        ShowFound();
    else
        ShowNotFound();
}

void frmSrch::ShowFound() {
    FillChannels(); // another file may have been opened since
    ui_->txtComment->setText(Text::ToQt(search_.Comment()));
    FillUnits();
    ShowFoundValue();
    ShowStatus("Ready");
    AllowChoice(true);
    Q_EMIT RecordFound(search_.Place());
}

void frmSrch::ShowNotFound() {
    {
        const QSignalBlocker quiet(ui_->cboUnit);
        ui_->cboUnit->clear();
    }
    ShowStatus("Not Found");
    ui_->txtComment->clear();
    ShowValue(*ui_->lblRtn, {});
    AllowChoice(false);
}

void frmSrch::Forget() {
    pane_->Forget();
    ShowNotFound();
    ShowStatus({});
}

void frmSrch::FillChannels() {
    const QSignalBlocker quiet(ui_->cboChan); // filling is not choosing
    const QVariant chosen = ui_->cboChan->currentData();
    ui_->cboChan->clear();
    for (const auto& entry : search_.Entries())
        ui_->cboChan->addItem(Text::ToQt(entry.text), QVariant::fromValue(entry.index));
    ui_->cboChan->setCurrentIndex(std::max(0, ui_->cboChan->findData(chosen)));
}

void frmSrch::FillUnits() {
    const QSignalBlocker quiet(ui_->cboUnit); // filling is not choosing
    ui_->cboUnit->clear();
    if (ui_->cboChan->currentIndex() < 0)
        return;
    for (const auto unit : search_.Units(ui_->cboChan->currentData().toUInt()))
        ui_->cboUnit->addItem(Text::ToQt(Mreport::UnitText(unit)), static_cast<int>(unit));
    ui_->cboUnit->setCurrentIndex(0);
}

void frmSrch::ShowStatus(const QString& text) {
    ShowValue(*ui_->lblStatus, text);
}

void frmSrch::ShowFoundValue() {
    QString text = Text::ToQt(search_.TimeStamp());
    if (ui_->cboChan->currentIndex() >= 0 && ui_->cboUnit->currentIndex() >= 0)
        text += "    " + Text::ToQt(search_.ValueText(
                             ui_->cboChan->currentData().toUInt(),
                             static_cast<Quantity>(ui_->cboUnit->currentData().toInt())));
    ShowValue(*ui_->lblRtn, text);
}

void frmSrch::cboChan_Click() {
    FillUnits();
    ShowFoundValue();
}

void frmSrch::cboUnit_Click() {
    ShowFoundValue();
}

void frmSrch::cmdClose_Click() {
    close();
}
