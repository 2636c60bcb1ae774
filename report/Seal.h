#pragma once

#include "platform/Digest.h"
#include "report/RecordScan.h"
#include "report/TextSource.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Mreport {

/// What a file held up to a record's end.
struct SealPoint {
    std::uint64_t length = 0;
    std::int32_t record = 0; ///< the number of the last record; 0 for the header alone
    std::string sha256;      ///< of the file's first `length` bytes

    bool operator==(const SealPoint&) const = default;
};

/// Tells on any computer whether a file is what it was when it was sealed. A seal proves as much as
/// the place where it is kept: whoever can change the file can seal it anew.
struct Seal {
    std::string sealedAt; ///< "21.Nov.2026 14:30:07"
    std::vector<SealPoint> points;
};

/// The seal as the small text that is kept; and back, nothing for what is none.
std::string SealText(const Seal& seal, std::string_view fileName);
std::optional<Seal> ReadSeal(std::string_view text);

/// The seal in a file; nothing where there is none. Throws RunTimeError for what is no seal.
std::optional<Seal> LoadSeal(const std::filesystem::path& sealFile);

/// Puts the points into a seal of this moment, and that into a file. Throws RunTimeError; an older
/// file then stays.
Seal SaveSeal(const std::filesystem::path& sealFile, const std::filesystem::path& sealed,
              const std::vector<SealPoint>& points);

/// "run.4ch.seal" beside "run.4ch".
std::filesystem::path SealBeside(const std::filesystem::path& file);

/// The digest of a source's first bytes, taken further and further.
class SourceDigest {
public:
    explicit SourceDigest(TextSource& source);

    /// Takes the bytes up to this offset; false where the source ends before it.
    bool TakeTo(std::uint64_t offset);

    std::uint64_t Length() const { return length_; }
    std::string Hex() const { return digest_->Hex(); }

private:
    TextSource& source_;
    std::unique_ptr<platform::Digest> digest_;
    std::vector<char> buffer_;
    std::uint64_t length_ = 0;
};

/// Makes the points of a seal: the header's end, the end of every so many records, and the end.
class Sealing {
public:
    static constexpr std::int64_t mostRecordPoints = 256;

    /// The source, up to `end`, must outlive it; `records` are about as many as it holds.
    Sealing(TextSource& source, std::uint64_t end, std::int64_t records);
    Sealing(const Sealing&) = delete; // its parts refer to the source
    Sealing& operator=(const Sealing&) = delete;

    /// Goes on, about so many bytes. False when the points are complete.
    bool Step(std::uint64_t bytes);

    const std::vector<SealPoint>& Points() const { return points_; }

private:
    void AddPoint(std::uint64_t length);

    std::uint64_t end_;
    std::int64_t recordsPerPoint_;
    SourceDigest digest_;
    RecordScan scan_;
    std::vector<SealPoint> points_;
    std::int64_t records_ = 0;
    std::int32_t lastRecord_ = 0;
};

/// Holds a file against its seal.
class SealCheck {
public:
    enum class State { unchanged, grown, changed };

    /// The source must outlive it.
    SealCheck(TextSource& source, Seal seal);

    /// Goes on, about so many bytes. False at the end, or where the first change has been found.
    bool Step(std::uint64_t bytes);

    /// Once Step has returned false.
    State Result() const;

    /// "unchanged since 21.Nov.2026 14:30:07", "grown since ..." or "changed since ...: byte
    /// 18,211, behind record 40, or later". Records are told by the numbers that they had when
    /// sealed.
    std::string Text() const;

private:
    std::string PlaceOfChange() const;

    TextSource& source_;
    Seal seal_;
    SourceDigest digest_;
    std::size_t passed_ = 0; ///< points that agree
    bool cutOff_ = false;
};

} // namespace Mreport
