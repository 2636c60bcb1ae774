#include "platform/qt/SimulatedInstrument.h"

// The simulated instrument answers at a pseudo-terminal, which Windows does not have: its program
// is not made for it, is never found, and so never starts.
namespace platform {

SimulatedInstrument::SimulatedInstrument(QObject* parent) : QObject(parent) {}

SimulatedInstrument::~SimulatedInstrument() = default;

QString SimulatedInstrument::ProgramFile() {
    return {};
}

void SimulatedInstrument::Start(const std::filesystem::path& /*link*/,
                                const QStringList& /*commands*/) {
    Q_EMIT Ended("there is no simulated instrument on this system");
}

void SimulatedInstrument::Stop() {}

void SimulatedInstrument::Send(const QString& /*command*/) {}

} // namespace platform
