#pragma once

#include "platform/Digest.h"

#include <cstdint>
#include <filesystem>
#include <functional>
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

    /// All that the file holds now; nothing where it cannot be read. `betweenParts` is called
    /// every millisecond or less.
    std::optional<SealedLength> Take(const std::filesystem::path& file,
                                     const std::function<void()>& betweenParts = {});

private:
    bool GoOn(const std::filesystem::path& file, std::uint64_t end,
              const std::function<void()>& betweenParts);

    std::unique_ptr<platform::Digest> digest_;
    std::uint64_t length_ = 0; ///< taken so far
};

/// Puts the length and the sum into the history as an entry of records that have reached the file;
/// `how` stands before them. What cannot be read is noted without them.
void NoteSealed(TargetSeal& seal, const std::filesystem::path& file);
/// The file was read by no one yet, and may be that of weeks: events run meanwhile.
void NoteRecovered(const std::filesystem::path& file, const std::string& how);

} // namespace FileOpr
