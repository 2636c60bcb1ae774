#include "link/LinkData.h"

#include "base/NumberText.h"
#include "base/RunTimeError.h"

#include <utility>

namespace CommPort {
namespace internal {

LinkData& Data() {
    static LinkData data;
    return data;
}

platform::SerialControl& Control() {
    if (!Data().controls.MSComm1)
        throw RunTimeError("The serial port is not set up");
    return *Data().controls.MSComm1;
}

bool PortIsOpen() {
    const auto* control = Data().controls.MSComm1;
    return control && control->PortOpen();
}

void SetStatus(const std::string& text) {
    Data().status = text;
    if (Data().controls.SetStatusText)
        Data().controls.SetStatusText(text);
    TellObservers();
}

void SetState(LinkState state) {
    // The end of the message about a bad frame fails the link; until then no screen may.
    if (Data().messageOpen && state == LinkState::failed) {
        Data().failedMeanwhile = true;
        return;
    }
    Data().failedSinceBegin = Data().failedSinceBegin || state == LinkState::failed;
    if (std::exchange(Data().state, state) != state)
        TellObservers();
}

void TellObservers() {
    auto& observers = Data().observers;
    std::erase_if(observers, [](const auto& observer) { return observer.expired(); });
    const auto present = observers; // an observer may come or go while one is called
    for (const auto& observer : present) {
        if (const auto changed = observer.lock())
            (*changed)();
    }
}

void Fail(const std::string& reason) {
    SetStatus(reason);
    SetState(LinkState::failed);
}

} // namespace internal

LinkState State() {
    return internal::Data().state;
}

bool HasFailed() {
    return internal::Data().failedSinceBegin && !internal::Data().messageOpen;
}

const std::string& StatusText() {
    return internal::Data().status;
}

std::string LinkText() {
    std::string text = "COM" + NumberText::Plain(std::int32_t{PortNumber}) + ", " +
                       NumberText::Plain(BitRate) + " bit/s: ";
    if (!internal::PortIsOpen())
        return text + "not open";
    if (State() == LinkState::failed)
        return text + "no connection";
    if (State() == LinkState::answered)
        return text + "the instrument answers";
    return text + (internal::Data().reading ? "waiting for the instrument" : "open");
}

std::shared_ptr<void> ObserveLink(std::function<void()> changed) {
    auto observer = std::make_shared<std::function<void()>>(std::move(changed));
    internal::Data().observers.push_back(observer);
    return observer;
}

} // namespace CommPort
