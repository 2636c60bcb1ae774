#pragma once

#include "platform/FileStore.h"
#include "platform/posix/PosixFile.h"

namespace platform::posix {

/// A new file beside the one whose place it is to take; committing flushes it, renames it and
/// flushes the folder.
class PosixReplacement : public Replacement {
public:
    /// Throws RunTimeError where the folder takes no file.
    PosixReplacement(const std::filesystem::path& file, Readers readers);
    ~PosixReplacement() override;
    PosixReplacement(const PosixReplacement&) = delete;
    PosixReplacement& operator=(const PosixReplacement&) = delete;

    void Write(std::string_view bytes) override;
    const std::filesystem::path& HalfFile() const override { return half_; }
    void Commit() override;

private:
    void Create(unsigned int mode);

    std::filesystem::path target_; ///< behind a symbolic link
    std::filesystem::path half_;   ///< empty once it is in place
    Descriptor descriptor_;
};

} // namespace platform::posix
