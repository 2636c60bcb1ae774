#pragma once

#include "report/ShownGraph.h"

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

    /// Starts with what the graph shows now. Both must outlive the selection.
    Selection(const ViewedFile& file, const ShownGraph& shown);

    /// Changes the unit and the boxes with it; the unit in force keeps its check marks. Where no
    /// box that can be would be checked, all of them are.
    void ChooseUnit(Quantity unit);
    void Check(std::size_t index, bool checked);

    Quantity Unit() const { return unit_; }
    std::string UnitName() const { return UnitText(unit_); }
    std::string Heading() const; ///< "Channels" or "Temp. Sensors"
    std::string Caption(std::size_t index) const;
    const Box& BoxAt(std::size_t index) const { return boxes_.at(index); }
    int CheckedCount() const;

    /// True when so many points of every checked box stay below the graph's limit.
    bool Fits(std::int32_t points) const;

    /// Makes the choice that of the graph.
    void Accept(ShownGraph& shown) const;

private:
    void FillBoxes();
    Box SensorBox(std::size_t index) const;
    Box ChannelBox(std::size_t index) const;
    void TakeBox(ShownGraph& shown, std::size_t channel) const;

    const ViewedFile& file_;
    const ShownGraph& shown_;
    Quantity unit_;
    std::array<Box, maxChannels> boxes_{};
};

inline constexpr std::string_view tooManyPointsText =
    "Too many points to draw them in this version software (Max 1500 points)";

} // namespace Mreport
