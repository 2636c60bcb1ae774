#pragma once

#include "platform/Platform.h"
#include "support/FakePrinter.h"

#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fake {

/// Answers message, input and file boxes from a script, in order. A question that the script does
/// not expect fails the test, and so does an answer that was never asked for.
class Dialogs : public platform::Dialogs {
public:
    ~Dialogs() override;

    void ExpectMessage(const std::string& prompt, int style, int answer = platform::button::ok);
    /// A message whose text comes from the system in part.
    void ExpectAnyMessage(int style, int answer = platform::button::ok);
    void ExpectInput(const std::string& prompt, const std::string& proposal,
                     const std::string& answer);
    void ExpectFileDialog(
        std::function<std::optional<std::filesystem::path>(const platform::FileDialogRequest&)>
            answer);

    /// Runs while a message box is open, before its answer.
    std::function<void()> whileMessageIsOpen;

    std::string lastMessage;

    int beeps = 0;
    /// The order of beeps and boxes, for example {"beep", "message"}.
    std::vector<std::string> events;

    void Beep() override;
    int ShowMessage(const std::string& prompt, int style, const std::string& caption) override;
    std::string AskText(const std::string& prompt, const std::string& title,
                        const std::string& proposal) override;
    std::optional<std::filesystem::path>
    ChooseFile(const platform::FileDialogRequest& request) override;

private:
    struct Message {
        std::optional<std::string> prompt; ///< nothing: any
        int style;
        int answer;
    };
    struct Input {
        std::string prompt;
        std::string proposal;
        std::string answer;
    };
    std::deque<Message> messages_;
    std::deque<Input> inputs_;
    std::deque<
        std::function<std::optional<std::filesystem::path>(const platform::FileDialogRequest&)>>
        fileDialogs_;
};

/// Counts event passes; each may run a step of the test.
class Desktop : public platform::Desktop {
public:
    platform::MousePointer pointer = platform::MousePointer::normal;
    int eventPasses = 0;
    std::function<void()> onEvents;
    std::vector<std::filesystem::path> helpShown;
    int calculatorShown = 0;
    int notepadShown = 0;
    bool lessMotion = false;
    bool keepsAwake = true; ///< the system has a service for it
    int wakeLocks = 0;      ///< held at this moment
    std::string awakeReason;

    void SetMousePointer(platform::MousePointer value) override { pointer = value; }
    platform::MousePointer GetMousePointer() const override { return pointer; }
    void ProcessPendingEvents() override;
    void ShowHelpText(const std::filesystem::path& helpFile) override;
    void ShowCalculator() override { ++calculatorShown; }
    void ShowNotepad() override { ++notepadShown; }
    bool WantsLessMotion() const override { return lessMotion; }
    std::unique_ptr<platform::WakeLock> KeepAwake(const std::string& reason) override;
};

/// Stands still unless it is moved, or moves by `step` at each look.
class Clock : public platform::Clock {
public:
    LocalTime now{2003, 3, 7, 14, 5, 33};
    mutable std::chrono::milliseconds monotonic{1000};
    std::chrono::milliseconds step{0};

    LocalTime Now() const override { return now; }
    std::chrono::milliseconds Monotonic() const override { return monotonic += step; }
};

/// The system's own files on disks whose room the test decides.
class FileStore : public platform::FileStore {
public:
    static constexpr std::uint64_t terabyte = 1'000'000'000'000;

    FileStore();

    std::uint64_t free_bytes = terabyte;
    /// Files in this folder lie on a disk of their own.
    std::filesystem::path otherDisk;
    std::uint64_t freeOnOtherDisk_bytes = terabyte;
    bool answersForRoom = true;

    std::filesystem::path CreateUnique(const std::filesystem::path& folder,
                                       const std::string& prefix) override {
        return real_->CreateUnique(folder, prefix);
    }
    std::unique_ptr<platform::AppendFile>
    OpenForAppend(const std::filesystem::path& file) override {
        return real_->OpenForAppend(file);
    }
    std::unique_ptr<platform::Replacement> BeginReplacement(const std::filesystem::path& file,
                                                            platform::Readers readers) override {
        return real_->BeginReplacement(file, readers);
    }
    void Truncate(const std::filesystem::path& file, std::uint64_t size) override {
        real_->Truncate(file, size);
    }
    bool IsPrivate(const std::filesystem::path& file) const override {
        return real_->IsPrivate(file);
    }
    std::unique_ptr<platform::FileLock> TryLock(const std::filesystem::path& file) override {
        return real_->TryLock(file);
    }
    platform::DiskRoom RoomOfDisk(const std::filesystem::path& file) const override;

private:
    std::unique_ptr<platform::FileStore> real_;
};

/// The per-user store in memory.
class UserStore : public platform::UserStore {
public:
    std::map<std::string, std::string> values; ///< "application/section/key"
    std::string writeError;                    ///< when set, saving throws it

    std::string GetSetting(const std::string& application, const std::string& section,
                           const std::string& key, const std::string& fallback) const override;
    void SaveSetting(const std::string& application, const std::string& section,
                     const std::string& key, const std::string& value) override;
};

/// Folders below one root.
class Places : public platform::Places {
public:
    explicit Places(std::filesystem::path root);

    std::filesystem::path ProgramFolder() const override { return root_ / "program"; }
    std::filesystem::path DataParentFolder() const override { return root_ / "user"; }
    std::filesystem::path ConfigurationFolder() const override { return root_ / "config"; }
    std::filesystem::path TemporaryFolder() const override { return root_ / "tmp"; }

private:
    std::filesystem::path root_;
};

/// A folder that is gone, with all in it, when the test ends.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// A whole platform for one test: fakes above the system's own settings file and file store in a
/// folder of the test's own. Every module of the core is reset with it, and the current folder is
/// again what it was when the test ends.
class Platform {
public:
    Platform();
    ~Platform();
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

    TemporaryFolder folder;
    Dialogs dialogs;
    Desktop desktop;
    Clock clock;
    UserStore userStore;
    Places places;
    Printing printing;
    std::unique_ptr<platform::ProfileFile> profile;
    std::unique_ptr<FileStore> files;

    std::filesystem::path SettingsFile() const;

private:
    std::filesystem::path currentFolder_ = std::filesystem::current_path();
    platform::Services services_;
};

} // namespace fake

/// The whole file, byte for byte.
std::string ReadBytes(const std::filesystem::path& file);
void WriteBytes(const std::filesystem::path& file, const std::string& bytes);
