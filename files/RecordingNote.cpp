#include "files/RecordingNote.h"

#include "platform/Platform.h"

#include <charconv>
#include <fstream>
#include <sstream>

namespace FileOpr {

namespace {

// The path comes last and runs to the end: a name may hold anything, even a line break.
constexpr std::string_view title = "Vantrel recording\n";
constexpr std::string_view flushKey = "flush=";
constexpr std::string_view targetKey = "target=";

bool TakePrefix(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

bool TakeNumber(std::string_view& text, std::uint64_t& number) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc())
        return false;
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return true;
}

std::u8string_view AsUtf8(std::string_view text) {
    return {reinterpret_cast<const char8_t*>(text.data()), text.size()};
}

std::string PathText(const std::filesystem::path& path) {
    const auto utf8 = path.u8string();
    return {reinterpret_cast<const char*>(utf8.data()), utf8.size()};
}

std::filesystem::path WithSuffix(const std::filesystem::path& file, const char* suffix) {
    auto result = file;
    result += suffix;
    return result;
}

} // namespace

std::optional<RecordingNote> ReadNote(const std::filesystem::path& noteFile) {
    std::ifstream stream(noteFile, std::ios::binary);
    std::ostringstream bytes;
    if (!(bytes << stream.rdbuf()))
        return std::nullopt;
    const std::string content = bytes.str();
    std::string_view text = content;
    RecordingNote note;
    if (!TakePrefix(text, title))
        return std::nullopt;
    if (TakePrefix(text, flushKey)) {
        FlushMark mark;
        if (!TakeNumber(text, mark.targetLength) || !TakePrefix(text, ",") ||
            !TakeNumber(text, mark.from) || !TakePrefix(text, "\n"))
            return std::nullopt;
        note.flush = mark;
    }
    if (!TakePrefix(text, targetKey) || text.empty())
        return std::nullopt;
    note.target = std::filesystem::path(AsUtf8(text));
    return note;
}

void WriteNote(const std::filesystem::path& noteFile, const RecordingNote& note) {
    std::string text(title);
    if (note.flush)
        text += std::string(flushKey) + std::to_string(note.flush->targetLength) + "," +
                std::to_string(note.flush->from) + "\n";
    text += targetKey;
    text += PathText(note.target);
    platform::Current().files.Replace(noteFile, text);
}

RecordingFiles::RecordingFiles(std::filesystem::path temporaryFile)
    : temporary(std::move(temporaryFile)), note(WithSuffix(temporary, noteSuffix)),
      lock(WithSuffix(temporary, lockSuffix)) {}

} // namespace FileOpr
