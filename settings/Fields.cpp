#include "settings/Fields.h"

#include "app/Mcommon.h"

#include <algorithm>

namespace mWinInit {

std::string JoinFields(std::span<const std::string> fields) {
    std::string line;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0)
            line += fieldSeparator;
        line += fields[i];
    }
    return line;
}

std::string GetField(std::string_view text, int index, int part) {
    const auto begin = index < 1 ? std::nullopt : FieldBegin(text, index);
    if (!begin)
        return {};
    std::string_view field = text.substr(*begin);
    field = field.substr(0, field.find(fieldSeparator));
    const std::size_t semicolon = field.find(';');
    if (semicolon != std::string_view::npos)
        field = part == 1 ? field.substr(0, semicolon) : field.substr(semicolon + 1);
    return Mcommon::TrimControl(field);
}

std::optional<std::size_t> FieldBegin(std::string_view text, int index) {
    std::size_t begin = 0;
    for (int i = 1; i < index; ++i) {
        const std::size_t end = text.find(fieldSeparator, begin);
        if (end == std::string_view::npos)
            return std::nullopt;
        begin = end + 1;
    }
    return begin;
}

int FieldCount(std::string_view text) {
    return static_cast<int>(std::count(text.begin(), text.end(), fieldSeparator)) + 1;
}

} // namespace mWinInit
