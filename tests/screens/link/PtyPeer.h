#pragma once

#include <QSocketNotifier>

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

/// The other end of a serial line: a pseudo-terminal whose device the program opens.
class PtyPeer {
public:
    PtyPeer();
    ~PtyPeer();
    PtyPeer(const PtyPeer&) = delete;
    PtyPeer& operator=(const PtyPeer&) = delete;

    const std::string& Device() const { return device_; }

    void Send(std::span<const std::uint8_t> bytes);

    /// Everything that the program has written since the last call.
    std::vector<std::uint8_t> Received();

    /// Calls `answer` from the event loop whenever the program has written.
    void OnRequest(std::function<void()> answer);

    /// The cable is pulled: the device has gone.
    void Unplug();

    /// The bit rate that the program has set, as the system's constant (B9600).
    unsigned Speed() const;

private:
    int master_;
    std::string device_;
    std::unique_ptr<QSocketNotifier> notifier_;
};
