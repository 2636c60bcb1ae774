#pragma once

#include "simulator/Console.h"
#include "simulator/ControlSocket.h"
#include "simulator/Options.h"
#include "simulator/Port.h"
#include "simulator/PortLink.h"
#include "simulator/Session.h"
#include "simulator/StandardInput.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace simulator {

/// Where an instrument with these options takes commands; nothing where it has no socket.
std::optional<std::filesystem::path> ControlPath(const Options& options);

/// The running instrument: one loop that waits for bytes, commands, signals and the time.
class Program final : Host {
public:
    /// Opens the port, makes its link and carries out the commands of the start. Throws
    /// RunTimeError.
    explicit Program(const Options& options);
    ~Program() override;

    /// Serves until "quit" or one of the signals INT, TERM and HUP.
    void Run();

private:
    void Unplug(std::optional<Seconds> backAfter) override;
    void Replug() override;
    bool Plugged() const override { return port_ != nullptr; }
    std::string Place() const override;
    void SetBitRate(std::optional<std::uint32_t> bitRate) override;
    void Quit() override { running_ = false; }

    void OpenLog();
    void OpenControl();
    void ServeOnce(const sigset_t& awaited);
    std::optional<Seconds> NextEvent() const;
    void ServePort(bool readable);
    void ServeInput();
    void ServeTime();
    void Send(std::span<const std::uint8_t> bytes);
    void FollowBitRate();
    void PortGone(const std::string& reason);

    Options options_;
    Session session_;
    Console console_;
    std::unique_ptr<Port> port_;
    std::unique_ptr<PortLink> link_;
    std::unique_ptr<ControlSocket> control_;
    std::optional<Seconds> replugAt_;
    StandardInput input_;
    std::ofstream log_;
    bool running_ = true;
};

} // namespace simulator
