#include "walk/WalkFaults.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"

#include <ctime>

namespace {

class AppendOrFail : public platform::AppendFile {
public:
    AppendOrFail(std::unique_ptr<platform::AppendFile> real, std::function<void()> meet)
        : real_(std::move(real)), meet_(std::move(meet)) {}

    void Append(std::string_view bytes, bool durable) override {
        meet_();
        real_->Append(bytes, durable);
    }
    std::uint64_t Size() const override { return real_->Size(); }

private:
    std::unique_ptr<platform::AppendFile> real_;
    std::function<void()> meet_;
};

} // namespace

LocalTime WalkClock::Now() const {
    const LocalTime real = real_.Now();
    std::tm parts{};
    parts.tm_year = real.year - 1900;
    parts.tm_mon = real.month - 1;
    parts.tm_mday = real.day;
    parts.tm_hour = real.hour;
    parts.tm_min = real.minute;
    parts.tm_sec = real.second;
    const std::time_t moved = ::timegm(&parts) + ahead_.count();
    ::gmtime_r(&moved, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
            parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

void WalkFiles::Meet(const std::filesystem::path& file) const {
    if (fails_())
        throw RunTimeError("Writing " + CodePage::NameOf(file) + ": Disk full");
}

std::filesystem::path WalkFiles::CreateUnique(const std::filesystem::path& folder,
                                              const std::string& prefix) {
    Meet(folder);
    return real_.CreateUnique(folder, prefix);
}

std::unique_ptr<platform::AppendFile> WalkFiles::OpenForAppend(const std::filesystem::path& file) {
    return std::make_unique<AppendOrFail>(real_.OpenForAppend(file), [this, file] { Meet(file); });
}

std::unique_ptr<platform::Replacement>
WalkFiles::BeginReplacement(const std::filesystem::path& file, platform::Readers readers) {
    Meet(file);
    return real_.BeginReplacement(file, readers);
}

void WalkFiles::Truncate(const std::filesystem::path& file, std::uint64_t size) {
    real_.Truncate(file, size);
}

bool WalkFiles::IsPrivate(const std::filesystem::path& file) const {
    return real_.IsPrivate(file);
}

std::unique_ptr<platform::FileLock> WalkFiles::TryLock(const std::filesystem::path& file) {
    return real_.TryLock(file);
}

platform::DiskRoom WalkFiles::RoomOfDisk(const std::filesystem::path& file) const {
    return real_.RoomOfDisk(file);
}
