#pragma once

#include "chem/CalibrationRecord.h"

#include <array>
#include <string>
#include <string_view>

namespace FileOpr {

/// What a measurement file's header tells, each cell as text without the blanks around it; "N/A"
/// stays as it stands.
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
    std::size_t channelCount = 0; ///< columns of the channel table
    bool hasElectrodes = false;   ///< the file has the row of electrodes
    bool hasCalibration = false;  ///< the file has a calibration block
    std::array<Channel, maxChannels> channels;

    /// Takes a line of the header, without its line end. A line that is no row of a header is
    /// passed over, as every line of a record is.
    void TakeLine(std::string_view line);
};

} // namespace FileOpr
