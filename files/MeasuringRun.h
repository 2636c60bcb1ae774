#pragma once

#include "files/MeasurementDialog.h"
#include "files/MeasurementFormat.h"
#include "files/MeasurementRecord.h"
#include "files/TargetSeal.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace FileOpr {

class LiveReport;
class TemporaryRecording;

/// The files of what is measured: the temporary file that receives a run until it is flushed into
/// the target. One for the program; everybody who records, shows what is recorded or asks for a
/// measurement file is handed it.
class MeasuringRun {
public:
    MeasuringRun();
    /// Frees the temporary file as ReleaseTempFile does.
    ~MeasuringRun();
    MeasuringRun(const MeasuringRun&) = delete;
    MeasuringRun& operator=(const MeasuringRun&) = delete;

    /// The file that receives header and records: the temporary file, or the target while the live
    /// report follows.
    std::filesystem::path currentMeasurementPath;
    /// The file chosen in the save dialog; empty until the first record.
    std::filesystem::path targetFile;
    /// The measuring page is open: what it records goes into targetFile.
    bool measuring = false;
    MeasurementDialog dialog;

    /// Creates or overwrites the file with the header of the working records, and sets Rows().
    void CreateHeadLines(const std::filesystem::path& file);

    /// Appends one record of the displayed texts with one write and a flush to disk, then tells the
    /// live reports. Throws RunTimeError; the file is then as it was.
    void SaveMeasure(const std::filesystem::path& file, std::int32_t recordNumber,
                     const std::string& comment, const DisplayedChannels& displayed);

    /// The rows that records have since the last header.
    const MeasurementFormat::RunRows& Rows() const { return rows_; }

    /// A new temporary file, locked while the program runs, in place of the one before. The caller
    /// stores it as currentMeasurementPath.
    std::filesystem::path GetTempFile();

    /// Frees the temporary file on exit: removed when it holds no records, else kept for recovery.
    void ReleaseTempFile();

    /// Makes this file the target: what the temporary file still holds goes into the old one, a
    /// file of that name is deleted, and a new header is written. Throws RunTimeError, and the
    /// target is as before, when the file cannot be written, another copy of the program records
    /// into it, or it is the temporary file itself.
    void BeginTarget(const std::filesystem::path& target);

    /// While it is on, records go straight to the target; what the temporary file holds is flushed
    /// first, so that the order in the target is that of recording. Throws RunTimeError when that
    /// fails; it is then off.
    void FollowTarget(bool follow);
    bool IsFollowing() const { return following_; }

    /// Appends what the temporary file holds to the target and deletes it; a later record makes it
    /// anew. Throws RunTimeError when the target cannot be written; the target is then as it was
    /// and the temporary file is kept.
    void FlushTempFile();

    /// The temporary file holds something that the target lacks.
    bool HasWaitingRecords() const;

    /// True when the file is the one that was chosen last for recording.
    bool IsTarget(const std::filesystem::path& file) const;

    /// True when the measuring page records into it now.
    bool IsLiveFile(const std::filesystem::path& file) const;

    /// Tells the live reports that a record is on the disk, or that a flush has brought records
    /// into the target.
    void RecordWritten();

private:
    friend class LiveReport; // enters and leaves reports_

    void PrepareWrite(const std::filesystem::path& file);
    void RefuseOwnFiles(const std::filesystem::path& target) const;
    void RefuseTarget(const std::filesystem::path& target) const;
    void ReplaceTarget(const std::filesystem::path& target);
    void EmptyTempFile();
    void SealTarget();

    MeasurementFormat::RunRows rows_;
    std::unique_ptr<TemporaryRecording> temporaryRecording_;
    bool following_ = false;
    TargetSeal seal_;
    std::chrono::milliseconds sealedAt_{0}; ///< of the monotonic clock
    std::vector<LiveReport*> reports_;
};

} // namespace FileOpr
