#pragma once

#include "report/RecordTable.h"

/// Which columns of the compact table the user wants, by what they hold, in a section of their own
/// of the settings file. What has never been chosen is shown.
namespace RecordColumns {

bool Shown(const Mreport::RecordTable::Column& column);
void Remember(const Mreport::RecordTable::Column& column, bool shown);

/// The number of the record stays.
bool CanBeHidden(const Mreport::RecordTable::Column& column);

} // namespace RecordColumns
