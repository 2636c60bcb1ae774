#pragma once

#include "settings/Fields.h"

#include <initializer_list>
#include <string>
#include <vector>

/// A line of the settings file from its fields, for example Line({"10:12:40 07.Mar.2003", "2"}).
inline std::string Line(std::initializer_list<std::string> fields) {
    const std::vector<std::string> list(fields);
    return mWinInit::JoinFields(list);
}
