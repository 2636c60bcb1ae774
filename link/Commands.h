#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// The commands of the instrument and their bytes.
class Commands {
public:
    static constexpr std::string_view requestFrame = "2";
    static constexpr std::string_view cancel = "24";

    /// The two address bytes of the select command.
    std::array<std::uint8_t, 2> InstrumentAddress{};

    /// "2" requests a frame, "24" cancels, "1" + the decimal texts of the two address bytes + "2"
    /// selects the instrument. Any other text stands for the previous command, before which there
    /// are no bytes.
    std::span<const std::uint8_t> BytesOf(std::string_view command);

private:
    std::vector<std::uint8_t> lastCommand_;
};
