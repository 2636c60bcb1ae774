#pragma once

#include "chem/CalibrationRecord.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

/// Measurement files: their text, the dialogs that choose them, and the temporary file that
/// receives a run until it is flushed into the target.
namespace FileOpr {

enum class Quantity : std::int16_t { mV = 0, pH = 1, ppm = 2, mol_l = 3, celsius = 4 };
inline constexpr int quantityCount = 5;

/// The texts that the measuring page shows for one channel, in the order of Quantity.
using DisplayedCells = std::array<std::string, quantityCount>;
using DisplayedChannels = std::array<DisplayedCells, electrodePositions>;

/// The file that receives header and records: the temporary file, or the target while the live
/// report follows.
extern std::filesystem::path currentMeasurementPath;
/// The file chosen in the save dialog; empty until the first record.
extern std::filesystem::path targetFile;
/// Folder of the last file chosen in a dialog; the next dialog starts there.
extern std::filesystem::path lastFolder;

/// What the live report registers while it is open.
struct LiveReport {
    std::function<void(std::string_view line)> addLine;
    /// One value per channel (or sensor) of the quantity that the graph shows.
    std::function<void(std::int32_t record, const std::array<float, electrodePositions>& values)>
        addRecord;
    std::function<Quantity()> quantity;
};
void SetLiveReport(LiveReport report); ///< empty functions end it

/// Creates or overwrites the file with the header of the working records.
void CreateHeadLines(const std::filesystem::path& file);

/// Appends one record of the displayed texts with one write and a flush to disk. Throws
/// RunTimeError; the file is then as it was.
void SaveMeasure(const std::filesystem::path& file, std::int32_t recordNumber,
                 const std::string& comment, const DisplayedChannels& displayed);

/// A new temporary file, locked while the program runs.
std::filesystem::path GetTempFile();

/// The folder for measurement files that a new user starts with; SetDataFolder makes it the
/// current one, creating it where it is missing.
std::filesystem::path DefaultDataFolder();
void SetDataFolder();

enum class DialogMode : std::int16_t { save = 0, open = 1 };

/// Asks for a measurement file, starting in lastFolder; false when cancelled. A name without "."
/// gets the extension of the channel count.
bool ShowFileDialog(std::filesystem::path& fileName, DialogMode mode);

/// Appends what the temporary file holds to the target and deletes it. Throws RunTimeError when
/// the target cannot be written; the temporary file is then kept.
void FlushTempFile();

/// "4ch" or "8ch".
std::string Extension();

/// Back to the state at program start.
void Reset();

} // namespace FileOpr
