#pragma once

#include <cstdint>
#include <string>

namespace Mreport {

/// What DataReset and DrawMode take.
namespace graph {
inline constexpr int resetAllData = 9;
inline constexpr int draw = 3;
inline constexpr int valuePoint = 0;  ///< Extra of a point that carries a value
inline constexpr int fillerPoint = 1; ///< Extra of a point that does not
inline constexpr int smallestPointCount = 10;
} // namespace graph

/// The graph control: sets of points above one row of labels. Sets and points count from 1. The
/// report module sets its properties; it never draws by itself.
class ReportGraph {
public:
    virtual ~ReportGraph() = default;

    virtual int NumSets() const = 0;
    virtual void SetNumSets(int sets) = 0;

    virtual int NumPoints() const = 0; ///< of each set
    virtual void SetNumPoints(int points) = 0;

    /// The set that SetData and SetExtra address.
    virtual void SetThisSet(int set) = 0;
    virtual void SetLegend(int set, const std::string& text) = 0;
    /// Colour and mark of a set, by the number from 0 of what it shows.
    virtual void SetStyle(int set, int style) = 0;
    virtual void SetData(int point, double value) = 0;
    virtual void SetExtra(int point, int mark) = 0;

    virtual void SetLabel(int point, const std::string& text) = 0;
    virtual void SetXAxisMinorTicks(int minor) = 0; ///< 1: the next label is an empty one
    virtual void SetTickEvery(int points) = 0;

    virtual std::string LeftTitle() const = 0;
    virtual void SetLeftTitle(const std::string& text) = 0;
    virtual void SetGraphTitle(const std::string& text) = 0;

    virtual void SetDataReset(int what) = 0;
    virtual void SetDrawMode(int mode) = 0;

    /// The value of a set's point.
    virtual double DataGetAmp(int set, int point) const = 0;
};

} // namespace Mreport
