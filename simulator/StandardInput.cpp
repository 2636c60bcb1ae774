#include "simulator/StandardInput.h"

#include <array>
#include <cerrno>

#include <unistd.h>

namespace simulator {

namespace {

constexpr std::size_t longestLine = 4096;

} // namespace

std::optional<int> StandardInput::PollDescriptor() const {
    if (!open_ || InBackground())
        return std::nullopt;
    return descriptor_;
}

bool StandardInput::InBackground() const {
    const pid_t foreground = ::tcgetpgrp(descriptor_); // -1 where it is no terminal of ours
    return open_ && foreground >= 0 && foreground != ::getpgrp();
}

std::vector<std::string> StandardInput::ReadLines() {
    std::array<char, 1024> part{};
    const ssize_t count = ::read(descriptor_, part.data(), part.size());
    // EIO: the program was put into the background between the poll and the read.
    if (count < 0 && (errno == EAGAIN || errno == EINTR || (errno == EIO && InBackground())))
        return {};
    if (count <= 0) {
        open_ = false;
        endedByUser_ = count == 0 && ::isatty(descriptor_) != 0;
        return {};
    }
    line_.append(part.data(), static_cast<std::size_t>(count));
    std::vector<std::string> lines;
    for (std::size_t end = 0; (end = line_.find('\n')) != std::string::npos;) {
        lines.push_back(line_.substr(0, end));
        line_.erase(0, end + 1);
    }
    if (line_.size() > longestLine)
        line_.clear();
    return lines;
}

} // namespace simulator
