#include "simulator/ControlSocket.h"

#include "base/RunTimeError.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace simulator {

namespace {

constexpr std::size_t mostClients = 16;
constexpr std::size_t longestLine = 4096;
constexpr int waitingConnections = 8;
constexpr time_t answerWithin_s = 10;

sockaddr_un AddressOf(const std::filesystem::path& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string text = path.string();
    if (text.size() >= sizeof(address.sun_path))
        throw RunTimeError("Control socket " + text + ": the path is longer than " +
                           std::to_string(sizeof(address.sun_path) - 1) + " characters");
    std::memcpy(address.sun_path, text.c_str(), text.size() + 1);
    return address;
}

FileDescriptor MakeSocket(int flags) {
    FileDescriptor made(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0));
    if (!made.Valid())
        throw RunTimeError(SystemError("Making a control socket"));
    return made;
}

bool Connect(const FileDescriptor& from, const sockaddr_un& address) {
    return ::connect(from.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
}

/// False when the other end takes no more.
bool SendAll(const FileDescriptor& to, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::send(to.Get(), text.data(), text.size(), MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace

ControlSocket::ControlSocket(std::filesystem::path path, Execute execute)
    : path_(std::move(path)), execute_(std::move(execute)), listener_(MakeSocket(SOCK_NONBLOCK)) {
    const sockaddr_un address = AddressOf(path_);
    struct stat status {};
    if (::lstat(path_.c_str(), &status) == 0) {
        if (!S_ISSOCK(status.st_mode))
            throw RunTimeError("Control socket " + path_.string() +
                               ": there is a file of that name");
        if (Connect(MakeSocket(0), address))
            throw RunTimeError("Another instrument is at work there (control socket " +
                               path_.string() + "); choose another port");
        ::unlink(path_.c_str());
    }
    const mode_t before = ::umask(S_IRWXG | S_IRWXO);
    const int bound =
        ::bind(listener_.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    ::umask(before);
    if (bound != 0 || ::listen(listener_.Get(), waitingConnections) != 0)
        throw RunTimeError(SystemError("Control socket " + path_.string()));
}

ControlSocket::~ControlSocket() {
    ::unlink(path_.c_str());
}

void ControlSocket::Watch(std::vector<pollfd>& polls) const {
    if (clients_.size() < mostClients)
        polls.push_back({listener_.Get(), POLLIN, 0});
    for (const Client& each : clients_)
        polls.push_back({each.socket.Get(), POLLIN, 0});
}

void ControlSocket::Serve() {
    Accept();
    std::erase_if(clients_, [this](Client& each) { return !ServeClient(each); });
}

void ControlSocket::Accept() {
    while (clients_.size() < mostClients) {
        FileDescriptor client(
            ::accept4(listener_.Get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
        if (!client.Valid())
            return;
        clients_.push_back({std::move(client), {}});
    }
}

bool ControlSocket::ServeClient(Client& client) {
    std::array<char, 1024> part{};
    for (;;) {
        const ssize_t count = ::recv(client.socket.Get(), part.data(), part.size(), 0);
        if (count < 0)
            return errno == EAGAIN || errno == EINTR;
        if (count == 0)
            return false;
        client.line.append(part.data(), static_cast<std::size_t>(count));
        if (!ExecuteLines(client))
            return false;
    }
}

bool ControlSocket::ExecuteLines(Client& client) {
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = client.line.find('\n', begin)) != std::string::npos;
         begin = end + 1) {
        const Answer answer = execute_(std::string_view(client.line).substr(begin, end - begin));
        std::string text = answer.text.empty() ? "" : answer.text + "\n";
        text += answer.ok ? "ok\n" : "error\n";
        if (!SendAll(client.socket, text))
            return false;
    }
    client.line.erase(0, begin);
    if (client.line.size() <= longestLine)
        return true;
    SendAll(client.socket,
            "A command of more than " + std::to_string(longestLine) + " characters\nerror\n");
    return false;
}

Answer SendCommand(const std::filesystem::path& socket, std::string_view command) {
    const FileDescriptor connection = MakeSocket(0);
    if (!Connect(connection, AddressOf(socket)))
        throw RunTimeError(SystemError("No instrument listens at " + socket.string()));
    const timeval patience{answerWithin_s, 0};
    ::setsockopt(connection.Get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
    std::string text;
    if (SendAll(connection, std::string(command) + "\n")) {
        std::array<char, 1024> part{};
        ssize_t count = 0;
        while ((count = ::recv(connection.Get(), part.data(), part.size(), 0)) > 0) {
            text.append(part.data(), static_cast<std::size_t>(count));
            for (const auto& [end, ok] : {std::pair<std::string_view, bool>{"ok\n", true},
                                          std::pair<std::string_view, bool>{"error\n", false}}) {
                const bool whole = text == end || text.ends_with("\n" + std::string(end));
                if (!whole)
                    continue;
                text.resize(text.size() - end.size());
                if (text.ends_with('\n'))
                    text.pop_back();
                return {ok, text};
            }
        }
    }
    throw RunTimeError("The instrument at " + socket.string() + " did not answer");
}

} // namespace simulator
