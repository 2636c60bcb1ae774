#pragma once

#include <QString>

#include <limits>
#include <vector>

/// The points of a graph as the report module sets them: sets of values, sets and points counted
/// from 1.
class GraphPoints {
public:
    static constexpr double noValue = std::numeric_limits<double>::quiet_NaN();

    struct Set {
        QString legend;
        int style = -1;             ///< number of SeriesStyle; -1: by the number of the set
        std::vector<double> values; ///< not-a-number where a point carries no value
    };

    int Sets() const { return sets_; }
    void SetSets(int count);
    int Points() const { return points_; } ///< of each set
    void SetPoints(int count);

    /// The set that Selected and SetValue address; one that is not there yet is made.
    void Select(int set);
    Set& Selected() { return all_[Index(selected_)]; }
    void SetValue(int point, double value);

    void ClearValues();

    QString Legend(int set) const;
    int StyleOf(int set) const;

    /// Not-a-number where the point carries no value.
    double At(int set, int point) const;

    /// 0 where no set has a value.
    int FirstSetWithValues() const;

    struct Range {
        double low = std::numeric_limits<double>::max();
        double high = std::numeric_limits<double>::lowest();
        bool Any() const { return low <= high; }
    };
    Range Values() const;

private:
    static std::size_t Index(int number) { return static_cast<std::size_t>(number) - 1; }

    std::vector<Set> all_{1};
    int sets_ = 0;
    int points_ = 0;
    int selected_ = 1;
};
