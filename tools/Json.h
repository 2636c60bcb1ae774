#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tools {

/// An object of JSON, member by member in their order. Texts are UTF-8.
class Json {
public:
    Json& Text(std::string_view name, std::string_view value);
    Json& Number(std::string_view name, std::int64_t value);
    Json& Boolean(std::string_view name, bool value);
    /// A value that is JSON already.
    Json& Raw(std::string_view name, const std::string& value);

    std::string Object() const { return "{" + members_ + "}"; }

    /// A text with its quotes.
    static std::string Quoted(std::string_view text);

private:
    std::string members_;
};

/// An array of values that are JSON already.
class JsonArray {
public:
    void Add(const std::string& value);
    std::string Text() const { return "[" + values_ + "]"; }

private:
    std::string values_;
};

} // namespace tools
