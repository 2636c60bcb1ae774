#include "settings/TempSensorTable.h"

#include "base/NumberText.h"
#include "platform/Platform.h"
#include "settings/Fields.h"
#include "settings/SortPairs.h"
#include "settings/StoredLines.h"

#include <algorithm>

namespace mWinInit {

namespace {

struct Row {
    float temperature_C;
    float reading;
};

/// The table of the sensors that the instrument is delivered with.
constexpr std::array<Row, 10> defaultTable = {{{80, 205.5F},
                                               {70, 271.9F},
                                               {60, 355.9F},
                                               {50, 456.9F},
                                               {40, 570.8F},
                                               {30, 688.7F},
                                               {25, 745.8F},
                                               {20, 799.6F},
                                               {10, 894.0F},
                                               {0, 966.8F}}};

TempSensorCalibration DefaultTable() {
    TempSensorCalibration table;
    table.PointCount = static_cast<std::int16_t>(defaultTable.size());
    for (std::size_t row = 0; row < defaultTable.size(); ++row) {
        table.Temperature[row] = defaultTable[row].temperature_C;
        table.Reading[row] = defaultTable[row].reading;
    }
    return table;
}

std::string SensorLine(const TempSensorCalibration& table) {
    std::vector<std::string> fields = {NumberText::Plain(std::int32_t{table.PointCount})};
    for (std::size_t row = 0; row < static_cast<std::size_t>(table.PointCount); ++row)
        fields.push_back(Pair(table.Temperature[row], table.Reading[row]));
    return JoinFields(fields);
}

} // namespace

void LoadTempSensorMatrix(int sensor, const std::string& line) {
    const auto index = static_cast<std::size_t>(sensor);
    if (line.empty()) {
        TempSensor[index] = DefaultTable();
        platform::Current().profile.Write(std::string(tempSensorSection),
                                          std::string(tempSensorKeys[index]),
                                          SensorLine(TempSensor[index]));
        return;
    }
    const int claimed = NumberText::LeadingInteger(GetField(line, sensorCountField, 1));
    TempSensorCalibration table;
    table.PointCount = static_cast<std::int16_t>(std::clamp(claimed, 0, maxTempSensorRows));
    for (int row = 0; row < table.PointCount; ++row) {
        const auto place = static_cast<std::size_t>(row);
        DecodePair(line, firstSensorRow + row, table.Temperature[place], table.Reading[place]);
    }
    SortPairs(0, table.PointCount - 1, table.Reading, table.Temperature);
    TempSensor[index] = table;
}

} // namespace mWinInit
