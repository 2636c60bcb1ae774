#pragma once

#include "chem/CalibrationRecord.h"
#include "files/MeasurementRecord.h"

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace FileOpr {

/// What a header tells, each cell as trimmed text; "N/A" stays as it stands.
struct MeasurementHeader {
    struct Channel {
        std::string name; ///< "Chan 1"
        std::string electrode;
        std::string serialNo;
        std::string refType;
        std::string refSerialNo;
        std::string tempSensor;
        std::string calibrationDate;
        std::string calibrationTime;
        std::string pointCount;
        std::string stdUnit;
        std::array<std::string, maxCalibrationPoints> standard;
        std::array<std::string, maxCalibrationPoints> caliData;
        std::array<std::string, maxCalibrationPoints - 1> slope;
    };
    std::string projectName;
    std::string analyst;
    std::string createdAt;
    int channelCount = 0;
    bool hasCalibration = false; ///< the file has a calibration block
    std::array<Channel, maxChannels> channels;
};

/// Takes the text of a measurement file apart. Any bytes are taken without failing: what is no
/// header row and no record is passed over, and LF ends lines as CR LF does.
class MeasurementReader {
public:
    /// Reads the header. The text must outlive the reader.
    explicit MeasurementReader(std::string_view text);

    const MeasurementHeader& Header() const { return header_; }

    /// Reads the next record; false at the end. A record that the text cuts off before its
    /// separator is given, and LastWasComplete() is then false.
    bool Next(MeasurementRecord& record);
    bool LastWasComplete() const { return complete_; }

private:
    void ReadHeader();

    std::string_view rest_;
    bool complete_ = true;
    MeasurementHeader header_;
};

struct MeasurementFile {
    MeasurementHeader header;
    std::vector<MeasurementRecord> records;
    bool complete = true; ///< the last record ends with its separator
};

/// The whole file. Throws RunTimeError when it cannot be read.
MeasurementFile ReadMeasurementFile(const std::filesystem::path& file);

} // namespace FileOpr
