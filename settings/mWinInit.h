#pragma once

#include "chem/CalibrationRecord.h"
#include "chem/Measure.h"
#include "chem/TempSensorCalibration.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// The working records, loaded once at start, changed by the screens, saved on confirmed exit; and
/// the stores of the settings file.
namespace mWinInit {

inline constexpr std::string_view projectPlaceholder = "< Please type the name of this project >";
inline constexpr std::string_view analystPlaceholder = "< Please type the name of analyst >";

struct ProjectInfoRecord {
    std::string ProjectName;
    std::string ExperimentDate; ///< "hh:mm:ss dd.mmm.yyyy"
    std::string Experimentator;
    std::string MeasurementFileLocation;
};

struct HardwareSettingsRecord {
    std::int16_t HardwarePortNumber = 2;
    std::int16_t AveragingForCalibration = 2;
    std::int16_t AveragingForMeasurement = 2;
    std::int16_t ChannelCount = 4; ///< 4 or 8, set at start, never stored
};

struct ChannelSetupRecord {
    std::string Electrode;
    std::string SerialNo;
    std::string RefType;
    std::string RefSerialNo;
    float MolarMass = 0;         ///< g/mol, 0 means not applicable
    std::int16_t TempSensor = 0; ///< 1..4, 0 or less means none
};

extern ProjectInfoRecord ProjectInfo;
extern HardwareSettingsRecord HardwareSettings;
extern std::array<ChannelSetupRecord, maxChannels> ChannelSetup;
extern std::array<CalibrationRecord, maxChannels> Calibration;
extern std::array<TempSensorCalibration, tempSensorCount> TempSensor;
extern std::int16_t WindowX;
extern std::int16_t WindowY;

/// The folder for measurement files that a new user starts with.
std::filesystem::path DefaultDataFolder();

/// Fills every record from the settings file; a missing file or key gives the defaults. Slopes
/// are computed anew. A stored location that is empty means DefaultDataFolder().
void LoadSettings();

/// Writes every record. Returns a message for each thing that the file will not give back (a line
/// beyond 129 characters, an unwritable file); empty when all is kept.
std::vector<std::string> SaveSettings();

/// The channels in use: ChannelCount as far as the tables hold it, 0 to 8.
std::size_t ChannelsInUse();

/// Fills sensor 0..3 from its line; an empty line gives the default table and writes it back.
void LoadTempSensorMatrix(std::size_t sensor, const std::string& line);

/// Library of the last calibration per channel (0-based) and electrode. The save returns messages
/// as SaveSettings does.
std::vector<std::string> SaveCalibrationInfo(const std::string& electrode, std::size_t channel);
void LoadCalibrationInfo(const std::string& electrode, std::size_t channel);

/// The working records as the conversion takes them.
Measure::InputTables ConversionTables();

/// Back to the state before LoadSettings, with `channelCount` channels.
void Reset(int channelCount = 4);

} // namespace mWinInit
