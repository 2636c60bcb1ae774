#pragma once

#include <string>
#include <utility>

#include <unistd.h>

namespace simulator {

/// Owns an open descriptor of the system.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~FileDescriptor() {
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }

    int Get() const { return descriptor_; }
    bool Valid() const { return descriptor_ >= 0; }

private:
    int descriptor_ = -1;
};

/// What errno tells, behind what was tried: "Opening /dev/ttyUSB0: Permission denied".
std::string SystemError(const std::string& operation);

} // namespace simulator
