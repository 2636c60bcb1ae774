#pragma once

#include "files/MeasurementRecord.h"
#include "platform/Clock.h"
#include "settings/mWinInit.h"

#include <span>
#include <string>

/// The text of a measurement file as it is written: CR LF, a label of 15 characters, a tab and a
/// cell of 12 characters per channel. A line break within a text becomes a blank, and so does a
/// tab except in a comment: either would break the file's lines and columns.
namespace MeasurementFormat {

/// Which rows the records of a run have; found while its header is written.
struct RunRows {
    bool pH = false;
    bool ion = false;        ///< "ppm" and "mol/l"
    bool tempSensor = false; ///< some channel has a sensor

    bool operator==(const RunRows&) const = default;
};

using Channels = std::span<const mWinInit::ChannelSetupRecord>;

RunRows RowsOf(Channels channels);

/// The records that a header shows; one calibration per channel.
struct HeaderSource {
    const mWinInit::ProjectInfoRecord& project;
    Channels channels;
    std::span<const CalibrationRecord> calibration;
};

std::string HeaderText(const HeaderSource& source, const LocalTime& now);

/// A record of the displayed texts. A channel without a displayed potential is idle: all its cells
/// are "NA".
FileOpr::MeasurementRecord BuildRecord(std::int32_t number, const LocalTime& now,
                                       std::string_view comment,
                                       const FileOpr::DisplayedChannels& displayed,
                                       std::size_t channelCount);

std::string RecordText(const FileOpr::MeasurementRecord& record, const RunRows& rows,
                       std::size_t channelCount);

} // namespace MeasurementFormat
