#include "support/Win32Instrument.h"

#include "platform/win32/Win32File.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

using platform::win32::FileHandle;

namespace {

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

/// What Wine calls a path of the system below.
std::string Below(const std::string& path) {
    return "Z:" + path;
}

std::string Content(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string AwaitText(const std::filesystem::path& file, const std::string& awaited) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < end) {
        if (const auto text = Content(file); text.find(awaited) != std::string::npos)
            return text;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    throw std::runtime_error("the instrument said only: " + Content(file));
}

FileHandle OpenForChild(const wchar_t* name, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return FileHandle(::CreateFileW(name, access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                    disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// Starts a program of the system below. Only its output tells how it fares: Wine keeps no handle.
void Start(std::string command, const std::filesystem::path& output) {
    const FileHandle input = OpenForChild(L"NUL", GENERIC_READ, OPEN_EXISTING);
    const FileHandle said = OpenForChild(output.c_str(), GENERIC_WRITE, CREATE_ALWAYS);
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input.Get();
    start.hStdOutput = start.hStdError = said.Get();
    PROCESS_INFORMATION process{};
    if (!::CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                          &start, &process))
        throw std::runtime_error("cannot start " + command);
    FileHandle(process.hProcess).Close();
    FileHandle(process.hThread).Close();
}

} // namespace

bool Win32Instrument::IsThere() {
    return !Variable("VANTREL_INSTRUMENT").empty() && !Variable("VANTREL_SERIAL_LINK").empty();
}

Win32Instrument::Win32Instrument(const std::vector<std::string>& arguments)
    : folder_(std::filesystem::temp_directory_path() /
              ("vantrel-instrument-" + std::to_string(::GetCurrentProcessId()))) {
    std::filesystem::create_directories(folder_);
    std::string options = "--ideal";
    for (const auto& argument : arguments)
        options += " " + argument;
    RunBelow(options, "Instrument on");
}

Win32Instrument::~Win32Instrument() {
    try {
        Command("quit");
    } catch (const std::runtime_error&) {
        // It has ended already.
    }
    std::error_code open;
    std::filesystem::remove_all(folder_, open);
}

std::string Win32Instrument::RunBelow(const std::string& arguments,
                                      const std::string& awaited) const {
    static int runs = 0;
    const auto output = folder_ / std::to_string(++runs);
    // Whatever becomes of this test, the instrument ends some day.
    Start(Below("/usr/bin/timeout") + " 3600 " + Variable("VANTREL_INSTRUMENT") + " --link " +
              Variable("VANTREL_SERIAL_LINK") + " " + arguments,
          output);
    return AwaitText(output, awaited);
}

void Win32Instrument::Command(const std::string& line) const {
    const auto answer = RunBelow("--send " + line, "\n");
    if (answer.find("vantrel-instrument:") != std::string::npos)
        throw std::runtime_error(line + ": " + answer);
}
