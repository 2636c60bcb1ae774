#include "support/FakePlatform.h"

#include "app/Mcommon.h"
#include "base/RunTimeError.h"
#include "chem/Measure.h"
#include "link/CommPort.h"
#include "link/DataAcq.h"
#include "platform/System.h"
#include "settings/mWinInit.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>

namespace fake {

Dialogs::~Dialogs() {
    EXPECT_TRUE(messages_.empty())
        << "message never shown: " << messages_.front().prompt.value_or("(any)");
    EXPECT_TRUE(inputs_.empty()) << "input box never shown: " << inputs_.front().prompt;
    EXPECT_TRUE(fileDialogs_.empty()) << "a file dialog was never shown";
}

void Dialogs::ExpectMessage(const std::string& prompt, int style, int answer) {
    messages_.push_back({prompt, style, answer});
}

void Dialogs::ExpectAnyMessage(int style, int answer) {
    messages_.push_back({std::nullopt, style, answer});
}

void Dialogs::ExpectInput(const std::string& prompt, const std::string& proposal,
                          const std::string& answer) {
    inputs_.push_back({prompt, proposal, answer});
}

void Dialogs::ExpectFileDialog(
    std::function<std::optional<std::filesystem::path>(const platform::FileDialogRequest&)>
        answer) {
    fileDialogs_.push_back(std::move(answer));
}

void Dialogs::Beep() {
    ++beeps;
    events.emplace_back("beep");
}

int Dialogs::ShowMessage(const std::string& prompt, int style, const std::string& caption) {
    lastMessage = prompt;
    events.emplace_back("message");
    EXPECT_EQ(caption, Mcommon::applicationTitle);
    if (messages_.empty()) {
        ADD_FAILURE() << "unexpected message: " << prompt;
        return platform::button::no;
    }
    const Message expected = messages_.front();
    messages_.pop_front();
    EXPECT_EQ(prompt, expected.prompt.value_or(prompt));
    EXPECT_EQ(style, expected.style) << prompt;
    if (whileMessageIsOpen)
        whileMessageIsOpen();
    return expected.answer;
}

std::string Dialogs::AskText(const std::string& prompt, const std::string& title,
                             const std::string& proposal) {
    events.emplace_back("input");
    EXPECT_EQ(title, Mcommon::applicationTitle);
    if (inputs_.empty()) {
        ADD_FAILURE() << "unexpected input box: " << prompt;
        return {};
    }
    const Input expected = inputs_.front();
    inputs_.pop_front();
    EXPECT_EQ(prompt, expected.prompt);
    EXPECT_EQ(proposal, expected.proposal);
    return expected.answer;
}

std::optional<std::filesystem::path>
Dialogs::ChooseFile(const platform::FileDialogRequest& request) {
    events.emplace_back("file");
    if (fileDialogs_.empty()) {
        ADD_FAILURE() << "unexpected file dialog: " << request.title;
        return std::nullopt;
    }
    const auto answer = fileDialogs_.front();
    fileDialogs_.pop_front();
    return answer(request);
}

void Desktop::ProcessPendingEvents() {
    ++eventPasses;
    if (onEvents)
        onEvents();
}

void Desktop::ShowHelpText(const std::filesystem::path& helpFile) {
    helpShown.push_back(helpFile);
}

namespace {
class CountedWakeLock : public platform::WakeLock {
public:
    explicit CountedWakeLock(int& count) : count_(count) { ++count_; }
    ~CountedWakeLock() override { --count_; }
    CountedWakeLock(const CountedWakeLock&) = delete;
    CountedWakeLock& operator=(const CountedWakeLock&) = delete;

private:
    int& count_;
};
} // namespace

std::unique_ptr<platform::WakeLock> Desktop::KeepAwake(const std::string& reason) {
    awakeReason = reason;
    return keepsAwake ? std::make_unique<CountedWakeLock>(wakeLocks) : nullptr;
}

FileStore::FileStore() : real_(platform::MakeFileStore()) {}

platform::DiskRoom FileStore::RoomOfDisk(const std::filesystem::path& file) const {
    if (!answersForRoom)
        throw RunTimeError("Finding the free space: Input/output error");
    if (file.parent_path() == otherDisk)
        return {freeOnOtherDisk_bytes, 2};
    return {free_bytes, 1};
}

std::string UserStore::GetSetting(const std::string& application, const std::string& section,
                                  const std::string& key, const std::string& fallback) const {
    const auto found = values.find(application + "/" + section + "/" + key);
    return found == values.end() ? fallback : found->second;
}

void UserStore::SaveSetting(const std::string& application, const std::string& section,
                            const std::string& key, const std::string& value) {
    if (!writeError.empty())
        throw RunTimeError(writeError);
    values[application + "/" + section + "/" + key] = value;
}

Places::Places(std::filesystem::path root) : root_(std::move(root)) {
    for (const auto* folder : {"program", "user", "config", "tmp"})
        std::filesystem::create_directories(root_ / folder);
}

namespace {
/// In memory where the system has such a folder: flushes to disk cost nothing there.
std::filesystem::path FastTemporaryFolder() {
    const std::filesystem::path memory = "/dev/shm";
    std::error_code missing;
    return std::filesystem::is_directory(memory, missing) ? memory
                                                          : std::filesystem::temp_directory_path();
}
} // namespace

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    path_ = FastTemporaryFolder() /
            ("vantrel-test-" + std::to_string(random()) + "-" + std::to_string(random()));
    std::filesystem::create_directories(path_);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored; // a folder that stays behind is no failure of the test
    std::filesystem::remove_all(path_, ignored);
}

namespace {
void ResetCore() {
    Mcommon::Reset();
    Measure::Reset();
    mWinInit::Reset();
    CommPort::Reset();
    DataAcq::Reset();
}
} // namespace

Platform::Platform()
    : places(folder.Path()), profile(platform::MakeProfileFile(SettingsFile())),
      files(std::make_unique<FileStore>()), services_{dialogs,   desktop, clock,  *profile,
                                                      userStore, places,  *files, printing} {
    platform::Install(&services_);
    ResetCore();
}

Platform::~Platform() {
    ResetCore();
    platform::Install(nullptr);
    std::error_code gone;
    std::filesystem::current_path(currentFolder_, gone);
}

std::filesystem::path Platform::SettingsFile() const {
    return places.ConfigurationFolder() / "Vantrel.ini";
}

} // namespace fake

std::string ReadBytes(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << "cannot read " << file;
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
}

void WriteBytes(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream << bytes;
    EXPECT_TRUE(stream.flush()) << "cannot write " << file;
}
