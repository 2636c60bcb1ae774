#include "tools/Headless.h"

#include "base/RunTimeError.h"
#include "platform/Platform.h"
#include "platform/System.h"

#include <chrono>
#include <cstdint>

namespace tools {

namespace {

[[noreturn]] void Refuse() {
    throw RunTimeError("This needs the program with its screens");
}

class NoDialogs : public platform::Dialogs {
public:
    void Beep() override {}
    int ShowMessage(const std::string& prompt, int, const std::string&) override {
        throw RunTimeError(prompt);
    }
    std::string AskText(const std::string&, const std::string&, const std::string&) override {
        Refuse();
    }
    std::optional<std::filesystem::path> ChooseFile(const platform::FileDialogRequest&) override {
        Refuse();
    }
};

class NoDesktop : public platform::Desktop {
public:
    void SetMousePointer(platform::MousePointer) override {}
    platform::MousePointer GetMousePointer() const override {
        return platform::MousePointer::normal;
    }
    void ProcessPendingEvents() override {}
    void ShowHelpText(const std::filesystem::path&) override { Refuse(); }
    void ShowCalculator() override { Refuse(); }
    void ShowNotepad() override { Refuse(); }
    bool WantsLessMotion() const override { return true; }
    std::unique_ptr<platform::WakeLock> KeepAwake(const std::string&) override { return nullptr; }
};

class NoUserStore : public platform::UserStore {
public:
    std::string GetSetting(const std::string&, const std::string&, const std::string&,
                           const std::string& fallback) const override {
        return fallback;
    }
    void SaveSetting(const std::string&, const std::string&, const std::string&,
                     const std::string&) override {
        Refuse();
    }
};

/// The system's clock; but each look at the time that passes finds it a millisecond later, so that
/// a pause made for a reader's eye is soon over.
class ImpatientClock : public platform::Clock {
public:
    LocalTime Now() const override { return system_->Now(); }
    std::chrono::milliseconds Monotonic() const override {
        return std::chrono::milliseconds(++looks_);
    }

private:
    std::unique_ptr<platform::Clock> system_ = platform::MakeClock();
    mutable std::int64_t looks_ = 0;
};

class NoProfile : public platform::ProfileFile {
public:
    std::string GetString(const std::string&, const std::string&, const std::string& fallback,
                          std::size_t) const override {
        return fallback;
    }
    int GetInt(const std::string&, const std::string&, int fallback) const override {
        return fallback;
    }
    bool Write(const std::string&, const std::optional<std::string>&,
               const std::optional<std::string>&) override {
        return false;
    }
};

class NoPrinting : public platform::Printing {
public:
    platform::PrintOutcome Print(const std::string&, const platform::PrintDocument&) override {
        Refuse();
    }
};

/// The folders that a program knows without its screens.
class RecordingsPlace : public platform::Places {
public:
    explicit RecordingsPlace(std::filesystem::path recordings)
        : recordings_(std::move(recordings)) {}

    std::filesystem::path ProgramFolder() const override { Refuse(); }
    std::filesystem::path DataParentFolder() const override { return platform::UserDataFolder(); }
    std::filesystem::path ConfigurationFolder() const override { Refuse(); }
    std::filesystem::path TemporaryFolder() const override { return recordings_; }

private:
    std::filesystem::path recordings_;
};

} // namespace

struct Headless::Parts {
    explicit Parts(const std::optional<std::filesystem::path>& recordings)
        : places(recordings.value_or(platform::SystemTemporaryFolder())) {}

    NoDialogs dialogs;
    NoDesktop desktop;
    NoUserStore userStore;
    NoProfile profile;
    NoPrinting printing;
    RecordingsPlace places;
    ImpatientClock clock;
    std::unique_ptr<platform::FileStore> files = platform::MakeFileStore();
    platform::Services services{dialogs,   desktop, clock,  profile,
                                userStore, places,  *files, printing};
};

Headless::Headless(const std::optional<std::filesystem::path>& recordings)
    : parts_(std::make_unique<Parts>(recordings)) {
    platform::Install(&parts_->services);
}

Headless::~Headless() {
    platform::Install(nullptr);
}

} // namespace tools
