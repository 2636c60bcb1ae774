#include "CourseInstrument.h"

#include "support/FakeLink.h"

#include <QTimer>

#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr int mostTenths = 9999;

} // namespace

CourseInstrument::CourseInstrument(fs::path link) : link_(std::move(link)) {
    fs::create_directories(link_.parent_path());
    Plug();
}

CourseInstrument::~CourseInstrument() = default;

void CourseInstrument::LeadTo(const fs::path& device) {
    fs::remove(link_);
    fs::create_symlink(device, link_);
}

void CourseInstrument::Plug() {
    if (IsPlugged())
        return;
    waiting_.clear();
    peer_ = std::make_unique<PtyPeer>();
    peer_->OnRequest([this] { Answer(); });
    LeadTo(peer_->Device());
}

/// The name leads nowhere then: its old device may soon be that of another program's line.
void CourseInstrument::Unplug() {
    LeadTo("/dev/no such device");
    peer_.reset();
}

CourseInstrument::Bytes CourseInstrument::NextFrame() {
    number_ = number_ % mostTenths + 1;
    carried_.at(static_cast<std::size_t>(number_)) = false;
    return FrameOf({number_, number_, number_, number_, number_, number_, number_, number_});
}

bool CourseInstrument::HasCarried(int tenths) const {
    return tenths >= 0 && tenths <= mostTenths && carried_.at(static_cast<std::size_t>(tenths));
}

bool CourseInstrument::HasEverCarried(int tenths) const {
    return tenths >= 0 && tenths <= mostTenths && everCarried_.at(static_cast<std::size_t>(tenths));
}

/// The frame made last goes out whole.
void CourseInstrument::Carry() {
    carried_.at(static_cast<std::size_t>(number_)) = true;
    everCarried_.at(static_cast<std::size_t>(number_)) = true;
}

void CourseInstrument::SendByItself() {
    if (IsPlugged())
        SendWhole();
}

void CourseInstrument::SendWhole() {
    const auto frame = NextFrame();
    Carry();
    Send(frame);
}

/// What is sent while the rest of a frame waits comes behind it.
void CourseInstrument::Send(std::span<const std::uint8_t> bytes) {
    if (waiting_.empty())
        peer_->Send(bytes);
    else
        waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
}

void CourseInstrument::SendInPieces(const Bytes& bytes) {
    constexpr std::size_t first = 20;
    Send(std::span(bytes).first(first));
    const bool onItsWay = !waiting_.empty();
    waiting_.insert(waiting_.end(), bytes.begin() + first, bytes.end());
    Carry();
    if (!onItsWay)
        QTimer::singleShot(3, &later_, [this, plugged = peer_.get()] {
            if (peer_ && peer_.get() == plugged)
                peer_->Send(std::exchange(waiting_, {}));
        });
}

void CourseInstrument::Answer() {
    switch (manner) {
    case Manner::good:
        SendWhole();
        break;
    case Manner::inPieces:
        SendInPieces(NextFrame());
        break;
    case Manner::bad:
        Send(BadFrameOf({1, 1, 1, 1, 1, 1, 1, 1}));
        break;
    case Manner::half: {
        const auto whole = NextFrame();
        Send(std::span(whole).first(1 + Below(whole.size() - 1)));
        break;
    }
    case Manner::silent:
        break;
    case Manner::noisy:
        Send(Bytes(1 + Below(60), 0x55));
        SendWhole();
    }
}
