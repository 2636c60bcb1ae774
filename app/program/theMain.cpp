#include "app/program/theMain.h"

#include "link/CommPort.h"
#include "platform/Platform.h"
#include "screens/frmMain/frmMain.h"
#include "screens/frmPortSettings/frmPortSettings.h"
#include "screens/frmSplash/frmSplash.h"
#include "settings/mWinInit.h"

#include <QApplication>

namespace theMain {

Program::Program() = default;
Program::~Program() = default;

void Program::Main() {
    platform::Desktop& desktop = platform::Current().desktop;
    desktop.SetMousePointer(platform::MousePointer::hourglass);
    mWinInit::HardwareSettings.ChannelCount = channelCount;

    splash_ = std::make_unique<frmSplash>(std::string(versionText));
    splash_->show();
    desktop.ProcessPendingEvents();

    mWinInit::LoadSettings();
    port_ = std::make_unique<frmPortSettings>(); // owns the port that the link is opened on
    main_ = std::make_unique<frmMain>();
    ConnectForms();
    desktop.SetMousePointer(platform::MousePointer::normal);
    CommPort::fncInitializeComPort();
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
