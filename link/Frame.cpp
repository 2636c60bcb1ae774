#include "link/Frame.h"

#include "base/NumberText.h"

#include <string>

namespace Frame {
namespace {

constexpr std::string_view digits = "0123456789";

std::string_view HexText(std::uint8_t byte, std::array<char, 2>& buffer) {
    constexpr std::string_view hexDigits = "0123456789ABCDEF";
    buffer = {hexDigits[byte / 16U], hexDigits[byte % 16U]};
    const std::string_view text(buffer.data(), buffer.size());
    return byte < 16 ? text.substr(1) : text;
}

std::string_view DecodeByte(std::uint8_t byte) {
    std::array<char, 2> buffer{};
    return DecodeHexPair(HexText(byte, buffer));
}

/// Whether a byte may stand at this offset of a frame.
bool FitsPlace(std::uint8_t byte, std::size_t offset) {
    const auto place = offset % fieldLength;
    if (place == 0)
        return byte == '+' || byte == '-';
    if (place < fieldLength - 1)
        return byte >= '0' && byte <= '9';
    return byte == (offset == length - 1 ? endOfTransmission : '\t');
}

float DecodeField(std::span<const std::uint8_t, fieldLength> field) {
    constexpr std::size_t digitCount = 4;
    std::string digitText;
    for (const auto byte : field.subspan<1, digitCount>())
        digitText += DecodeByte(byte);
    const auto magnitude = static_cast<float>(NumberText::Leading(digitText) / 10);
    // The sign is a field of one character, so of "Error" only its first letter remains.
    std::string text(DecodeByte(field[0]).substr(0, 1));
    text += NumberText::Format(magnitude, NumberText::Pattern::frame);
    const auto value = static_cast<float>(NumberText::Leading(text));
    return value == 0 ? 0.0F : value; // "-000.0" is no negative reading
}

} // namespace

std::string_view DecodeHexPair(std::string_view hexText) {
    if (hexText == "2B")
        return "+";
    if (hexText == "2D")
        return "-";
    if (hexText == "9")
        return "\t";
    if (hexText == "4")
        return "[EOT]";
    if (hexText.size() == 2 && hexText[0] == '3') {
        if (const auto digit = digits.find(hexText[1]); digit != std::string_view::npos)
            return digits.substr(digit, 1);
    }
    return "Error";
}

bool IsComplete(std::span<const std::uint8_t, length> frame) {
    return frame.back() == endOfTransmission;
}

bool IsTail(std::span<const std::uint8_t> bytes) {
    if (bytes.size() > length)
        return false;
    const auto start = length - bytes.size();
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (!FitsPlace(bytes[i], start + i))
            return false;
    }
    return true;
}

Values Decode(std::span<const std::uint8_t, length> frame) {
    Values values{};
    for (std::size_t k = 0; k < valueCount; ++k)
        values[k] = DecodeField(frame.subspan(k * fieldLength).first<fieldLength>());
    return values;
}

} // namespace Frame
