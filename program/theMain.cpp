#include "program/theMain.h"

#include "app/Mcommon.h"
#include "history/Notes.h"
#include "link/CommPort.h"
#include "platform/Platform.h"
#include "screens/controls/BusyPointer.h"
#include "screens/frmMain/frmMain.h"
#include "screens/frmPortSettings/frmPortSettings.h"
#include "screens/frmSplash/frmSplash.h"
#include "settings/mWinInit.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPalette>
#include <QTimer>

#include <utility>

namespace theMain {

namespace {

/// Not every desktop gives the hint in an empty box a colour that goes with its dark palette. A
/// grey between light and dark is read on both.
void KeepHintsReadable() {
    QPalette hints;
    hints.setColor(QPalette::PlaceholderText, QColor(128, 128, 128));
    QApplication::setPalette(hints.resolve(QApplication::palette()));
}

} // namespace

Program::Program() = default;

Program::~Program() {
    main_.reset();
    port_.reset();
    splash_.reset();
    linkNotes_.reset();
    history_.reset(); // while what it may tell has a place
}

void Program::Main() {
    guard_("theMain - Main", [this] {
        LoadForms();
        CommPort::fncInitializeComPort();
        OpenHistory();
        // What was pressed while the program started was pressed in vain.
        platform::Current().desktop.ProcessPendingEvents();
    });
    if (splash_)
        splash_->SetReady(true);
}

void Program::LoadForms() {
    const BusyPointer busy;
    KeepHintsReadable();
    mWinInit::HardwareSettings.ChannelCount = channelCount;

    splash_ = std::make_unique<frmSplash>(std::string(versionText));
    splash_->SetReady(false);
    splash_->show();
    AwaitPainting();

    mWinInit::LoadSettings();
    port_ = std::make_unique<frmPortSettings>(); // owns the port that the link is opened on
    main_ = std::make_unique<frmMain>(run_);
    ConnectForms();
}

/// A window is painted once its desktop has shown it, which takes several turns of events.
void Program::AwaitPainting() {
    constexpr int longest_ms = 1000; // a desktop that shows nothing must not hold the start up
    QElapsedTimer waiting;
    waiting.start();
    do
        platform::Current().desktop.ProcessPendingEvents();
    while (!splash_->IsPainted() && waiting.elapsed() < longest_ms);
}

void Program::ConnectForms() {
    QObject::connect(splash_.get(), &frmSplash::Continued, main_.get(), [this] { Continue(); });
    QObject::connect(main_.get(), &frmMain::PortSettingsRequested, port_.get(), [this] {
        port_->setWindowModality(Qt::ApplicationModal);
        port_->show();
    });
    QObject::connect(main_.get(), &frmMain::Ended, qApp, &QApplication::quit);
    QObject::connect(
        qApp, &QGuiApplication::commitDataRequest, main_.get(), [this] { main_->EndSession(); },
        Qt::DirectConnection);
}

void Program::OpenHistory() {
    history_.emplace(History::UsualFile(),
                     [this](const std::string& message) { TellOfHistory(message); });
    linkNotes_.emplace();
    History::KnowSettings();
}

/// Not before the main screen, and never where it happens: a recording does not wait for an answer.
void Program::TellOfHistory(const std::string& message) {
    if (!main_ || !main_->isVisible()) {
        toTell_.push_back(message);
        return;
    }
    QTimer::singleShot(0, main_.get(), [this, message] {
        guard_("theMain - TellOfHistory", [&message] { Mcommon::Warn(message); });
    });
}

void Program::Continue() {
    main_->show();
    for (const std::string& message : std::exchange(toTell_, {}))
        TellOfHistory(message);
    if (!file_.empty())
        main_->OpenReport(file_);
}

} // namespace theMain
