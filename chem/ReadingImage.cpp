#include "chem/ReadingImage.h"

#include "base/RunTimeError.h"
#include "chem/Measure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>

namespace {

/// What single precision leaves open in a result, relative: the quotient of the logarithmic scale
/// is kept with 24 bits, and its last one counts for more the farther a reading lies from the
/// points.
constexpr double roundingOfSingles = 1e-5;

class ImageMaker {
public:
    ImageMaker(const CalibrationRecord& record, bool isPH) : record_(record), isPH_(isPH) {}

    ReadingImage Make(const NumberInterval& potential_mV) {
        std::vector<float> edges = {static_cast<float>(potential_mV.low),
                                    static_cast<float>(potential_mV.high)};
        for (std::size_t k = 0; k < record_.Points(); ++k) {
            if (!AroundX(k).Meets(potential_mV))
                continue;
            AddValues(record_.Standard[k], record_.Standard[k]); // a reading that hits the point
            if (potential_mV.Holds(record_.CaliData[k]))
                edges.push_back(record_.CaliData[k]);
        }
        std::ranges::sort(edges);
        for (std::size_t i = 0; i + 1 < edges.size(); ++i)
            AddPiece(edges[i], edges[i + 1]);
        return std::move(image_);
    }

private:
    NumberInterval AroundX(std::size_t k) const {
        return NumberText::AroundPlain(record_.CaliData[k]);
    }

    void AddValues(double low, double high) {
        constexpr double most = std::numeric_limits<float>::max();
        const double open = roundingOfSingles * std::max(std::abs(low), std::abs(high));
        image_.values.push_back({std::max(low - open, -most), std::min(high + open, most)});
    }

    /// The readings between two that stand side by side, both left out: they lie in one segment.
    void AddPiece(float from, float to) {
        constexpr float most = std::numeric_limits<float>::max();
        const std::array<float, 2> ends = {std::nextafter(from, most), std::nextafter(to, -most)};
        if (ends[0] > ends[1])
            return;
        const auto input = std::span(record_.CaliData).first(record_.Points());
        AddSegment(Measure::SegmentOf(input.size(), input, ends[0]), ends);
    }

    void AddSegment(std::size_t k, const std::array<float, 2>& readings) {
        NumberInterval x0 = AroundX(k - 1);
        NumberInterval x1 = AroundX(k);
        if (x0 == x1) // two points of one potential were so before they were written, too
            x0 = x1 = {record_.CaliData[k], record_.CaliData[k]};
        NumberInterval found{std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity()};
        for (const double left : {x0.low, x0.high})
            for (const double right : {x1.low, x1.high})
                for (const float reading : readings)
                    Convert(k, static_cast<float>(left), static_cast<float>(right), reading, found);
        if (found.low <= found.high)
            AddValues(found.low, found.high);
    }

    void Convert(std::size_t k, float x0, float x1, float reading, NumberInterval& found) {
        const std::array<float, 2> input = {x0, x1};
        const std::array<float, 2> output = {record_.Standard[k - 1], record_.Standard[k]};
        try {
            const double value = Measure::InterpolateReading(isPH_, 2, input, output, reading);
            found = {std::min(found.low, value), std::max(found.high, value)};
        } catch (const RunTimeError&) {
            image_.mayFail = true;
        }
    }

    const CalibrationRecord& record_;
    const bool isPH_;
    ReadingImage image_;
};

} // namespace

ReadingImage ImageOf(const CalibrationRecord& record, bool isPH,
                     const NumberInterval& potential_mV) {
    return ImageMaker(record, isPH).Make(potential_mV);
}
