#include "link/Commands.h"

#include <string>

namespace {

constexpr std::uint8_t startOfHeading = 0x01;
constexpr std::uint8_t startOfText = 0x02;
constexpr std::uint8_t cancelByte = 0x18;

} // namespace

std::span<const std::uint8_t> Commands::BytesOf(std::string_view command) {
    const auto [first, second] = InstrumentAddress;
    std::string select;
    for (const std::uint8_t byte : {startOfHeading, first, second, startOfText})
        select += std::to_string(byte);
    if (command == select)
        lastCommand_ = {startOfHeading, first, second, startOfText};
    else if (command == requestFrame)
        lastCommand_ = {startOfText};
    else if (command == cancel)
        lastCommand_ = {cancelByte};
    return lastCommand_;
}
