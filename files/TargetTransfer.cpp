#include "files/TargetTransfer.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "files/MeasurementLines.h"
#include "files/RecordWalk.h"
#include "platform/Platform.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <vector>

namespace FileOpr {

namespace {

std::uint64_t SizeOrZero(const std::filesystem::path& file) {
    std::error_code missing;
    const auto size = std::filesystem::file_size(file, missing);
    return missing ? 0 : size;
}

[[noreturn]] void FailReading(const std::filesystem::path& file) {
    throw RunTimeError("Reading " + CodePage::NameOf(file) + ": Path/File access error");
}

/// Reads a file in order from a byte on.
class ChunkReader {
public:
    ChunkReader(const std::filesystem::path& file, std::uint64_t from)
        : file_(file), stream_(file, std::ios::binary), buffer_(chunkSize) {
        stream_.seekg(static_cast<std::streamoff>(from));
        if (!stream_)
            FailReading(file_);
    }

    /// The next bytes, at most `most`; empty at the end.
    std::string_view Next(std::uint64_t most) {
        stream_.read(buffer_.data(),
                     static_cast<std::streamsize>(std::min<std::uint64_t>(most, chunkSize)));
        if (stream_.bad())
            FailReading(file_);
        return {buffer_.data(), static_cast<std::size_t>(stream_.gcount())};
    }

private:
    std::filesystem::path file_;
    std::ifstream stream_;
    std::vector<char> buffer_;
};

/// How many bytes of the temporary file from `mark.from` on stand in the target already.
std::uint64_t CommonLength(const RecordingFiles& files, const std::filesystem::path& target,
                           const FlushMark& mark, std::uint64_t length) {
    const std::uint64_t present = SizeOrZero(target) - mark.targetLength;
    std::uint64_t left = std::min(length - mark.from, present);
    std::uint64_t common = 0;
    if (left == 0)
        return 0;
    ChunkReader source(files.temporary, mark.from);
    ChunkReader copy(target, mark.targetLength);
    while (left > 0) {
        const auto a = source.Next(left);
        const auto b = copy.Next(left);
        const auto shorter = std::min(a.size(), b.size());
        const auto differs =
            std::mismatch(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(shorter), b.begin());
        const auto equal = static_cast<std::uint64_t>(differs.first - a.begin());
        common += equal;
        left -= equal;
        if (equal < shorter || shorter == 0)
            break;
    }
    return common;
}

/// True when the file holds nothing but zeros from `from` on: the length of an append reached the
/// disk before a power failure, its bytes did not.
bool IsHollowTail(const std::filesystem::path& file, std::uint64_t from) {
    ChunkReader reader(file, from);
    for (auto bytes = reader.Next(chunkSize); !bytes.empty(); bytes = reader.Next(chunkSize))
        if (bytes.find_first_not_of('\0') != std::string_view::npos)
            return false;
    return true;
}

struct Transfer {
    const RecordingFiles& files;
    const std::filesystem::path& target;
    std::uint64_t length; ///< of the temporary file
    FlushMark mark{};

    void SetMark(const FlushMark& value) {
        mark = value;
        WriteNote(files.note, {target, mark});
    }

    /// The mark of the flush to do: that of an interrupted one, if the target is still the same.
    void Begin() {
        const auto note = ReadNote(files.note);
        const std::uint64_t size = SizeOrZero(target);
        if (note && note->flush && note->target == target && note->flush->targetLength <= size &&
            note->flush->from <= length)
            mark = *note->flush;
        else
            SetMark({size, 0});
    }

    /// The first byte of the temporary file that the target lacks.
    std::uint64_t FindMissing() {
        const std::uint64_t copied = CommonLength(files, target, mark, length);
        const std::uint64_t targetEnd = mark.targetLength + copied;
        if (mark.from + copied == length || SizeOrZero(target) == targetEnd)
            return mark.from + copied;
        if (IsHollowTail(target, targetEnd)) {
            platform::Current().files.Truncate(target, targetEnd);
            return mark.from + copied;
        }
        // Somebody else has written into the target meanwhile. What they wrote stays; the records
        // that are not yet whole in it go behind.
        const auto whole = ExamineRecording(files.temporary, mark.from + copied).soundLength;
        SetMark({SizeOrZero(target), std::max(whole, mark.from)});
        return mark.from;
    }

