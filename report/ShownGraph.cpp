#include "report/ShownGraph.h"

#include <algorithm>

namespace Mreport {

std::string UnitText(Quantity unit) {
    return std::string(Quantities::Label(unit));
}

ScrollLimits ResetScroll(const ViewedFile& file, const ShownGraph& shown, bool setValue) {
    const std::int32_t records = GraphRange(file, shown).recordsInPage;
    ScrollLimits limits{std::min(spanLength, records), records, std::nullopt};
    if (setValue)
        limits.value = file.viewingLiveFile ? limits.max : limits.min;
    return limits;
}

std::vector<int> Series(const ViewedFile& file, const ShownGraph& shown, Quantity unit) {
    std::vector<int> numbers;
    if (Quantities::IsOfSensors(unit)) {
        for (int sensor = 1; const bool inUse : shown.sensorInUse) {
            if (inUse && file.SensorUsed(sensor))
                numbers.push_back(sensor);
            ++sensor;
        }
        return numbers;
    }
    for (std::size_t i = 0; i < file.channelCount; ++i)
        if (file.channelKind[i] != Electrode::Kind::none && shown.channelInUse[i])
            numbers.push_back(static_cast<int>(i + 1));
    return numbers;
}

bool KindGives(Electrode::Kind kind, Quantity unit) {
    return kind != Electrode::Kind::none && Quantities::Gives(kind, unit);
}

bool Givable(const ViewedFile& file, Quantity unit) {
    if (Quantities::IsOfSensors(unit)) {
        for (int sensor = 1; sensor <= tempSensorCount; ++sensor)
            if (file.SensorUsed(sensor))
                return true;
        return false;
    }
    return std::any_of(file.channelKind.begin(), file.channelKind.end(),
                       [unit](Electrode::Kind kind) { return KindGives(kind, unit); });
}

std::vector<int> Series(const ViewedFile& file, const ShownGraph& shown) {
    return Series(file, shown, shown.unitCode);
}

} // namespace Mreport
