#include "report/TextSource.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace Mreport {

namespace {

std::string ShownName(const std::filesystem::path& file) {
    return CodePage::FromPath(file.filename()).value_or("the file");
}

std::string ReasonOf(int error, const char* otherwise) {
    return error == 0 ? otherwise : std::error_code(error, std::generic_category()).message();
}

[[noreturn]] void Refuse(const std::filesystem::path& file, const std::string& reason) {
    throw RunTimeError("Opening " + ShownName(file) + ": " + reason);
}

void CheckReadable(const std::filesystem::path& file) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (status.type() == std::filesystem::file_type::not_found)
        Refuse(file, "File not found");
    if (error)
        Refuse(file, error.message());
    if (status.type() == std::filesystem::file_type::directory)
        Refuse(file, "This is a folder, not a measurement file");
    if (status.type() != std::filesystem::file_type::regular)
        Refuse(file, "This is a device or a pipe, not a measurement file");
}

} // namespace

FileSource::FileSource(const std::filesystem::path& file) : name_(ShownName(file)) {
    CheckReadable(file);
    stream_.rdbuf()->pubsetbuf(nullptr, 0); // blocks are read straight into the reader's buffer
    errno = 0;
    stream_.open(file, std::ios::binary);
    if (!stream_)
        Refuse(file, ReasonOf(errno, "Permission denied"));
}

std::uint64_t FileSource::Size() {
    stream_.clear();
    stream_.seekg(0, std::ios::end);
    const auto end = stream_.tellg();
    return end < 0 ? 0 : static_cast<std::uint64_t>(end);
}

std::size_t FileSource::Read(std::uint64_t offset, std::span<char> buffer) {
    stream_.clear();
    errno = 0;
    stream_.seekg(static_cast<std::streamoff>(offset));
    if (stream_)
        stream_.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    // The end of the file sets eof as well; a medium that fails is not the end of the file.
    if (stream_.bad() || (stream_.fail() && !stream_.eof()))
        throw RunTimeError("Reading " + name_ + ": " + ReasonOf(errno, "Device I/O error"));
    return static_cast<std::size_t>(stream_.gcount());
}

std::size_t MemorySource::Read(std::uint64_t offset, std::span<char> buffer) {
    if (offset >= bytes_.size())
        return 0;
    const auto count = std::min(buffer.size(), bytes_.size() - static_cast<std::size_t>(offset));
    std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(offset), count, buffer.begin());
    return count;
}

} // namespace Mreport
