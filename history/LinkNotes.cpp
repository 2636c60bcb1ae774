#include "history/LinkNotes.h"

#include "base/NumberText.h"
#include "base/PortName.h"
#include "history/Notes.h"

#include <utility>

namespace History {

LinkNotes::LinkNotes() : observer_(CommPort::ObserveLink([this] { Look(); })) {}

/// Called at every change of anything about the link.
void LinkNotes::Look() {
    const CommPort::LinkState state = CommPort::State();
    const std::string port = PortName::Of(CommPort::PortNumber()) + ", " +
                             NumberText::Plain(CommPort::BitRate()) + " bit/s";
    if (std::exchange(state_, state) != state) {
        if (state == CommPort::LinkState::failed) {
            failed_ = true;
            Note(Kind::linkFailed, port + ": the instrument does not answer");
        } else if (state == CommPort::LinkState::answered && std::exchange(failed_, false)) {
            Note(Kind::linkAnswers, port + ": the instrument answers again");
        }
    }
    const bool samePort = portNumber_ == CommPort::PortNumber() && bitRate_ == CommPort::BitRate();
    portNumber_ = CommPort::PortNumber();
    bitRate_ = CommPort::BitRate();
    if (!samePort)
        NoteSettings();
}

} // namespace History
