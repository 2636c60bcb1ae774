#include "files/MeasuringRun.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "files/FileOpr.h"
#include "files/LiveReport.h"
#include "files/Recovery.h"
#include "files/TemporaryRecording.h"
#include "history/Notes.h"
#include "platform/Platform.h"

#include <algorithm>
#include <utility>

namespace FileOpr {

namespace {

namespace fs = std::filesystem;

/// While each record goes straight into the target: one more flush at each would be twice the work.
constexpr std::chrono::minutes betweenSeals{1};

MeasurementFormat::Channels ChannelsInUse() {
    return std::span(mWinInit::ChannelSetup).first(mWinInit::ChannelsInUse());
}

/// What a name stands for, also where that does not exist yet.
fs::path WithoutLinks(fs::path file) {
    constexpr int mostLinks = 40;
    std::error_code error;
    for (int links = 0; links < mostLinks && fs::is_symlink(file, error); ++links) {
        const fs::path next = fs::read_symlink(file, error);
        file = next.is_absolute() ? next : file.parent_path() / next;
    }
    const fs::path plain = fs::weakly_canonical(file, error);
    return plain.empty() ? file.lexically_normal() : plain;
}

bool IsSameFile(const fs::path& one, const fs::path& other) {
    std::error_code missing;
    return WithoutLinks(one) == WithoutLinks(other) || fs::equivalent(one, other, missing);
}

/// A target that cannot be written is found out before anything is recorded for it. An older file
/// of its name goes as the last step: a folder that lets it go lets the new one come.
void MakeRoomFor(const fs::path& target) {
    if (!fs::exists(target))
        platform::Current().files.OpenForAppend(target);
    fs::remove(target);
}

} // namespace

MeasuringRun::MeasuringRun() = default;
MeasuringRun::~MeasuringRun() = default;

void MeasuringRun::CreateHeadLines(const fs::path& file) {
    const auto channels = ChannelsInUse();
    rows_ = MeasurementFormat::RowsOf(channels);
    const MeasurementFormat::HeaderSource source{mWinInit::ProjectInfo, channels,
                                                 mWinInit::Calibration};
    const auto text = MeasurementFormat::HeaderText(source, platform::Current().clock.Now());
    PrepareWrite(file);
    auto& store = platform::Current().files;
    const auto opened = store.OpenForAppend(file);
    store.Truncate(file, 0);
    opened->Append(text, true);
}

void MeasuringRun::SaveMeasure(const fs::path& file, std::int32_t recordNumber,
                               const std::string& comment, const DisplayedChannels& displayed) {
    const std::size_t channelCount = ChannelsInUse().size();
    const auto record = MeasurementFormat::BuildRecord(
        recordNumber, platform::Current().clock.Now(), comment, displayed, channelCount);
    const auto text = MeasurementFormat::RecordText(record, rows_, channelCount);
    PrepareWrite(file);
    platform::Current().files.OpenForAppend(file)->Append(text, true);
    if (following_ && platform::Current().clock.Monotonic() >= sealedAt_ + betweenSeals)
        SealTarget();
    RecordWritten();
}

void MeasuringRun::SealTarget() {
    NoteSealed(seal_, targetFile);
    sealedAt_ = platform::Current().clock.Monotonic();
}

/// Before a write into the temporary file its note must stand.
void MeasuringRun::PrepareWrite(const fs::path& file) {
    if (temporaryRecording_ && file == temporaryRecording_->File())
        temporaryRecording_->Prepare(targetFile);
}

fs::path MeasuringRun::GetTempFile() {
    temporaryRecording_.reset(); // first: its lock must not keep the new one's folder busy
    temporaryRecording_ = std::make_unique<TemporaryRecording>(
        platform::Current().places.TemporaryFolder(), Extension());
    return temporaryRecording_->File();
}

void MeasuringRun::ReleaseTempFile() {
    temporaryRecording_.reset();
}

void MeasuringRun::BeginTarget(const fs::path& target) {
    RefuseOwnFiles(target); // while the files still stand that a link may lead to
    FollowTarget(false);
    if (currentMeasurementPath.empty()) // none could be made at the start
        currentMeasurementPath = GetTempFile();
    if (HasWaitingRecords())
        FlushTempFile();
    const auto before = targetFile;
    const auto back = [this, &before, &target](const std::string& reason) {
        History::Note(History::Kind::writeFailed, reason, target);
        targetFile = before;
        EmptyTempFile();
    };
    try {
        RefuseTarget(target);
        targetFile = target;
        ReplaceTarget(target);
    } catch (const fs::filesystem_error& error) {
        const std::string reason =
            "Writing " + CodePage::NameOf(target) + ": " + error.code().message();
        back(reason);
        throw RunTimeError(reason);
    } catch (const RunTimeError& error) {
        back(error.what());
        throw;
    }
}

/// To record into the temporary file itself, or what stands beside it, would destroy the run.
void MeasuringRun::RefuseOwnFiles(const fs::path& target) const {
    if (!temporaryRecording_)
        return;
    const RecordingFiles own(temporaryRecording_->File());
    if (IsSameFile(target, own.temporary) || IsSameFile(target, own.note) ||
        IsSameFile(target, own.lock))
        throw RunTimeError("Writing " + CodePage::NameOf(target) +
                           ": The program keeps its unfinished recording in this file");
}

void MeasuringRun::RefuseTarget(const fs::path& target) const {
    if (fs::is_directory(target))
        throw RunTimeError("Writing " + CodePage::NameOf(target) + ": Is a folder");
    if (IsTargetOfAnotherProgram(target, currentMeasurementPath))
        throw RunTimeError("Writing " + CodePage::NameOf(target) +
                           ": Another copy of the program is recording into it");
}

/// The header goes into the temporary file before the old target goes: where there is no room for
/// it, the old measurement stays.
void MeasuringRun::ReplaceTarget(const fs::path& target) {
    CreateHeadLines(currentMeasurementPath);
    MakeRoomFor(target);
    seal_.Begin();
}

void MeasuringRun::EmptyTempFile() {
    try {
        platform::Current().files.Truncate(currentMeasurementPath, 0);
    } catch (const RunTimeError&) {
        return; // a header alone is no record, so nothing is offered at the next start
    }
}

void MeasuringRun::FollowTarget(bool follow) {
    if (std::exchange(following_, false))
        SealTarget();
    if (temporaryRecording_)
        currentMeasurementPath = temporaryRecording_->File();
    if (!follow || targetFile.empty())
        return;
    FlushTempFile();
    currentMeasurementPath = targetFile;
    following_ = true;
}

void MeasuringRun::FlushTempFile() {
    if (!temporaryRecording_)
        return;
    const bool grows = HasWaitingRecords();
    try {
        temporaryRecording_->Flush(targetFile);
    } catch (const RunTimeError& error) {
        History::Note(History::Kind::writeFailed, error.what(), targetFile);
        throw;
    }
    if (!grows)
        return;
    SealTarget();
    RecordWritten();
}

bool MeasuringRun::HasWaitingRecords() const {
    return temporaryRecording_ && !temporaryRecording_->IsEmpty();
}

bool MeasuringRun::IsTarget(const fs::path& file) const {
    return !targetFile.empty() && file.lexically_normal() == targetFile.lexically_normal();
}

bool MeasuringRun::IsLiveFile(const fs::path& file) const {
    return measuring && IsTarget(file);
}

void MeasuringRun::RecordWritten() {
    const auto reports = reports_; // one may end, or another begin, meanwhile
    for (LiveReport* report : reports)
        if (std::ranges::find(reports_, report) != reports_.end())
            report->RecordWritten();
}

} // namespace FileOpr