    void Append(std::uint64_t from) {
        auto& store = platform::Current().files;
        std::error_code unreadable;
        const bool isNew = !std::filesystem::exists(target, unreadable) && !unreadable;
        const std::uint64_t before = SizeOrZero(target);
        const auto append = store.OpenForAppend(target);
        try {
            ChunkReader source(files.temporary, from);
            std::uint64_t left = length - from;
            do {
                const auto bytes = source.Next(left);
                if (bytes.empty() && left > 0)
                    throw RunTimeError("The temporary file has become shorter");
                left -= bytes.size();
                append->Append(bytes, left == 0);
            } while (left > 0);
        } catch (const RunTimeError&) {
            Undo(before, isNew);
            throw;
        }
    }

    /// Back to where this call began. Where even that fails the mark stays, and with it the next
    /// call finds out what is missing.
    void Undo(std::uint64_t before, bool isNew) {
        try {
            bool undone = true; // a medium that has gone may come back with a part of the copy
            if (isNew)
                undone = std::filesystem::remove(target);
            else
                platform::Current().files.Truncate(target, before);
            if (undone && before == mark.targetLength)
                WriteNote(files.note, {target, std::nullopt});
        } catch (const RunTimeError&) {
            return;
        } catch (const std::filesystem::filesystem_error&) {
            return;
        }
    }
};

} // namespace

RecordingContent ExamineRecording(const std::filesystem::path& temporaryFile, std::uint64_t limit) {
    RecordingContent content;
    std::ifstream stream(temporaryFile, std::ios::binary);
    std::error_code unknown;
    if (!stream && std::filesystem::exists(temporaryFile, unknown))
        FailReading(temporaryFile);
    RecordWalk walk;
    std::string line;
    std::int32_t begun = 0;
    std::uint64_t end = 0;
    while (std::getline(stream, line) && !stream.eof()) {
        content.hasHeader = content.hasHeader || (end == 0 && line.starts_with('-'));
        end += line.size() + 1;
        if (end > limit)
            break;
        const bool whole = line.ends_with('\r'); // a line that has reached the disk has its CR, too
        const auto step = walk.Take(MeasurementLines::WithoutLineEnd(line));
        if (step == RecordWalk::Step::begins)
            ++begun;
        if (whole && (step == RecordWalk::Step::ends || step == RecordWalk::Step::separator)) {
            content.soundLength = end;
            content.records = begun;
            content.lastTimeStamp = walk.TimeStamp();
        }
    }
    if (stream.bad()) // what could not be read must not count as absent
        FailReading(temporaryFile);
    return content;
}

bool IsTransferred(const RecordingFiles& files, const RecordingNote& note) {
    if (!note.flush || SizeOrZero(note.target) < note.flush->targetLength)
        return false;
    const auto length = ExamineRecording(files.temporary).soundLength;
    return note.flush->from <= length &&
           note.flush->from + CommonLength(files, note.target, *note.flush, length) == length;
}

bool HoldsForeignBytes(const RecordingFiles& files, const RecordingNote& note) {
    const std::uint64_t size = SizeOrZero(note.target);
    if (!note.flush || size < note.flush->targetLength)
        return true;
    const auto length = ExamineRecording(files.temporary).soundLength;
    if (note.flush->from > length)
        return true;
    const auto end =
        note.flush->targetLength + CommonLength(files, note.target, *note.flush, length);
    return !IsHollowTail(note.target, end);
}

void TransferToTarget(const RecordingFiles& files, const std::filesystem::path& target) {
    auto& store = platform::Current().files;
    Transfer transfer{files, target, ExamineRecording(files.temporary).soundLength};
    if (transfer.length == 0)
        return;
    transfer.Begin();
    transfer.Append(transfer.FindMissing());
    // Emptied before it is deleted and before the mark goes: whichever of these the disk has seen
    // when the power fails, the records are not taken for missing again.
    store.Truncate(files.temporary, 0);
    WriteNote(files.note, {target, std::nullopt});
}

} // namespace FileOpr
