#pragma once

#include "faults/FailingCalls.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// A disk that loses its power: keeps the log of what is done to the files of a folder, and tells
/// what each moment of it may have left. What was flushed stays. Of what was not, a file's bytes
/// may be there in whole or in part or not at all; names change in the order in which they were
/// changed, up to any point behind the last flush of their folder.
class CrashDisk : public FailingCalls::Watcher {
public:
    /// Files by name, with their content.
    using State = std::map<std::string, std::string>;

    /// An entry of the log.
    struct Change {
        enum class Kind { make, write, cut, flush, rename, remove } kind;
        std::string file;
        std::string to;    ///< of a rename
        std::size_t at;    ///< where bytes begin, or the length of what is cut
        std::string bytes; ///< of a write
        std::size_t promised;
    };

    /// The files that are in the folder by now are on the disk.
    explicit CrashDisk(std::filesystem::path folder);

    /// What was promised so far, noted with each change; the meaning is the caller's.
    std::function<std::size_t()> Promised = [] { return std::size_t{0}; };

    /// What a power failure may leave, each state once, with what had been promised by then.
    std::vector<std::pair<State, std::size_t>> States() const;

    /// Makes the folder hold this state and nothing else.
    void Restore(const State& state) const;

    void Made(const std::string& file) override;
    void Wrote(const std::string& file, std::size_t at, std::string_view bytes) override;
    void Cut(const std::string& file, std::size_t length) override;
    void Flushed(const std::string& fileOrFolder) override;
    void Renamed(const std::string& from, const std::string& to) override;
    void Removed(const std::string& file) override;

private:
    void Note(Change change);

    std::filesystem::path folder_;
    State before_;
    std::vector<Change> log_;
};
