#include "faults/CrashDisk.h"

#include "support/FakePlatform.h"

#include <algorithm>
#include <array>
#include <set>

namespace fs = std::filesystem;

namespace {

/// Which of the changes to a file that were not flushed have reached the disk.
enum class Kept { none, all, allButFirst, lastByHalf };
constexpr std::array ways{Kept::none, Kept::all, Kept::allButFirst, Kept::lastByHalf};

/// A write, or a cut where it has no bytes.
struct Unflushed {
    bool cut = false;
    std::size_t at = 0;
    std::string bytes;
};

void Apply(std::string& content, const Unflushed& change) {
    if (change.cut) {
        content.resize(change.at);
        return;
    }
    content.resize(std::max(content.size(), change.at + change.bytes.size()));
    content.replace(change.at, change.bytes.size(), change.bytes);
}

struct Inode {
    std::string flushed;
    std::vector<Unflushed> since;

    std::string Content(Kept kept) const {
        std::string content = flushed;
        if (kept == Kept::none)
            return content;
        for (std::size_t i = kept == Kept::allButFirst ? 1 : 0; i < since.size(); ++i) {
            Unflushed change = since[i];
            if (kept == Kept::lastByHalf && i + 1 == since.size())
                change.bytes.resize(change.bytes.size() / 2);
            Apply(content, change);
        }
        return content;
    }

    void Flush() {
        flushed = Content(Kept::all);
        since.clear();
    }
};

using Names = std::map<std::string, std::size_t>; ///< with the number of their inode

/// Gives or takes a name; a rename does both at once.
struct NameChange {
    std::string taken;
    std::string given;
    std::size_t inode = 0;
};

void Apply(Names& names, const NameChange& change) {
    names.erase(change.taken);
    if (!change.given.empty())
        names[change.given] = change.inode;
}

/// The disk at one moment of the log.
class Moment {
public:
    explicit Moment(const CrashDisk::State& before) {
        for (const auto& [name, content] : before) {
            flushedNames_[name] = inodes_.size();
            inodes_.push_back({content, {}});
        }
        names_ = flushedNames_;
    }

    void Replay(const CrashDisk::Change& change) {
        using Kind = CrashDisk::Change::Kind;
        switch (change.kind) {
        case Kind::make:
            return Make(change.file);
        case Kind::write:
            return Alter(change.file, {false, change.at, change.bytes});
        case Kind::cut:
            return Alter(change.file, {true, change.at, ""});
        case Kind::flush:
            return Flush(change.file);
        case Kind::rename:
            return Rename(change.file, change.to);
        case Kind::remove:
            return Remove(change.file);
        }
    }

    void AddStates(std::set<CrashDisk::State>& states) const {
        Names names = flushedNames_;
        for (std::size_t changes = 0; changes <= sinceNames_.size(); ++changes) {
            if (changes > 0)
                Apply(names, sinceNames_[changes - 1]);
            for (const Kept kept : ways)
                states.insert(StateOf(names, kept));
        }
    }

private:
    void Make(const std::string& file) {
        ChangeName({"", file, inodes_.size()});
        inodes_.emplace_back();
    }

    void Alter(const std::string& file, Unflushed change) {
        if (const auto found = names_.find(file); found != names_.end())
            inodes_[found->second].since.push_back(std::move(change));
    }

    void Rename(const std::string& from, const std::string& to) {
        if (const auto found = names_.find(from); found != names_.end())
            ChangeName({from, to, found->second});
    }

    void Remove(const std::string& file) { ChangeName({file, "", 0}); }

    void Flush(const std::string& fileOrFolder) {
        if (const auto found = names_.find(fileOrFolder); found != names_.end())
            inodes_[found->second].Flush();
        else
            FlushNames(fileOrFolder);
    }

    void ChangeName(NameChange change) {
        Apply(names_, change);
        sinceNames_.push_back(std::move(change));
    }

    /// Up to the last change within the folder.
    void FlushNames(const std::string& folder) {
        const auto within = [&folder](const NameChange& change) {
            const std::string& name = change.given.empty() ? change.taken : change.given;
            return fs::path(name).parent_path() == folder;
        };
        const auto last = std::find_if(sinceNames_.rbegin(), sinceNames_.rend(), within).base();
        for (auto change = sinceNames_.begin(); change != last; ++change)
            Apply(flushedNames_, *change);
        sinceNames_.erase(sinceNames_.begin(), last);
    }

    CrashDisk::State StateOf(const Names& names, Kept kept) const {
        CrashDisk::State state;
        for (const auto& [name, inode] : names)
            state[name] = inodes_[inode].Content(kept);
        return state;
    }

    std::vector<Inode> inodes_;
    Names names_; ///< as programs see them
    Names flushedNames_;
    std::vector<NameChange> sinceNames_;
};

} // namespace

CrashDisk::CrashDisk(fs::path folder) : folder_(std::move(folder)) {
    for (const auto& entry : fs::recursive_directory_iterator(folder_))
        if (entry.is_regular_file())
            before_[entry.path().string()] = ReadBytes(entry.path());
}

std::vector<std::pair<CrashDisk::State, std::size_t>> CrashDisk::States() const {
    std::vector<std::pair<State, std::size_t>> all;
    std::set<std::pair<State, std::size_t>> seen;
    Moment moment(before_);
    for (std::size_t done = 0; done <= log_.size(); ++done) {
        std::set<State> states;
        moment.AddStates(states);
        const std::size_t promised = done < log_.size() ? log_[done].promised : Promised();
        for (const State& state : states)
            if (seen.emplace(state, promised).second)
                all.emplace_back(state, promised);
        if (done == log_.size())
            break;
        moment.Replay(log_[done]);
    }
    return all;
}

void CrashDisk::Restore(const State& state) const {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder_))
        if (!entry.is_directory())
            files.push_back(entry.path());
    for (const fs::path& file : files)
        fs::remove(file);
    for (const auto& [name, content] : state)
        WriteBytes(name, content);
}

void CrashDisk::Note(Change change) {
    if (!change.file.starts_with(folder_.string()))
        return;
    change.promised = Promised();
    log_.push_back(std::move(change));
}

void CrashDisk::Made(const std::string& file) {
    Note({Change::Kind::make, file, "", 0, "", 0});
}

void CrashDisk::Wrote(const std::string& file, std::size_t at, std::string_view bytes) {
    Note({Change::Kind::write, file, "", at, std::string(bytes), 0});
}

void CrashDisk::Cut(const std::string& file, std::size_t length) {
    Note({Change::Kind::cut, file, "", length, "", 0});
}

void CrashDisk::Flushed(const std::string& fileOrFolder) {
    Note({Change::Kind::flush, fileOrFolder, "", 0, "", 0});
}

void CrashDisk::Renamed(const std::string& from, const std::string& to) {
    Note({Change::Kind::rename, from, to, 0, "", 0});
}

void CrashDisk::Removed(const std::string& file) {
    Note({Change::Kind::remove, file, "", 0, "", 0});
}
