#pragma once

#include "platform/Clock.h"
#include "platform/FileStore.h"

#include <chrono>
#include <functional>

/// The system's clock, which somebody sets now and then.
class WalkClock : public platform::Clock {
public:
    explicit WalkClock(platform::Clock& real) : real_(real) {}

    /// From now on the wall clock shows this much more, or less, than the system's.
    void Set(std::chrono::seconds ahead) { ahead_ = ahead; }

    LocalTime Now() const override;
    std::chrono::milliseconds Monotonic() const override { return real_.Monotonic(); }

private:
    platform::Clock& real_;
    std::chrono::seconds ahead_{0};
};

/// The system's files, of which writes fail while the disk is in trouble.
class WalkFiles : public platform::FileStore {
public:
    /// `fails` is asked at each write, flush and new file.
    WalkFiles(platform::FileStore& real, std::function<bool()> fails)
        : real_(real), fails_(std::move(fails)) {}

    std::filesystem::path CreateUnique(const std::filesystem::path& folder,
                                       const std::string& prefix) override;
    std::unique_ptr<platform::AppendFile> OpenForAppend(const std::filesystem::path& file) override;
    std::unique_ptr<platform::Replacement> BeginReplacement(const std::filesystem::path& file,
                                                            platform::Readers readers) override;
    void Truncate(const std::filesystem::path& file, std::uint64_t size) override;
    bool IsPrivate(const std::filesystem::path& file) const override;
    std::unique_ptr<platform::FileLock> TryLock(const std::filesystem::path& file) override;
    platform::DiskRoom RoomOfDisk(const std::filesystem::path& file) const override;

private:
    void Meet(const std::filesystem::path& file) const;

    platform::FileStore& real_;
    std::function<bool()> fails_;
};
