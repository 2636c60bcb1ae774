#include "simulator/Session.h"

#include <algorithm>
#include <utility>

namespace simulator {

namespace {

/// Requests that come faster than frames can go out are kept up to this many frames, as in the
/// input buffer of the instrument.
constexpr std::size_t mostWaitingBytes = 256 * frameLength;

} // namespace

Session::Session(Instrument instrument, std::uint64_t seed)
    : instrument_(std::move(instrument)), disturbance_(seed) {}

void Session::SetAutomatic(std::optional<Seconds> interval, Seconds now) {
    automatic_ = interval;
    if (interval)
        nextAutomatic_ = now + *interval;
}

void Session::Receive(std::span<const std::uint8_t> bytes, Seconds now) {
    for (std::uint8_t byte : bytes) {
        const std::optional<Request> request = parser_.Feed(byte);
        if (request == Request::frame) {
            ++requests_;
            SendFrame(now);
        } else if (request == Request::cancel) {
            line_.Clear();
        }
    }
}

Line::Due Session::Advance(Seconds now) {
    if (automatic_ && nextAutomatic_ <= now) {
        if (line_.Waiting() == 0) // a line slower than the interval sends as it can
            SendFrame(now);
        // After a pause of the whole machine the frames that were missed are not made up for.
        nextAutomatic_ = std::max(nextAutomatic_ + *automatic_, now);
    }
    return line_.TakeDue(now);
}

std::optional<Seconds> Session::NextEvent() const {
    const std::optional<Seconds> due = line_.NextDue();
    if (!automatic_)
        return due;
    return due ? std::min(*due, nextAutomatic_) : nextAutomatic_;
}

void Session::LineLost() {
    line_.Clear();
    parser_.Reset();
}

void Session::SendFrame(Seconds now) {
    if (line_.Waiting() >= mostWaitingBytes)
        return;
    const Frame frame = EncodeFrame(instrument_.Sample(now));
    const Reply reply = ShapeReply(fault_.kind, fault_.time, frame, disturbance_);
    for (const Piece& piece : reply.pieces)
        line_.Send(piece.bytes, piece.pause, now);
    if (reply.unplugAfterwards)
        line_.UnplugBehind(now);
    if (!reply.pieces.empty())
        ++frames_;
    if (fault_.replies && --*fault_.replies <= 0)
        fault_ = Fault{};
}

} // namespace simulator
