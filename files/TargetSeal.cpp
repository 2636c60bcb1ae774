#include "files/TargetSeal.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "files/TargetTransfer.h"
#include "history/Notes.h"
#include "platform/System.h"

#include <algorithm>
#include <fstream>
#include <utility>
#include <vector>

namespace FileOpr {

namespace {

constexpr std::string_view recordStart = "\nRecord ";

/// The number of the last record, found from the end: a comment may be long, but not longer than a
/// chunk in any file that was recorded.
std::int32_t LastRecord(const std::filesystem::path& file, std::uint64_t end) {
    const std::uint64_t from = end - std::min<std::uint64_t>(end, chunkSize);
    std::string tail(static_cast<std::size_t>(end - from), '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.seekg(static_cast<std::streamoff>(from));
    stream.read(tail.data(), static_cast<std::streamsize>(tail.size()));
    const auto place = tail.rfind(recordStart);
    if (place == std::string::npos)
        return 0;
    return static_cast<std::int32_t>(
        NumberText::Leading(std::string_view(tail).substr(place + recordStart.size())));
}

void NoteReached(History::Kind kind, const std::string& how, const std::filesystem::path& file,
                 const std::optional<SealedLength>& sealed) {
    History::Entry entry;
    entry.kind = kind;
    entry.file = History::FileText(file);
    entry.text = how;
    if (sealed) {
        entry.text += (how.empty() ? "" : "; ") + std::to_string(sealed->length) +
                      " bytes, up to record " + NumberText::Plain(sealed->record);
        entry.data = History::DataOf({{"length", std::to_string(sealed->length)},
                                      {"record", NumberText::Plain(sealed->record)},
                                      {"sha256", sealed->sha256}});
    }
    History::Note(std::move(entry));
}

} // namespace

std::optional<SealedLength> TargetSeal::Take(const std::filesystem::path& file,
                                             const std::function<void()>& betweenParts) {
    std::error_code missing;
    const std::uint64_t size = std::filesystem::file_size(file, missing);
    if (missing)
        return std::nullopt;
    if (!digest_ || size < length_) { // somebody has cut it: it is read anew
        digest_ = platform::MakeSha256();
        length_ = 0;
    }
    if (!GoOn(file, size, betweenParts)) {
        digest_.reset();
        return std::nullopt;
    }
    return SealedLength{size, LastRecord(file, size), digest_->Hex()};
}

bool TargetSeal::GoOn(const std::filesystem::path& file, std::uint64_t end,
                      const std::function<void()>& betweenParts) {
    std::ifstream stream(file, std::ios::binary);
    stream.seekg(static_cast<std::streamoff>(length_));
    std::vector<char> chunk(chunkSize);
    while (stream && length_ < end) {
        const auto wanted = std::min<std::uint64_t>(end - length_, chunk.size());
        stream.read(chunk.data(), static_cast<std::streamsize>(wanted));
        digest_->Add(std::span(chunk).first(static_cast<std::size_t>(stream.gcount())));
        length_ += static_cast<std::uint64_t>(stream.gcount());
        if (betweenParts)
            betweenParts();
    }
    return length_ == end;
}

void NoteSealed(TargetSeal& seal, const std::filesystem::path& file) {
    if (History::IsKept())
        NoteReached(History::Kind::flushed, {}, file, seal.Take(file));
}

void NoteRecovered(const std::filesystem::path& file, const std::string& how) {
    if (!History::IsKept())
        return;
    TargetSeal seal;
    NoteReached(History::Kind::recovered, how, file, seal.Take(file, Mcommon::LetEventsRun));
}

} // namespace FileOpr
