#pragma once

#include "files/FileOpr.h"
#include "report/PageText.h"
#include "report/ReportPages.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The file shown in the report viewer: its list pages, which records they hold, its channels, and
/// what the graph shows. Shared by the viewer, its dialogs and printing.
namespace Mreport {

inline constexpr std::int32_t spanLength = 50; ///< records that the graph shows at most
inline constexpr std::int32_t maxGraphPoints = 1500;
inline constexpr std::size_t maxPageLines = 32'700;
inline constexpr std::size_t pageMargin = 10;

/// What is refused while a file loads.
inline constexpr std::string_view busyText = "Press ESC to stop current data loading.";
inline constexpr std::string_view loadingText = "Cannot choose this option while data is loading.";

/// Codes of channelKind.
namespace kind {
inline constexpr std::int16_t notInUse = 0;
inline constexpr std::int16_t redox = 1;
inline constexpr std::int16_t pH = 2;
inline constexpr std::int16_t ion = 3;
} // namespace kind

extern ReportPages pages;
extern std::filesystem::path viewedFile;
extern std::string projectName; ///< of the file's header; empty without one

extern std::int16_t lastPageIndex;
extern std::int16_t graphPageIndex;
extern std::int16_t shownPageIndex;

extern std::int16_t channelCount; ///< channel columns of the file
extern std::array<bool, maxChannels> channelInUse;
extern std::array<std::int16_t, maxChannels> channelKind;   ///< codes of `kind`
extern std::array<std::int16_t, maxChannels> channelNumber; ///< temperature sensor, 0 for none
extern std::array<bool, tempSensorCount> sensorInUse;       ///< selected for the graph

extern Quantity unitCode; ///< what the graph shows

extern std::int32_t linesPerRecord;
extern std::int32_t recordsInPage;
extern std::int32_t pageFirstRecordOffset;

extern bool viewingLiveFile;
extern bool loading;
extern bool reloadInProgress;
extern bool autoUpdate;
extern bool scrollGuard;

/// "mV", "pH", "ppm", "mol/l", "°C".
std::string UnitText(Quantity unit);

/// True when the file is the one that the measuring page records into.
bool IsLiveFile(const std::filesystem::path& file);

/// True when the viewed file's name stands for a shorter file than was loaded: a new run has begun
/// under the same name.
bool FileBegunAnew();

/// Sets recordsInPage (which is also the result) and pageFirstRecordOffset for the page and gives
/// its last record number; 0 records behind those of the pages before for a page without records.
std::int32_t PageRecordRange(int pageIndex, std::int32_t& lastRecord);

/// Sets linesPerRecord from page 0: all lines of a record, its separator included.
void CountLinesPerRecord();

/// Limits of the scroll bar and, where it is to be set, its value: the number within the page of
/// the last record of the graph's span.
struct ScrollLimits {
    std::int32_t min = 0;
    std::int32_t max = 0;
    std::optional<std::int32_t> value;
};
ScrollLimits ResetScroll(bool setValue);

/// True when a channel with a series has this temperature sensor (1..4).
bool SensorUsed(int sensor);

/// Numbers of the channels (1..8) or, for degrees, of the sensors (1..4) that the graph shows, in
/// the order of its sets.
std::vector<int> Series(Quantity unit);

/// A list page as printing takes it.
class ListPageText : public PageText {
public:
    explicit ListPageText(int page) : page_(page) {}

    std::size_t LineCount() const override { return pages.LineCount(page_); }
    std::string Line(std::size_t index) const override { return pages.Shown(page_, index); }

private:
    int page_;
};

/// Back to the state before any file was opened.
void Reset();

} // namespace Mreport
