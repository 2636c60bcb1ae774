#pragma once

#include "base/Electrode.h"
#include "files/MeasurementHeader.h"
#include "files/MeasurementLines.h"
#include "files/MeasurementRecord.h"
#include "report/RecordNumber.h"
#include "report/ReportPages.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Mreport {

inline constexpr std::size_t maxPageLines = 32'700;
inline constexpr std::size_t pageMargin = 10;

/// What is refused while a file loads.
inline constexpr std::string_view busyText = "Press ESC to stop current data loading.";
inline constexpr std::string_view loadingText = "Cannot choose this option while data is loading.";

/// The measurement file of one viewer. Owned by the viewer; its dialogs and printing look at it.
struct ViewedFile {
    ReportPages pages;
    std::filesystem::path path; ///< empty before a file was opened
    bool viewingLiveFile = false;

    FileOpr::MeasurementHeader header; ///< empty where the file has none

    std::size_t channelCount = 0; ///< channel columns of the file
    std::array<Electrode::Kind, maxChannels> channelKind{};
    std::array<int, maxChannels> channelNumber{}; ///< temperature sensor, 0 for none

    /// Of the newest list page.
    int LastPageIndex() const { return pages.Last(); }

    /// True when a channel with an electrode has this temperature sensor (1..4).
    bool SensorUsed(int sensor) const;

    /// The trimmed cell of a sensor (1..4) in a record's row of temperatures: that of its first
    /// channel with an electrode that has a value. Nothing where none has. Lives as long as the
    /// row.
    std::optional<std::string_view> SensorCell(const MeasurementLines::Cells& cells,
                                               int sensor) const;

    /// True when the file's name stands for a shorter file than was loaded: a new run has begun
    /// under the same name.
    bool BegunAnew() const;
};

/// The records of a list page, as scroll bar and graph count them.
struct PageRange {
    std::int32_t recordsInPage = 0;
    std::int32_t pageFirstRecordOffset = 0; ///< number of the page's first record less 1
    FileRecord lastRecord;                  ///< 0 for a page without records

    PageRecord Last() const { return {recordsInPage}; }
    /// The place of a record in the page, and the record at a place; kept within 32 bits.
    PageRecord InPage(FileRecord record) const;
    FileRecord InFile(PageRecord record) const;
};

/// A page without records begins behind those of the pages before.
PageRange PageRecordRange(const ReportPages& pages, int pageIndex);

/// Lines of a record, its separator included, as page 0 has them; 0 where it has no record.
std::int32_t CountLinesPerRecord(const ReportPages& pages);

} // namespace Mreport
