#pragma once

#include "report/Mreport.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Mreport {

/// Finds a record of the list pages by its number and keeps its texts.
class RecordSearch {
public:
    /// An entry of the list of channels and sensors. `index` is 0..7 for a channel, 8..11 for
    /// temperature sensor 1..4.
    struct Entry {
        int index = 0;
        std::string text; ///< "Chan. 1", "Temp. 1"
    };

    /// One for each channel in use, then one for each sensor that a channel has.
    static std::vector<Entry> Entries();

    /// The units that an entry has values in.
    static std::vector<Quantity> Units(int entryIndex);

    /// Searches the first page whose last record is not below the number; its first line with the
    /// prefix "Record " and the number wins. False when there is none.
    bool Find(std::int32_t number);

    const std::string& TimeStamp() const { return timeStamp_; } ///< "Not valid" without one
    const std::string& Comment() const { return comment_; }
    int Page() const { return page_; }
    ReportPages::Line Line() const { return line_; }

    /// The kept value as it is shown, with its unit: "12.3 mV".
    std::string ValueText(int entryIndex, Quantity unit) const;

private:
    static std::optional<int> PageOf(std::int32_t number);
    void ReadRecord();
    bool TakeLine(ReportPages::Line line, std::string_view text);
    void KeepRow(Quantity unit, std::string_view valueLine);

    int page_ = 0;
    ReportPages::Line line_ = 0;
    std::string timeStamp_;
    std::string comment_;
    std::array<FileOpr::DisplayedCells, maxChannels> values_;
    std::array<std::string, tempSensorCount> temperatures_;
};

/// The entry box as a record number: its leading number as a 32-bit integer.
std::int32_t RecordNumberOf(std::string_view entry);

} // namespace Mreport
