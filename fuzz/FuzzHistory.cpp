#include "NullPlatform.h"

#include "history/ChainCheck.h"
#include "history/Log.h"
#include "history/Selection.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

// A history of any bytes, or a true one with a few of its bytes changed, is opened, walked and
// read: it is either a whole history, or refused, or put aside as it is with a new one in its
// place. What is taken down afterwards is read back.

namespace {

namespace fs = std::filesystem;

constexpr auto fileName = "Vantrel.history";
constexpr std::string_view lastText = "taken down at last";
constexpr std::size_t bytesOfChange = 4; ///< of the input: place in three bytes, then the value

std::string BytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

History::Entry CalibrationEntry(int number) {
    History::Entry entry;
    entry.at = {2003, 3, 7, 14, 5, number};
    entry.kind = History::Kind::calibration;
    entry.electrode = "Ca";
    entry.serialNo = "A" + std::to_string(number % 3);
    entry.text = "number " + std::to_string(number);
    entry.data = History::DataOf({{"length", std::to_string(number)}, {"unit", "ppm"}});
    return entry;
}

/// The bytes of a history with some entries.
std::string TrueHistory(const fs::path& folder) {
    const auto file = folder / fileName;
    {
        History::Log log(file, [](const std::string&) { fuzz::Require(false); });
        constexpr int entries = 40;
        for (int number = 0; number < entries; ++number)
            log.Add(CalibrationEntry(number));
    }
    return BytesOf(file);
}

/// The input itself; or, where it begins with '=', the true history with changes that it tells.
std::string HistoryOf(std::string_view input, const std::string& whole) {
    if (!input.starts_with('='))
        return std::string(input);
    std::string changed = whole;
    input.remove_prefix(1);
    for (; input.size() >= bytesOfChange; input.remove_prefix(bytesOfChange)) {
        std::size_t place = 0;
        for (std::size_t i = 0; i + 1 < bytesOfChange; ++i)
            place = place * 256 + static_cast<unsigned char>(input[i]);
        changed[place % changed.size()] = input[bytesOfChange - 1];
    }
    if (!input.empty()) // a rest cuts it off
        changed.resize(changed.size() * static_cast<unsigned char>(input.front()) / 256);
    return changed;
}

void Clear(const fs::path& folder) {
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().filename().string().starts_with(fileName))
            fs::remove(entry.path());
}

bool IsPutAside(const fs::path& folder, const std::string& bytes) {
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().filename().string().starts_with(std::string(fileName) + ".damaged ") &&
            BytesOf(entry.path()) == bytes)
            return true;
    return false;
}

/// What the screens ask; a history that is not whole may refuse each.
void Read(History::Log& log) {
    const auto mayRefuse = [](auto ask) {
        try {
            ask();
        } catch (const RunTimeError&) {
            return;
        }
    };
    mayRefuse([&log] { History::CheckChain(log.Opened()); });
    mayRefuse([&log] {
        for (const auto& electrode : History::CalibratedElectrodes(log))
            History::CalibrationsOf(log, electrode);
    });
    mayRefuse([&log] { History::EventsWith(log, {}, "number"); });
}

/// True, too, where a page that nothing looked at before cannot be read.
bool IsReadBack(History::Log& log) {
    try {
        return std::ranges::any_of(log.Entries({}), [](const History::NumberedEntry& numbered) {
            return numbered.entry.text == lastText;
        });
    } catch (const RunTimeError&) {
        return true;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::NullPlatform platform;
    Clear(platform.Folder());
    static const std::string whole = TrueHistory(platform.Folder());
    Clear(platform.Folder());
    const std::string bytes = HistoryOf(fuzz::Text(data, size), whole);
    const auto file = platform.MakeFile(fileName, bytes);
    bool told = false;
    History::Log log(file, [&told](const std::string&) { told = true; });
    Read(log);
    History::Entry last = CalibrationEntry(1);
    last.text = lastText;
    log.Add(last);
    fuzz::Require(told || IsReadBack(log));
    if (told && IsPutAside(platform.Folder(), bytes)) { // a new one has begun
        fuzz::Require(log.Entries({}).size() == 2);
        fuzz::Require(!History::CheckChain(log.Opened()));
    }
    return 0;
}
