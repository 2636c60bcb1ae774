#include "NullPlatform.h"

#include "base/RunTimeError.h"
#include "platform/System.h"

#include <cstdlib>
#include <fstream>
#include <random>
#include <system_error>

namespace fuzz {

namespace {

class Dialogs : public platform::Dialogs {
public:
    explicit Dialogs(const std::function<void()>& whileMessageIsOpen)
        : whileMessageIsOpen_(whileMessageIsOpen) {}

    void Beep() override {}
    int ShowMessage(const std::string& /*prompt*/, int /*style*/,
                    const std::string& /*caption*/) override {
        if (whileMessageIsOpen_)
            whileMessageIsOpen_();
        return platform::button::no;
    }
    std::string AskText(const std::string& /*prompt*/, const std::string& /*title*/,
                        const std::string& /*proposal*/) override {
        return {};
    }
    std::optional<std::filesystem::path>
    ChooseFile(const platform::FileDialogRequest& /*request*/) override {
        return std::nullopt;
    }

private:
    const std::function<void()>& whileMessageIsOpen_;
};

class Desktop : public platform::Desktop {
public:
    void SetMousePointer(platform::MousePointer pointer) override { pointer_ = pointer; }
    platform::MousePointer GetMousePointer() const override { return pointer_; }
    void ProcessPendingEvents() override {}
    void ShowHelpText(const std::filesystem::path& /*helpFile*/) override {}
    void ShowCalculator() override {}
    void ShowNotepad() override {}
    bool WantsLessMotion() const override { return false; }
    std::unique_ptr<platform::WakeLock> KeepAwake(const std::string& /*reason*/) override {
        return nullptr;
    }

private:
    platform::MousePointer pointer_ = platform::MousePointer::normal;
};

class Clock : public platform::Clock {
public:
    LocalTime Now() const override { return {2003, 3, 7, 14, 5, 33}; }
    std::chrono::milliseconds Monotonic() const override { return ++looks_; }

private:
    mutable std::chrono::milliseconds looks_{0};
};

class UserStore : public platform::UserStore {
public:
    std::string GetSetting(const std::string& /*application*/, const std::string& /*section*/,
                           const std::string& /*key*/, const std::string& fallback) const override {
        return fallback;
    }
    void SaveSetting(const std::string& /*application*/, const std::string& /*section*/,
                     const std::string& /*key*/, const std::string& /*value*/) override {}
};

class Places : public platform::Places {
public:
    explicit Places(std::filesystem::path folder) : folder_(std::move(folder)) {}
    std::filesystem::path ProgramFolder() const override { return folder_; }
    std::filesystem::path DataParentFolder() const override { return folder_; }
    std::filesystem::path ConfigurationFolder() const override { return folder_; }
    std::filesystem::path TemporaryFolder() const override { return folder_; }

private:
    std::filesystem::path folder_;
};

class Printing : public platform::Printing {
public:
    platform::PrintOutcome Print(const std::string& /*name*/,
                                 const platform::PrintDocument& /*document*/) override {
        return platform::PrintOutcome::cancelled;
    }
};

std::filesystem::path NewFolder() {
    const std::filesystem::path memory = "/dev/shm"; // flushes cost nothing there
    std::error_code missing;
    const auto parent = std::filesystem::is_directory(memory, missing)
                            ? memory
                            : std::filesystem::temp_directory_path();
    std::random_device random;
    const auto folder = parent / ("vantrel-fuzz-" + std::to_string(random()));
    std::filesystem::create_directories(folder);
    return folder;
}

} // namespace

struct NullPlatform::Parts {
    Parts(const std::filesystem::path& folder, const std::function<void()>& whileMessageIsOpen)
        : dialogs(whileMessageIsOpen), profile(platform::MakeProfileFile(folder / "Vantrel.ini")),
          places(folder) {}

    Dialogs dialogs;
    Desktop desktop;
    Clock clock;
    std::unique_ptr<platform::ProfileFile> profile;
    UserStore userStore;
    Places places;
    std::unique_ptr<platform::FileStore> files = platform::MakeFileStore();
    Printing printing;
    platform::Services services{dialogs,   desktop, clock,  *profile,
                                userStore, places,  *files, printing};
};

NullPlatform::NullPlatform()
    : folder_(NewFolder()), parts_(std::make_unique<Parts>(folder_, whileMessageIsOpen)) {
    platform::Install(&parts_->services);
}

NullPlatform::~NullPlatform() {
    platform::Install(nullptr);
    std::error_code ignored; // a folder that stays behind is no finding
    std::filesystem::remove_all(folder_, ignored);
}

std::filesystem::path NullPlatform::SettingsFile() const {
    return folder_ / "Vantrel.ini";
}

std::filesystem::path NullPlatform::MakeFile(const std::string& name,
                                             std::string_view bytes) const {
    const auto file = folder_ / name;
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    Require(static_cast<bool>(stream.flush()));
    return file;
}

void Require(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace fuzz
