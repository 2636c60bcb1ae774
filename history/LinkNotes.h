#pragma once

#include "link/CommPort.h"

#include <memory>

namespace History {

/// Takes down, while it lives, when the link fails and when it answers again, and another port.
class LinkNotes {
public:
    LinkNotes();

private:
    void Look();

    CommPort::LinkState state_ = CommPort::State();
    bool failed_ = false; ///< no answer since
    std::int16_t portNumber_ = CommPort::PortNumber();
    std::int32_t bitRate_ = CommPort::BitRate();
    std::shared_ptr<void> observer_; // last: it looks at all of the above
};

} // namespace History
