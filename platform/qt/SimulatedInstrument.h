#pragma once

#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <filesystem>

class QLocalSocket;

namespace platform {

/// The simulated instrument as a child of this program: a process that ends with it, whatever
/// becomes of it, and takes commands over a socket of its own.
class SimulatedInstrument : public QObject {
    Q_OBJECT

public:
    explicit SimulatedInstrument(QObject* parent = nullptr);

    /// Ends the process, and with it its link; no signal tells it.
    ~SimulatedInstrument() override;

    /// The program: beside this one, else in the search path; empty where there is none.
    static QString ProgramFile();

    /// Starts the program at this link, with commands that it carries out before it answers. Ends
    /// in Ready or in Ended.
    void Start(const std::filesystem::path& link, const QStringList& commands);

    /// Ends the process at once; Ended tells it, without a reason.
    void Stop();

    /// From Start to Ended.
    bool IsRunning() const { return state_ != State::stopped; }

    /// From Ready to Ended.
    bool IsReady() const { return state_ == State::ready; }

    /// Sends a command line; Answered brings its answer. Nothing unless it is ready.
    void Send(const QString& command);

Q_SIGNALS:
    void Ready();

    /// `reason` is what the program said where it ended by itself.
    void Ended(const QString& reason);

    /// `text` is the program's answer, why it refused the command where not `ok`.
    void Answered(const QString& command, bool ok, const QString& text);

private:
    enum class State { stopped, starting, ready };

    void OutputCame();
    void AnswerCame();
    void Give(bool ok);
    void Fail(const QString& reason);
    void EndProcess();

    State state_ = State::stopped;
    QString control_; ///< the place of the control socket
    QProcess process_;
    QLocalSocket* socket_ = nullptr; ///< to the control socket; none where the program is not made
    QTimer patience_;                ///< for the start
    std::deque<QString> sent_;       ///< commands without an answer yet
    QStringList answer_;             ///< what has come of the next answer
};

} // namespace platform
