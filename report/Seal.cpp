#include "report/Seal.h"

#include "base/CodePage.h"
#include "base/DateText.h"
#include "base/RunTimeError.h"
#include "files/MeasurementLines.h"
#include "platform/Platform.h"
#include "platform/System.h"
#include "report/VerifyResult.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>

namespace Mreport {

namespace {

constexpr std::string_view titleStart = "Vantrel seal of ";
constexpr std::string_view timeStart = "Sealed: ";
constexpr std::string_view columns = "Length, last record and SHA-256 of the file up to there:";
constexpr std::size_t hexLength = 64;
constexpr std::size_t blockSize = std::size_t{64} * 1024;

/// Takes a number and the blank behind it off the text.
template <class Number>
bool TakeNumber(std::string_view& text, Number& number) {
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr == end || *result.ptr != ' ' || number < Number{})
        return false;
    text = std::string_view(result.ptr + 1, end);
    return true;
}

std::optional<SealPoint> ReadPoint(std::string_view line) {
    SealPoint point;
    if (!TakeNumber(line, point.length) || !TakeNumber(line, point.record))
        return std::nullopt;
    if (line.size() != hexLength ||
        line.find_first_not_of("0123456789abcdef") != std::string_view::npos)
        return std::nullopt;
    point.sha256 = line;
    return point;
}

} // namespace

std::string SealText(const Seal& seal, std::string_view fileName) {
    std::string text(titleStart);
    text.append(fileName).append("\n").append(timeStart).append(seal.sealedAt).append("\n");
    text.append(columns).append("\n");
    for (const SealPoint& point : seal.points)
        text += std::to_string(point.length) + " " + std::to_string(point.record) + " " +
                point.sha256 + "\n";
    return text;
}

std::optional<Seal> ReadSeal(std::string_view text) {
    Seal seal;
    std::string_view line;
    if (!MeasurementLines::TakeLine(text, line) || !line.starts_with(titleStart) ||
        !MeasurementLines::TakeLine(text, line) || !line.starts_with(timeStart))
        return std::nullopt;
    seal.sealedAt = line.substr(timeStart.size());
    if (!MeasurementLines::TakeLine(text, line) || line != columns)
        return std::nullopt;
    while (MeasurementLines::TakeLine(text, line)) {
        const auto point = ReadPoint(line);
        if (!point || (!seal.points.empty() && point->length <= seal.points.back().length))
            return std::nullopt;
        seal.points.push_back(*point);
    }
    return seal.points.empty() ? std::nullopt : std::optional(seal);
}

std::optional<Seal> LoadSeal(const std::filesystem::path& sealFile) {
    std::error_code missing;
    if (!std::filesystem::exists(sealFile, missing))
        return std::nullopt;
    std::ifstream stream(sealFile, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    auto seal = stream && text ? ReadSeal(text.str()) : std::nullopt;
    if (!seal)
        throw RunTimeError("Reading " + CodePage::NameOf(sealFile) + ": This is no seal");
    return seal;
}

Seal SaveSeal(const std::filesystem::path& sealFile, const std::filesystem::path& sealed,
              const std::vector<SealPoint>& points) {
    const LocalTime now = platform::Current().clock.Now();
    Seal seal{DateText::Date(now) + " " + DateText::TimeOfDay(now), points};
    platform::Current().files.Replace(sealFile, SealText(seal, CodePage::NameOf(sealed.filename())),
                                      platform::Readers::asUsual);
    return seal;
}

std::filesystem::path SealBeside(const std::filesystem::path& file) {
    auto seal = file;
    seal += ".seal";
    return seal;
}

SourceDigest::SourceDigest(TextSource& source)
    : source_(source), digest_(platform::MakeSha256()), buffer_(blockSize) {}

bool SourceDigest::TakeTo(std::uint64_t offset) {
    while (length_ < offset) {
        const auto wanted = std::min<std::uint64_t>(offset - length_, buffer_.size());
        const auto part = std::span(buffer_).first(static_cast<std::size_t>(wanted));
        const std::size_t read = source_.Read(length_, part);
        digest_->Add(part.first(read));
        length_ += read;
        if (read < part.size())
            return false;
    }
    return true;
}

Sealing::Sealing(TextSource& source, std::uint64_t end, std::int64_t records)
    : end_(end), recordsPerPoint_((records + mostRecordPoints - 1) / mostRecordPoints),
      digest_(source), scan_(source, {0, end}, {}) {
    recordsPerPoint_ = std::max<std::int64_t>(recordsPerPoint_, 1);
}

bool Sealing::Step(std::uint64_t bytes) {
    const std::uint64_t before = digest_.Length();
    FoundRecord record;
    while (digest_.Length() - before < bytes) {
        if (!scan_.Next(record)) {
            AddPoint(end_);
            return false;
        }
        if (records_ == 0)
            AddPoint(record.offset);
        lastRecord_ = record.number;
        if (++records_ % recordsPerPoint_ == 0 && record.ended)
            AddPoint(record.end);
    }
    return true;
}

void Sealing::AddPoint(std::uint64_t length) {
    const std::uint64_t last = points_.empty() ? 0 : points_.back().length;
    if (length <= last && !points_.empty())
        return;
    digest_.TakeTo(length); // a file that has become shorter meanwhile is sealed as it is
    if (digest_.Length() > last || points_.empty())
        points_.push_back({digest_.Length(), lastRecord_, digest_.Hex()});
}

SealCheck::SealCheck(TextSource& source, Seal seal)
    : source_(source), seal_(std::move(seal)), digest_(source) {}

bool SealCheck::Step(std::uint64_t bytes) {
    const std::uint64_t stop = digest_.Length() + bytes;
    while (passed_ < seal_.points.size()) {
        const SealPoint& point = seal_.points[passed_];
        cutOff_ = !digest_.TakeTo(std::min(point.length, std::max(stop, digest_.Length())));
        if (cutOff_)
            return false;
        if (digest_.Length() < point.length)
            return true;
        if (digest_.Hex() != point.sha256)
            return false;
        ++passed_;
    }
    return false;
}

SealCheck::State SealCheck::Result() const {
    if (passed_ < seal_.points.size())
        return State::changed;
    return source_.Size() > seal_.points.back().length ? State::grown : State::unchanged;
}

std::string SealCheck::PlaceOfChange() const {
    if (cutOff_)
        return "it ends behind byte " + Grouped(static_cast<std::int64_t>(digest_.Length()));
    if (passed_ == 0)
        return "byte 1, in the header, or later";
    const SealPoint& last = seal_.points[passed_ - 1];
    const std::string byte = Grouped(static_cast<std::int64_t>(last.length) + 1);
    return "byte " + byte + ", behind " +
           (last.record == 0 ? "the header" : "record " + std::to_string(last.record)) +
           ", or later";
}

std::string SealCheck::Text() const {
    switch (Result()) {
    case State::unchanged:
        return "unchanged since " + seal_.sealedAt;
    case State::grown:
        return "grown since " + seal_.sealedAt + "; what was sealed is unchanged";
    case State::changed:
        break;
    }
    return "changed since " + seal_.sealedAt + ": " + PlaceOfChange();
}

} // namespace Mreport
