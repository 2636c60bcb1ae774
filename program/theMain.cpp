#include "program/theMain.h"

#include "link/CommPort.h"
#include "platform/Platform.h"
#include "screens/controls/BusyPointer.h"
#include "screens/frmMain/frmMain.h"
#include "screens/frmPortSettings/frmPortSettings.h"
#include "screens/frmSplash/frmSplash.h"
#include "settings/mWinInit.h"

#include <QApplication>

namespace theMain {

Program::Program() = default;
Program::~Program() = default;

void Program::Main() {
    guard_("theMain - Main", [this] {
        LoadForms();
        CommPort::fncInitializeComPort();
    });
}

void Program::LoadForms() {
    const BusyPointer busy;
    mWinInit::HardwareSettings.ChannelCount = channelCount;

    splash_ = std::make_unique<frmSplash>(std::string(versionText));
    splash_->show();
    platform::Current().desktop.ProcessPendingEvents();

    mWinInit::LoadSettings();
    port_ = std::make_unique<frmPortSettings>(); // owns the port that the link is opened on
    main_ = std::make_unique<frmMain>(run_);
    ConnectForms();
}

void Program::ConnectForms() {
    QObject::connect(splash_.get(), &frmSplash::Continued, main_.get(), [this] { main_->show(); });
    QObject::connect(main_.get(), &frmMain::PortSettingsRequested, port_.get(), [this] {
        port_->setWindowModality(Qt::ApplicationModal);
        port_->show();
    });
    QObject::connect(main_.get(), &frmMain::Ended, qApp, &QApplication::quit);
}

} // namespace theMain
