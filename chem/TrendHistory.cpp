#include "chem/TrendHistory.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace {

constexpr float noValue = std::numeric_limits<float>::quiet_NaN();
constexpr std::size_t boundOfMemory = std::size_t{4} << 20U;

constexpr std::array<PerQuantity<float>, maxChannels> Nothing() {
    std::array<PerQuantity<float>, maxChannels> values;
    for (auto& channel : values)
        channel.items.fill(noValue);
    return values;
}
constexpr auto nothing = Nothing();

/// Gathers a line column by column.
class LineReducer {
public:
    using Point = TrendHistory::Point;

    explicit LineReducer(const TrendHistory::Window& window) : window_(window) {}

    void Add(const Point& point) {
        if (std::isnan(point.value))
            return Part(point.time);
        const auto column = ColumnOf(point.time);
        if (column_ != column)
            EndColumn();
        if (!column_)
            first_ = lowest_ = highest_ = point;
        column_ = column;
        if (point.value < lowest_.value)
            lowest_ = point;
        if (point.value > highest_.value)
            highest_ = point;
        last_ = point;
    }

    std::vector<Point> Take() {
        EndColumn();
        return std::move(line_);
    }

private:
    std::chrono::milliseconds::rep ColumnOf(std::chrono::milliseconds time) const {
        const auto width =
            std::max<std::chrono::milliseconds::rep>((window_.to - window_.from).count(), 1);
        return (time - window_.from).count() *
               static_cast<std::chrono::milliseconds::rep>(window_.columns) / width;
    }

    void EndColumn() {
        if (!column_)
            return;
        column_.reset();
        const bool lowestFirst = lowest_.time < highest_.time;
        Put(first_);
        Put(lowestFirst ? lowest_ : highest_);
        Put(lowestFirst ? highest_ : lowest_);
        Put(last_);
    }

    void Put(const Point& point) {
        if (line_.empty() || std::isnan(line_.back().value) || line_.back().time < point.time)
            line_.push_back(point);
    }

    void Part(std::chrono::milliseconds time) {
        EndColumn();
        if (!line_.empty() && !std::isnan(line_.back().value))
            line_.push_back({time, noValue});
    }

    TrendHistory::Window window_;
    std::optional<std::chrono::milliseconds::rep> column_;
    Point first_, lowest_, highest_, last_;
    std::vector<Point> line_;
};

} // namespace

static_assert(TrendHistory::MostBytes() <= boundOfMemory);

void TrendHistory::Add(std::chrono::milliseconds now, const Reading& reading) {
    if (Size() > 0 && now - At(Size() - 1).time < shortestInterval)
        return;
    if (std::exchange(broken_, false))
        Append({now, nothing});
    Sample sample{now, nothing};
    for (std::size_t channel = 0; channel < reading.size(); ++channel)
        for (const auto& row : Quantities::table)
            if (const auto value = reading[channel][row.quantity]; value && std::isfinite(*value))
                sample.values[channel][row.quantity] = *value;
    Append(sample);
}

void TrendHistory::Append(const Sample& sample) {
    if (Size() < capacity) {
        samples_.reserve(capacity); // at once: growing would take the old and the new place
        samples_.push_back(sample);
        return;
    }
    samples_[oldest_] = sample;
    oldest_ = (oldest_ + 1) % capacity;
}

void TrendHistory::Clear() {
    *this = TrendHistory();
}

const TrendHistory::Sample& TrendHistory::At(std::size_t age) const {
    return samples_[(oldest_ + age) % Size()];
}

bool TrendHistory::Holds(std::size_t channel, Quantity quantity) const {
    return std::ranges::any_of(samples_, [&](const Sample& sample) {
        return !std::isnan(sample.values[channel][quantity]);
    });
}

std::size_t TrendHistory::LastBefore(std::chrono::milliseconds from) const {
    std::size_t last = 0;
    std::size_t end = Size();
    while (end - last > 1) {
        const std::size_t middle = last + (end - last) / 2;
        if (At(middle).time < from)
            last = middle;
        else
            end = middle;
    }
    return last;
}

std::vector<TrendHistory::Point> TrendHistory::Reduced(std::size_t channel, Quantity quantity,
                                                       const Window& window) const {
    LineReducer line(window);
    for (std::size_t age = LastBefore(window.from); age < Size(); ++age) {
        const Sample& sample = At(age);
        if (sample.time > window.to)
            break;
        line.Add({sample.time, sample.values[channel][quantity]});
    }
    return line.Take();
}
