#pragma once

#include "history/Settings.h"
#include "history/Store.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace History {

/// "Vantrel.history" in the user's data folder.
std::filesystem::path UsualFile();

/// The program's history, installed while it lives: takes down what happens, and never hinders it.
/// What cannot be written waits and is tried again; that is told once. A damaged file is put aside
/// under another name and a new one begun.
class Log {
public:
    using Tell = std::function<void(const std::string& message)>;

    /// Opens the file or begins it. What is told may be told before this returns.
    Log(std::filesystem::path file, Tell tell);
    /// Tries once more to write what waits.
    ~Log();
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    /// Where it is installed.
    static Log* Current();

    /// The entry is on the disk when this returns, or waits. Never throws.
    void Add(const Entry& entry) noexcept;

    /// Throws RunTimeError where there is no history to read.
    std::vector<NumberedEntry> Entries(const Wish& wish);
    const Store& Opened();

    const std::filesystem::path& File() const { return file_; }

    /// The settings as they were taken down last.
    Settings known;

private:
    void Write(bool now);
    void Open();
    void PutAside();
    void Failed(const std::string& reason);

    std::filesystem::path file_;
    Tell tell_;
    std::unique_ptr<Store> store_;
    std::vector<Row::Fields> waiting_;
    bool told_ = false;
    std::optional<std::chrono::milliseconds> failedAt_; ///< of the monotonic clock
};

} // namespace History
