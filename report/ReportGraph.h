#pragma once

#include <cstdint>
#include <string>

namespace Mreport {

/// What DataReset and DrawMode take.
namespace graph {
inline constexpr std::int16_t resetAllData = 9;
inline constexpr std::int16_t draw = 3;
inline constexpr std::int16_t valuePoint = 0;  ///< Extra of a point that carries a value
inline constexpr std::int16_t fillerPoint = 1; ///< Extra of a point that does not
inline constexpr std::int16_t smallestPointCount = 10;
} // namespace graph

/// The graph control: sets of points above one row of labels. Sets and points count from 1. The
/// report module sets its properties; it never draws by itself.
class ReportGraph {
public:
    virtual ~ReportGraph() = default;

    virtual std::int16_t NumSets() const = 0;
    virtual void SetNumSets(std::int16_t sets) = 0;

    virtual std::int16_t NumPoints() const = 0; ///< of each set
    virtual void SetNumPoints(std::int16_t points) = 0;

    /// The set that SetData and SetExtra address.
    virtual void SetThisSet(std::int16_t set) = 0;
    virtual void SetLegend(std::int16_t set, const std::string& text) = 0;
    /// Colour and mark of a set, by the number from 0 of what it shows.
    virtual void SetStyle(std::int16_t set, std::int16_t style) = 0;
    virtual void SetData(std::int16_t point, double value) = 0;
    virtual void SetExtra(std::int16_t point, std::int16_t mark) = 0;

    virtual void SetLabel(std::int16_t point, const std::string& text) = 0;
    virtual void SetXAxisMinorTicks(std::int16_t minor) = 0; ///< 1: the next label is an empty one
    virtual void SetTickEvery(std::int16_t points) = 0;

    virtual std::string LeftTitle() const = 0;
    virtual void SetLeftTitle(const std::string& text) = 0;
    virtual void SetGraphTitle(const std::string& text) = 0;

    virtual void SetDataReset(std::int16_t what) = 0;
    virtual void SetDrawMode(std::int16_t mode) = 0;

    /// The value of a set's point.
    virtual double DataGetAmp(std::int16_t set, std::int16_t point) const = 0;
};

} // namespace Mreport
