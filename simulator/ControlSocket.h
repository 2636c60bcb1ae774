#pragma once

#include "simulator/Console.h"
#include "simulator/FileDescriptor.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <poll.h>

namespace simulator {

/// Takes command lines from other programs of the user over a socket in the file system. Each line
/// is answered by its text and a line "ok" or "error".
class ControlSocket {
public:
    using Execute = std::function<Answer(std::string_view line)>;

    /// Throws RunTimeError when another instrument listens there, or the socket cannot be made.
    ControlSocket(std::filesystem::path path, Execute execute);
    ~ControlSocket();
    ControlSocket(const ControlSocket&) = delete;
    ControlSocket& operator=(const ControlSocket&) = delete;

    /// Adds what the program's loop must watch.
    void Watch(std::vector<pollfd>& polls) const;

    /// Serves what has arrived, without waiting.
    void Serve();

private:
    struct Client {
        FileDescriptor socket;
        std::string line; ///< what has come of the next line
    };

    void Accept();
    bool ServeClient(Client& client);
    bool ExecuteLines(Client& client);

    std::filesystem::path path_;
    Execute execute_;
    FileDescriptor listener_;
    std::vector<Client> clients_;
};

/// Sends one command to a running instrument and waits for its answer. Throws RunTimeError when
/// none listens there.
Answer SendCommand(const std::filesystem::path& socket, std::string_view command);

} // namespace simulator
