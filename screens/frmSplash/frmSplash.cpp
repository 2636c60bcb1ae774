#include "screens/frmSplash/frmSplash.h"

#include "platform/qt/Text.h"
#include "screens/controls/Placement.h"
#include "settings/mWinInit.h"
#include "ui_frmSplash.h"

frmSplash::frmSplash(const std::string& versionText, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmSplash>()) {
    ui_->setupUi(this);
    lblLabel = ControlArray<QLabel>(*this, "lblLabel");
    connect(ui_->cmdCommand1, &QPushButton::clicked, this,
            [this] { guard_("frmSplash - cmdCommand1", [this] { cmdCommand1_Click(); }); });
    Form_Load(versionText);
}

frmSplash::~frmSplash() = default;

void frmSplash::Form_Load(const std::string& versionText) {
    setFixedSize(size());
    Mcommon::CenterForm(*this);
    lblLabel(1).setText(QString("%1-Channel Vantrel").arg(mWinInit::HardwareSettings.ChannelCount));
    lblLabel(3).setText(Text::ToQt(versionText));
    for (const auto& [index, label] : lblLabel)
        Mcommon::CenterControl(*label);
    QPushButton& button = *ui_->cmdCommand1;
    Mcommon::CenterControl(button);

    // A gap of one button height stays between the button and the lines above it.
    lblLabel(2).move(lblLabel(2).x(), button.y() - button.height() - lblLabel(2).height());
    lblLabel(3).move(lblLabel(3).x(), lblLabel(2).y() - lblLabel(3).height());
}

void frmSplash::cmdCommand1_Click() {
    Q_EMIT Continued();
    accept();
}

void frmSplash::SetReady(bool ready) {
    ui_->cmdCommand1->setEnabled(ready);
    if (ready)
        ui_->cmdCommand1->setFocus(Qt::OtherFocusReason);
}

void frmSplash::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    painted_ = true;
}

void frmSplash::reject() {
    if (isModal())
        QDialog::reject();
}
