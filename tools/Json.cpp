#include "tools/Json.h"

namespace tools {

namespace {

void AppendEscaped(std::string& text, char letter) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(letter);
    if (letter == '"' || letter == '\\') {
        text += '\\';
        text += letter;
    } else if (byte < ' ') {
        text += "\\u00";
        text += digits[byte / 16U];
        text += digits[byte % 16U];
    } else {
        text += letter;
    }
}

void AddMember(std::string& members, std::string_view name) {
    if (!members.empty())
        members += ",";
    members += Json::Quoted(name) + ":";
}

} // namespace

std::string Json::Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char letter : text)
        AppendEscaped(quoted, letter);
    return quoted + "\"";
}

Json& Json::Text(std::string_view name, std::string_view value) {
    return Raw(name, Quoted(value));
}

Json& Json::Number(std::string_view name, std::int64_t value) {
    return Raw(name, std::to_string(value));
}

Json& Json::Boolean(std::string_view name, bool value) {
    return Raw(name, value ? "true" : "false");
}

Json& Json::Raw(std::string_view name, const std::string& value) {
    AddMember(members_, name);
    members_ += value;
    return *this;
}

void JsonArray::Add(const std::string& value) {
    values_ += values_.empty() ? "" : ",\n ";
    values_ += value;
}

} // namespace tools
