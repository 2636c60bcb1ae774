#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <span>
#include <string>

namespace Mreport {

/// The bytes of a measurement file, read where they are asked for.
class TextSource {
public:
    virtual ~TextSource() = default;

    /// Bytes that the source holds now; a file being recorded grows.
    virtual std::uint64_t Size() = 0;

    /// Fills `buffer` from `offset` and returns the bytes read: fewer than asked for only where the
    /// source ends. Throws RunTimeError where it cannot be read.
    virtual std::size_t Read(std::uint64_t offset, std::span<char> buffer) = 0;
};

/// A file that stays open while it is viewed.
class FileSource : public TextSource {
public:
    /// Throws RunTimeError naming the file and why it cannot be viewed: missing, a folder, no
    /// permission, or nothing that can be read at any place (a pipe, a device).
    explicit FileSource(const std::filesystem::path& file);

    std::uint64_t Size() override;
    std::size_t Read(std::uint64_t offset, std::span<char> buffer) override;

private:
    std::string name_; ///< as messages tell it
    std::ifstream stream_;
};

/// Bytes in memory.
class MemorySource : public TextSource {
public:
    explicit MemorySource(std::string bytes) : bytes_(std::move(bytes)) {}

    std::uint64_t Size() override { return bytes_.size(); }
    std::size_t Read(std::uint64_t offset, std::span<char> buffer) override;

    void Append(const std::string& bytes) { bytes_ += bytes; }
    void Cut(std::size_t size) { bytes_.resize(size); }

private:
    std::string bytes_;
};

} // namespace Mreport
