#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// What the POSIX parts of the seam share: file descriptors that close themselves, and errors that
/// say operation, object and reason.
namespace platform::posix {

/// A file descriptor that is closed with its object; -1 for none.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;

    int Number() const { return number_; }
    bool IsOpen() const { return number_ >= 0; }

    /// Closes now; false, with errno set, when the system reports a write error only here.
    bool Close();

private:
    int number_;
};

/// Throws RunTimeError "<operation> <file>: <reason of errno>".
[[noreturn]] void ThrowError(const std::string& operation, const std::filesystem::path& file);

/// Opens with close-on-exec, again where a signal interrupts; throws RunTimeError.
Descriptor Open(const std::filesystem::path& file, int flags, unsigned int mode,
                const std::string& operation);

/// Writes all bytes; false, with errno set, when the system took only a part of them.
bool WriteAll(int descriptor, std::string_view bytes);

/// Puts the names in the file's folder on the disk. Throws RunTimeError; a folder that may not be
/// read is left to the system.
void FlushFolder(const std::filesystem::path& file);

} // namespace platform::posix
