#pragma once

#include "files/MeasurementFormat.h"
#include "files/MeasurementRecord.h"

#include <cstdint>
#include <filesystem>
#include <string>

/// Measurement files: their text, the dialogs that choose them, and the temporary file that
/// receives a run until it is flushed into the target.
namespace FileOpr {

/// The file that receives header and records: the temporary file, or the target while the live
/// report follows.
extern std::filesystem::path currentMeasurementPath;
/// The file chosen in the save dialog; empty until the first record.
extern std::filesystem::path targetFile;
/// The measuring page is open: what it records goes into targetFile.
extern bool measuring;
/// Folder of the last file chosen in a dialog; the next dialog starts there. While it is empty,
/// dialogs start in the project's folder for measurement files.
extern std::filesystem::path lastFolder;

/// Creates or overwrites the file with the header of the working records, and sets Rows().
void CreateHeadLines(const std::filesystem::path& file);

/// Appends one record of the displayed texts with one write and a flush to disk, then tells the
/// live reports. Throws RunTimeError; the file is then as it was.
void SaveMeasure(const std::filesystem::path& file, std::int32_t recordNumber,
                 const std::string& comment, const DisplayedChannels& displayed);

/// The rows that records have since the last header.
const MeasurementFormat::RunRows& Rows();

/// A new temporary file, locked while the program runs, in place of the one before. The caller
/// stores it as currentMeasurementPath.
std::filesystem::path GetTempFile();

/// Frees the temporary file on exit: removed when it holds no records, else kept for recovery.
void ReleaseTempFile();

/// Makes this file the target: what the temporary file still holds goes into the old one, a file
/// of that name is deleted, and a new header is written. Throws RunTimeError, and the target is as
/// before, when the file cannot be written or another copy of the program records into it.
void BeginTarget(const std::filesystem::path& target);

/// While it is on, records go straight to the target; what the temporary file holds is flushed
/// first, so that the order in the target is that of recording. Throws RunTimeError when that
/// fails; it is then off.
void FollowTarget(bool follow);
bool IsFollowing();

/// Makes the folder for measurement files that a new user starts with the current one, creating it
/// where it is missing. Throws RunTimeError when that fails.
void SetDataFolder();

enum class DialogMode : std::int16_t { save = 0, open = 1 };

/// Asks for a measurement file, starting in lastFolder; false, and the name is the mask, when
/// cancelled. A name without "." gets the extension of the channel count.
bool ShowFileDialog(std::filesystem::path& fileName, DialogMode mode);

/// Appends what the temporary file holds to the target and deletes it; a later record makes it
/// anew. Throws RunTimeError when the target cannot be written; the target is then as it was and
/// the temporary file is kept.
void FlushTempFile();

/// The temporary file holds something that the target lacks.
bool HasWaitingRecords();

/// "4ch" or "8ch".
std::string Extension();

/// Back to the state at program start.
void Reset();

} // namespace FileOpr
