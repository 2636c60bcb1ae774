#include "platform/qt/SimulatedInstrument.h"

#include "platform/qt/Text.h"

#include <QCoreApplication>
#include <QLocalSocket>
#include <QStandardPaths>

#include <chrono>
#include <utility>

namespace platform {

namespace {

constexpr const char* programName = "vantrel-instrument";
constexpr std::chrono::seconds longestStart{10};
constexpr int longestEnd_ms = 2000;

} // namespace

SimulatedInstrument::SimulatedInstrument(QObject* parent)
    : QObject(parent), socket_(new QLocalSocket(this)) {
    connect(&process_, &QProcess::readyReadStandardOutput, this, &SimulatedInstrument::OutputCame);
    connect(&process_, &QProcess::finished, this,
            [this] { Fail(QString::fromLocal8Bit(process_.readAllStandardError()).trimmed()); });
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            Fail(process_.errorString());
    });
    connect(socket_, &QLocalSocket::readyRead, this, &SimulatedInstrument::AnswerCame);
    connect(socket_, &QLocalSocket::connected, this, [this] {
        patience_.stop();
        state_ = State::ready;
        Q_EMIT Ready();
    });
    connect(socket_, &QLocalSocket::errorOccurred, this, [this] { Fail(socket_->errorString()); });
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this,
            [this] { Fail("it did not say that it is ready"); });
}

SimulatedInstrument::~SimulatedInstrument() {
    for (QObject* part : std::initializer_list<QObject*>{&process_, socket_, &patience_})
        part->disconnect(this);
    EndProcess();
}

QString SimulatedInstrument::ProgramFile() {
    const QString beside =
        QStandardPaths::findExecutable(programName, {QCoreApplication::applicationDirPath()});
    return beside.isEmpty() ? QStandardPaths::findExecutable(programName) : beside;
}

void SimulatedInstrument::Start(const std::filesystem::path& link, const QStringList& commands) {
    const QString place = Text::FromPath(link);
    control_ = place + ".control";
    QStringList arguments{"--link", place, "--attached"};
    for (const QString& command : commands)
        arguments << "--run" << command.split(' ', Qt::SkipEmptyParts);
    state_ = State::starting;
    patience_.start(longestStart);
    process_.start(ProgramFile(), arguments);
}

/// Its first line says that it is ready; what comes later is for people at a terminal.
void SimulatedInstrument::OutputCame() {
    const QByteArray output = process_.readAllStandardOutput();
    if (state_ == State::starting && socket_->state() == QLocalSocket::UnconnectedState &&
        output.contains('\n'))
        socket_->connectToServer(control_);
}

void SimulatedInstrument::Send(const QString& command) {
    if (!IsReady())
        return;
    sent_.push_back(command);
    socket_->write(command.toUtf8() + '\n');
}

/// An answer ends in a line "ok" or "error".
void SimulatedInstrument::AnswerCame() {
    while (socket_->canReadLine()) {
        const QString line = QString::fromUtf8(socket_->readLine()).chopped(1);
        if (line == "ok" || line == "error")
            Give(line == "ok");
        else
            answer_ << line;
    }
}

void SimulatedInstrument::Give(bool ok) {
    const QString text = std::exchange(answer_, {}).join('\n');
    if (sent_.empty())
        return;
    const QString command = sent_.front();
    sent_.pop_front();
    Q_EMIT Answered(command, ok, text);
}

void SimulatedInstrument::Stop() {
    Fail({});
}

void SimulatedInstrument::Fail(const QString& reason) {
    if (std::exchange(state_, State::stopped) == State::stopped)
        return;
    EndProcess();
    Q_EMIT Ended(reason);
}

/// The end of its standard input ends it, so that it removes its link.
void SimulatedInstrument::EndProcess() {
    state_ = State::stopped;
    patience_.stop();
    socket_->abort();
    sent_.clear();
    answer_.clear();
    if (process_.state() == QProcess::NotRunning)
        return;
    process_.closeWriteChannel();
    if (process_.waitForFinished(longestEnd_ms))
        return;
    process_.kill();
    process_.waitForFinished(longestEnd_ms);
}

} // namespace platform
