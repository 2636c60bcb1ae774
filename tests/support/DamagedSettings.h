#pragma once

#include <array>
#include <cstddef>
#include <ostream>
#include <random>
#include <string>

/// What a settings file of megabytes may be made of when something went wrong with it. Each shape
/// once took a reader whose work grows with the square of the file's size minutes.
namespace damaged {

struct Shape {
    const char* name;
    std::string (*piece)(); ///< Repeated up to the size.
};

inline std::ostream& operator<<(std::ostream& out, const Shape& shape) {
    return out << shape.name;
}

inline std::string RandomBytes() {
    std::mt19937 random(2);
    std::string bytes(1000000, '\0');
    for (char& c : bytes)
        c = static_cast<char>(random());
    return bytes;
}

inline const std::array<Shape, 6> shapes = {{
    {"random bytes", RandomBytes},
    {"one endless line", [] { return std::string(1000, 'x'); }},
    {"NULs", [] { return std::string(1000, '\0'); }},
    {"carriage returns", [] { return std::string(1000, '\r'); }},
    {"sections", [] { return std::string("[a]\n"); }},
    {"keys", [] { return std::string("=\n"); }},
}};

/// At least `bytes` of the shape, and behind them the program's own key, the port number 7.
inline std::string File(const Shape& shape, std::size_t bytes) {
    const std::string piece = shape.piece();
    std::string file;
    while (file.size() < bytes)
        file += piece;
    return file + "\r\n[Hardware]\r\nPort Number=7\r\n";
}

} // namespace damaged
