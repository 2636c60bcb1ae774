#pragma once

#include "report/Mreport.h"

#include <array>
#include <cstdint>
#include <string>

namespace Mreport {

/// The choice of unit and of channels or temperature sensors for the graph, apart from its dialog.
class Selection {
public:
    /// One check box: a channel, or for degrees a sensor.
    struct Box {
        bool visible = false;
        bool enabled = false;
        bool checked = false;
    };

    /// Starts with what the graph shows now.
    Selection();

    /// Changes the unit and the boxes with it; the unit in force keeps its check marks.
    void ChooseUnit(Quantity unit);
    void Check(int index, bool checked);

    Quantity Unit() const { return unit_; }
    std::string UnitName() const { return UnitText(unit_); }
    std::string Heading() const; ///< "Channels" or "Temp. Sensors"
    std::string Caption(int index) const;
    const Box& BoxAt(int index) const { return boxes_.at(static_cast<std::size_t>(index)); }
    std::int16_t CheckedCount() const;

    /// True when so many points of every checked box stay below the graph's limit.
    bool Fits(std::int32_t points) const;

    /// Writes the choice into the report state.
    void Accept() const;

private:
    void FillBoxes();
    Box SensorBox(std::size_t index) const;
    Box ChannelBox(std::size_t index) const;

    Quantity unit_;
    std::array<Box, maxChannels> boxes_{};
};

/// True when a channel of this kind gives values of the unit.
bool KindGives(std::int16_t kindCode, Quantity unit);

inline constexpr std::string_view tooManyPointsText =
    "Too many points to draw them in this version software (Max 1500 points)";

} // namespace Mreport
