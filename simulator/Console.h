#pragma once

#include "simulator/Command.h"
#include "simulator/Session.h"

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// The cable and the life of the program, as far as commands reach them.
class Host {
public:
    virtual ~Host() = default;

    virtual void Unplug(std::optional<Seconds> backAfter) = 0;

    /// Throws RunTimeError when the port cannot be made again.
    virtual void Replug() = 0;
    virtual bool Plugged() const = 0;

    /// Where the program finds the instrument, for example "COM1 (/dev/pts/3)".
    virtual std::string Place() const = 0;

    /// Without a rate the line follows the program's settings.
    virtual void SetBitRate(std::optional<std::uint32_t> bitRate) = 0;
    virtual void Quit() = 0;
};

struct Answer {
    bool ok = true;
    std::string text; ///< without a line end behind the last line
};

/// Carries out command lines, wherever they come from.
class Console {
public:
    Console(Session& session, Host& host) : session_(session), host_(host) {}

    /// An empty line and one that begins with "#" do nothing and answer nothing.
    Answer Execute(std::string_view line, Seconds now);

    std::string Status(Seconds now) const;

private:
    std::string Run(const SetSolution& command, Seconds now);
    std::string Run(const SetTemperature& command, Seconds now);
    std::string Run(const SetElectrode& command, Seconds now);
    std::string Run(const SetFault& command, Seconds now);
    std::string Run(const Unplug& command, Seconds now);
    std::string Run(const Replug& command, Seconds now);
    std::string Run(const SetAutomatic& command, Seconds now);
    std::string Run(const SetBitRate& command, Seconds now);
    std::string Run(const ShowStatus& command, Seconds now);
    std::string Run(const ShowHelp& command, Seconds now);
    std::string Run(const Quit& command, Seconds now);

    std::string Settling(const ChannelChoice& channels) const;

    Session& session_;
    Host& host_;
};

} // namespace simulator
