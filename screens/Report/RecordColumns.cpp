#include "screens/Report/RecordColumns.h"

#include "platform/Platform.h"

namespace RecordColumns {

namespace {

using Column = Mreport::RecordTable::Column;

const std::string recordsSection = "Records";

/// "Time", "Comment", "mV 1", "Temperature 2".
std::string KeyOf(const Column& column) {
    if (column.kind != Column::Kind::value)
        return column.title;
    const std::string quantity = Quantities::IsOfSensors(column.quantity)
                                     ? "Temperature"
                                     : std::string(Quantities::Label(column.quantity));
    return quantity + " " + std::to_string(column.series);
}

} // namespace

bool CanBeHidden(const Column& column) {
    return column.kind != Column::Kind::number;
}

bool Shown(const Column& column) {
    return !CanBeHidden(column) ||
           platform::Current().profile.GetInt(recordsSection, KeyOf(column), 1) != 0;
}

void Remember(const Column& column, bool shown) {
    platform::Current().profile.Write(recordsSection, KeyOf(column), shown ? "1" : "0");
}

} // namespace RecordColumns
