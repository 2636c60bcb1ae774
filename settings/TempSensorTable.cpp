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
    for (const Row& row : defaultTable) {
        const std::size_t next = table.Rows();
        table.Temperature[next] = row.temperature_C;
        table.Reading[next] = row.reading;
        ++table.PointCount;
    }
    return table;
}

std::string SensorLine(const TempSensorCalibration& table) {
    std::vector<std::string> fields = {NumberText::Plain(std::int32_t{table.PointCount})};
    for (std::size_t row = 0; row < table.Rows(); ++row)
        fields.push_back(Pair(table.Temperature[row], table.Reading[row]));
    return JoinFields(fields);
}

} // namespace

void LoadTempSensorMatrix(std::size_t sensor, const std::string& line) {
    if (line.empty()) {
        TempSensor[sensor] = DefaultTable();
        platform::Current().profile.Write(std::string(tempSensorSection),
                                          std::string(tempSensorKeys[sensor]),
                                          SensorLine(TempSensor[sensor]));
        return;
    }
    const int claimed = NumberText::LeadingInteger(GetField(line, sensorCountField, 1));
    TempSensorCalibration table;
    table.PointCount = static_cast<std::int16_t>(std::clamp(claimed, 0, maxTempSensorRows));
    int field = firstSensorRow;
    for (std::size_t row = 0; row < table.Rows(); ++row)
        DecodePair(line, field++, table.Temperature[row], table.Reading[row]);
    SortPairs(0, table.PointCount - 1, table.Reading, table.Temperature);
    TempSensor[sensor] = table;
}

} // namespace mWinInit
