#pragma once

#include "platform/Digest.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace FileOpr {

/// What a measurement file held at a moment at which its last record was whole.
struct SealedLength {
    std::uint64_t length = 0;
    std::int32_t record = 0; ///< the number of the last one; 0 for the header alone
    std::string sha256;      ///< of the file's first `length` bytes
};

/// The SHA-256 of a file that grows, continued with what it has gained since the last time, so that
/// a long run is not read again and again.
class TargetSeal {
public:
    /// The file is a new one.
    void Begin() { digest_.reset(); }

    /// All that the file holds now; nothing where it cannot be read.
    std::optional<SealedLength> Take(const std::filesystem::path& file);

private:
    bool GoOn(const std::filesystem::path& file, std::uint64_t end);

    std::unique_ptr<platform::Digest> digest_;
    std::uint64_t length_ = 0; ///< taken so far
};

/// Puts the length and the sum into the history as an entry of records that have reached the file;
/// `how` stands before them. What cannot be read is noted without them.
void NoteSealed(TargetSeal& seal, const std::filesystem::path& file);
void NoteRecovered(const std::filesystem::path& file, const std::string& how);

} // namespace FileOpr
