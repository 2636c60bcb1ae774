#include "support/ToldProcess.h"

#include "platform/win32/Win32File.h"

#include <array>
#include <stdexcept>
#include <string>

using platform::win32::FileHandle;

namespace {

constexpr UINT killedCode = 0xDEAD; ///< no program of the tests ends with it

/// Wine refuses a start now and then where hundreds follow each other on a busy machine.
bool Start(std::wstring command, STARTUPINFOW& start, PROCESS_INFORMATION& information) {
    constexpr int mostTries = 20;
    constexpr DWORD pause_ms = 100;
    for (int tries = 0; tries < mostTries; ++tries) {
        if (::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                             &start, &information))
            return true;
        ::Sleep(pause_ms);
    }
    return false;
}

} // namespace

struct ToldProcess::Process {
    FileHandle process;
    FileHandle output;
};

ToldProcess::ToldProcess(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments)
    : process_(std::make_unique<Process>()) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
    if (!::CreatePipe(&reading, &writing, &inherited, 0))
        throw std::runtime_error("no pipe");
    process_->output = FileHandle(reading);
    const FileHandle told(writing);
    ::SetHandleInformation(reading, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = told.Get();
    start.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
    std::wstring command = L"\"" + program.wstring() + L"\"";
    for (const std::string& argument : arguments)
        command += L" \"" + std::filesystem::path(argument).wstring() + L"\"";
    PROCESS_INFORMATION information{};
    if (!Start(command, start, information))
        throw std::runtime_error("cannot start " + program.string() + ": error " +
                                 std::to_string(::GetLastError()));
    process_->process = FileHandle(information.hProcess);
    FileHandle(information.hThread).Close();
}

ToldProcess::~ToldProcess() {
    Kill();
}

bool ToldProcess::Read() {
    std::array<char, 4096> bytes{};
    DWORD count = 0;
    if (!::ReadFile(process_->output.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count,
                    nullptr) ||
        count == 0)
        return false;
    said_.append(bytes.data(), count);
    return true;
}

std::optional<int> ToldProcess::Kill() {
    if (!process_->process.IsOpen())
        return std::nullopt;
    ::TerminateProcess(process_->process.Get(), killedCode); // refused where it has ended
    const int code = Wait();
    return code < 0 ? std::nullopt : std::optional(code);
}

int ToldProcess::Wait() {
    ::WaitForSingleObject(process_->process.Get(), INFINITE);
    DWORD code = 0;
    ::GetExitCodeProcess(process_->process.Get(), &code);
    process_->process.Close();
    return code == killedCode ? -1 : static_cast<int>(code);
}
