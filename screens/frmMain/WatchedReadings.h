#pragma once

#include "screens/frmMain/ReadingWatch.h"

#include <QStringList>

#include <vector>

class QWidget;
class ReadingsTable;

/// The measuring page's readings as they are watched and shown: each row of the table with its
/// values, its mark, and what there is to say of its standards and limits.
class WatchedReadings {
public:
    /// The table must outlive it.
    explicit WatchedReadings(ReadingsTable& table) : table_(table) {}

    /// Takes up the limits of the settings file.
    void LoadLimits();

    /// Lets the analyst choose others; true when he has.
    bool ChooseLimits(QWidget& page);

    using Selection = std::array<bool, maxChannels>;

    /// A measurement of these channels begins, with blank cells. Returns what its cycle goes by.
    MeasuringCycle::Source Begin(const Selection& selected);

    /// A series of readings begins or has ended: what was steady counts no more, and no mark is
    /// shown before there are readings.
    void ForgetSeries();

    /// Shows the next reading of all channels. True when an alarm begins with it.
    bool Show(const MeasuringCycle::Outcome& outcome);

    bool AllSteady() const { return watch_.AllSteady(); }
    bool IsSteady(int channel) const {
        return watch_.RowOf(static_cast<std::size_t>(channel)).steady;
    }

    /// The channels (0-based) that are measured with an electrode.
    std::vector<int> ChannelsToCheck() const;

    /// Some channel's limits have been passed, and nobody has taken note of it.
    bool HasAlarm() const;

    void Acknowledge(std::size_t channel);
    void AcknowledgeAll();

    /// For the status line: what lies outside standards or limits, and since when.
    QStringList Remarks() const;

private:
    void ShowRow(std::size_t channel, const MeasuringCycle::Outcome& outcome);
    void ShowWatch(std::size_t channel);

    ReadingsTable& table_;
    Selection selected_{};
    ReadingWatch watch_;
};
