#include "history/Log.h"

#include "base/CodePage.h"
#include "platform/Platform.h"
#include "platform/System.h"

#include <algorithm>

namespace History {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostWaiting = 1000; ///< entries; the first ones are kept
/// A disk that hangs must not be asked at each event.
constexpr std::chrono::minutes betweenTries{1};

Log* installed = nullptr;

std::string Reason(const std::exception& error) {
    return error.what();
}

fs::path WithEnd(fs::path file, const std::string& end) {
    file += end;
    return file;
}

/// A name beside the file that nothing has, for what is damaged.
fs::path FreeName(const fs::path& file) {
    std::string time = SortableTime(platform::Current().clock.Now());
    std::ranges::replace(time, ':', '.'); // which some systems do not take in a name
    std::string end = ".damaged " + time;
    std::error_code unreadable;
    for (int number = 2; fs::exists(WithEnd(file, end), unreadable); ++number)
        end = ".damaged " + time + " (" + std::to_string(number) + ")";
    return WithEnd(file, end);
}

/// The file with the log that belongs to it. What is not there needs no new name.
void Rename(const fs::path& file, const fs::path& name) {
    std::error_code missing;
    fs::rename(file, name, missing);
    if (missing)
        throw RunTimeError("Renaming " + CodePage::NameOf(file) + ": " + missing.message());
    for (const char* part : {"-wal", "-shm"})
        fs::rename(WithEnd(file, part), WithEnd(name, part), missing);
}

/// The first entry of an empty store.
void Begin(Store& store, const std::string& text) {
    Entry entry;
    entry.at = platform::Current().clock.Now();
    entry.kind = Kind::begun;
    entry.user = platform::UserName();
    entry.text = text;
    const std::array<Row::Fields, 1> first = {FieldsOf(entry)};
    store.Append(first);
}

} // namespace

fs::path UsualFile() {
    return platform::Current().places.DataParentFolder() / "Vantrel.history";
}

Log::Log(fs::path file, Tell tell) : file_(std::move(file)), tell_(std::move(tell)) {
    installed = this;
    Write(true);
}

Log::~Log() {
    installed = nullptr;
    if (!waiting_.empty())
        Write(true);
}

Log* Log::Current() {
    return installed;
}

void Log::Add(const Entry& entry) noexcept {
    try {
        if (waiting_.size() < mostWaiting)
            waiting_.push_back(FieldsOf(entry));
        Write(false);
    } catch (const std::exception& error) {
        Failed(Reason(error));
    }
}

std::vector<NumberedEntry> Log::Entries(const Wish& wish) {
    std::vector<NumberedEntry> entries;
    for (const Row& row : Opened().Rows(wish))
        entries.push_back(EntryOf(row));
    return entries;
}

const Store& Log::Opened() {
    Open();
    return *store_;
}

/// Writes what waits; a short while after a failure only where it must be `now`.
void Log::Write(bool now) {
    const auto time = platform::Current().clock.Monotonic();
    if (!CanBeKept() || (!now && failedAt_ && time < *failedAt_ + betweenTries))
        return;
    try {
        Open();
        if (!waiting_.empty())
            store_->Append(waiting_);
        waiting_.clear();
        failedAt_.reset();
    } catch (const Damaged&) {
        store_.reset();
        failedAt_ = time;
        PutAside();
    } catch (const std::exception& error) {
        store_.reset(); // one that was opened in trouble may be for reading only
        failedAt_ = time;
        Failed(Reason(error));
    }
}

void Log::Open() {
    if (store_ && store_->HasMoved())
        store_.reset();
    if (store_)
        return;
    auto opened = OpenStore(file_);
    if (opened->LastNumber() == 0)
        Begin(*opened, "The history begins.");
    store_ = std::move(opened);
}

/// Under a lock and after another look: another copy of the program may have put it aside already,
/// and what it has begun since must stay.
void Log::PutAside() {
    try {
        auto& files = platform::Current().files;
        const fs::path lockFile = WithEnd(file_, ".lock");
        files.OpenForAppend(lockFile);
        const auto lock = files.TryLock(lockFile);
        if (!lock)
            return Failed("Another copy of the program puts a damaged one aside");
        std::string reason;
        try {
            Open();
        } catch (const Damaged& damage) {
            reason = damage.what();
            const fs::path name = FreeName(file_);
            Rename(file_, name);
            const std::string nameText = CodePage::NameOf(name.filename());
            store_ = OpenStore(file_);
            Begin(*store_, "The history begins anew: the one before was damaged and is kept as " +
                               nameText + ".");
            tell_("The history was damaged: " + reason + "\n\nIt is kept as " + nameText +
                  ", and a new one has begun.");
        }
        if (!waiting_.empty())
            store_->Append(waiting_);
        waiting_.clear();
        failedAt_.reset();
    } catch (const std::exception& error) {
        Failed(Reason(error));
    }
}

void Log::Failed(const std::string& reason) {
    if (std::exchange(told_, true))
        return;
    tell_("The history cannot be kept at this time: " + reason +
          "\n\nThe program works as ever; what happens is taken down when it can be.");
}

} // namespace History
