#pragma once

#include "link/CommPort.h"

/// What the two halves of CommPort, port and transfer, share and nobody else sees.
namespace CommPort::internal {

inline constexpr std::size_t inputBufferSize = 256;

struct LinkData {
    Controls controls;
    std::string status; ///< the text of txtStatus
    LinkState state = LinkState::waiting;
    bool reading = false;         ///< a screen reads: polling runs, the receive threshold is set
    bool waiting = false;         ///< ReceiveFrame waits for 48 bytes
    bool messageOpen = false;     ///< the message about a bad frame waits for its answer
    bool failedMeanwhile = false; ///< the link has failed while the message was open
    bool failedSinceBegin = false;
    /// Bytes up to the next EOT belong to a frame whose start was lost.
    bool outOfStep = false;
    unsigned session = 0; ///< counts the starts of reading
    Frame::Bytes receiveBuffer{};
    std::vector<std::uint8_t> unsolicited; ///< start of a frame that the instrument sends by itself
    std::vector<std::uint8_t> lastCommand;
    std::vector<std::string> portList;
    std::array<std::string, maxPortNumber + 1> portProblem;
    std::vector<std::weak_ptr<std::function<void()>>> observers;
};

LinkData& Data();

/// The serial control. Throws RunTimeError before Attach.
platform::SerialControl& Control();
bool PortIsOpen();

void SetStatus(const std::string& text);
void SetState(LinkState state);
void TellObservers();

/// Writes the reason into txtStatus and fails the link.
void Fail(const std::string& reason);

/// Ends a transfer under way without a word.
void CancelTransfer();

/// Opens a port at the bit rate in force, sets its time-outs and tells the outcome in PortOK.
/// Throws as OpenPort.
void OpenWithTimeouts(std::int16_t portNumber);

} // namespace CommPort::internal
