#include "files/FileOpr.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "files/LiveReport.h"
#include "files/Recovery.h"
#include "files/TemporaryRecording.h"
#include "platform/Platform.h"

#include <algorithm>
#include <memory>

namespace FileOpr {

std::filesystem::path currentMeasurementPath;
std::filesystem::path targetFile;
bool measuring = false;
std::filesystem::path lastFolder;

namespace {

namespace fs = std::filesystem;

MeasurementFormat::RunRows runRows;
std::unique_ptr<TemporaryRecording> temporaryRecording;
bool following = false;

MeasurementFormat::Channels ChannelsInUse() {
    const auto count = std::clamp<int>(mWinInit::HardwareSettings.ChannelCount, 0, 8);
    return std::span(mWinInit::ChannelSetup).first(static_cast<std::size_t>(count));
}

/// Before a write into the temporary file its note must stand.
void PrepareWrite(const fs::path& file) {
    if (temporaryRecording && file == temporaryRecording->File())
        temporaryRecording->Prepare(targetFile);
}

/// A target that cannot be written is found out before anything is recorded for it.
void TryWriting(const fs::path& target) {
    platform::Current().files.OpenForAppend(target);
    fs::remove(target);
}

void RefuseTarget(const fs::path& target) {
    if (fs::is_directory(target))
        throw RunTimeError("Writing " + CodePage::NameOf(target) + ": Is a folder");
    if (IsTargetOfAnotherProgram(target, currentMeasurementPath))
        throw RunTimeError("Writing " + CodePage::NameOf(target) +
                           ": Another copy of the program is recording into it");
}

/// The header goes into the temporary file before the old target goes: where there is no room for
/// it, the old measurement stays.
void ReplaceTarget(const fs::path& target) {
    CreateHeadLines(currentMeasurementPath);
    fs::remove(target);
    TryWriting(target);
}

void EmptyTempFile() {
    try {
        platform::Current().files.Truncate(currentMeasurementPath, 0);
    } catch (const RunTimeError&) {
        return; // a header alone is no record, so nothing is offered at the next start
    }
}

} // namespace

const MeasurementFormat::RunRows& Rows() {
    return runRows;
}

void CreateHeadLines(const fs::path& file) {
    const auto channels = ChannelsInUse();
    runRows = MeasurementFormat::RowsOf(channels);
    const MeasurementFormat::HeaderSource source{mWinInit::ProjectInfo, channels,
                                                 mWinInit::Calibration};
    const auto text = MeasurementFormat::HeaderText(source, platform::Current().clock.Now());
    PrepareWrite(file);
    auto& store = platform::Current().files;
    const auto opened = store.OpenForAppend(file);
    store.Truncate(file, 0);
    opened->Append(text, true);
}

void SaveMeasure(const fs::path& file, std::int32_t recordNumber, const std::string& comment,
                 const DisplayedChannels& displayed) {
    const auto channelCount = static_cast<int>(ChannelsInUse().size());
    const auto record = MeasurementFormat::BuildRecord(
        recordNumber, platform::Current().clock.Now(), comment, displayed, channelCount);
    const auto text = MeasurementFormat::RecordText(record, runRows, channelCount);
    PrepareWrite(file);
    platform::Current().files.OpenForAppend(file)->Append(text, true);
    LiveReport::RecordWritten();
}

fs::path GetTempFile() {
    temporaryRecording.reset(); // first: its lock must not keep the new one's folder busy
    temporaryRecording = std::make_unique<TemporaryRecording>(
        platform::Current().places.TemporaryFolder(), Extension());
    return temporaryRecording->File();
}

void ReleaseTempFile() {
    temporaryRecording.reset();
}

void BeginTarget(const fs::path& target) {
    FollowTarget(false);
    if (currentMeasurementPath.empty()) // none could be made at the start
        currentMeasurementPath = GetTempFile();
    if (HasWaitingRecords())
        FlushTempFile();
    const auto before = targetFile;
    const auto back = [&before] {
        targetFile = before;
        EmptyTempFile();
    };
    try {
        RefuseTarget(target);
        targetFile = target;
        ReplaceTarget(target);
    } catch (const fs::filesystem_error& error) {
        back();
        throw RunTimeError("Writing " + CodePage::NameOf(target) + ": " + error.code().message());
    } catch (const RunTimeError&) {
        back();
        throw;
    }
}

void FollowTarget(bool follow) {
    following = false;
    if (temporaryRecording)
        currentMeasurementPath = temporaryRecording->File();
    if (!follow || targetFile.empty())
        return;
    FlushTempFile();
    currentMeasurementPath = targetFile;
    following = true;
}

bool IsFollowing() {
    return following;
}

void FlushTempFile() {
    if (temporaryRecording)
        temporaryRecording->Flush(targetFile);
}

bool HasWaitingRecords() {
    return temporaryRecording && !temporaryRecording->IsEmpty();
}

void Reset() {
    temporaryRecording.reset();
    currentMeasurementPath.clear();
    targetFile.clear();
    measuring = false;
    lastFolder.clear();
    runRows = {};
    following = false;
}

} // namespace FileOpr
