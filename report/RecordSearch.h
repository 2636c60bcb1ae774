#pragma once

#include "report/RecordNumber.h"
#include "report/ViewedFile.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Mreport {

/// Finds a record of the list pages by its number and keeps its texts. The file must outlive it.
class RecordSearch {
public:
    explicit RecordSearch(const ViewedFile& file) : file_(file) {}

    /// An entry of the list of channels and sensors. `index` is 0..7 for a channel, 8..11 for
    /// temperature sensor 1..4.
    struct Entry {
        std::size_t index = 0;
        std::string text; ///< "Chan. 1", "Temp. 1"
    };

    /// One for each channel in use, then one for each sensor that a channel has.
    std::vector<Entry> Entries() const;

    /// The units that an entry has values in.
    std::vector<Quantity> Units(std::size_t entryIndex) const;

    /// Searches the first page whose last record is not below the number; its first line with the
    /// prefix "Record " and the number wins. False when there is none.
    bool Find(FileRecord record);

    /// Takes the record that begins at this line of a page.
    void TakeRecordAt(const LinePlace& place);

    const std::string& TimeStamp() const { return timeStamp_; } ///< "Not valid" without one
    const std::string& Comment() const { return comment_; }
    const LinePlace& Place() const { return place_; } ///< of its first line

    /// The kept value as it is shown, with its unit: "12.3 mV".
    std::string ValueText(std::size_t entryIndex, Quantity unit) const;

private:
    std::optional<int> PageOf(FileRecord record) const;
    void Forget();
    void ReadRecord();
    void KeepRow(Quantity unit, std::string_view valueLine);
    void KeepTemperatures(const MeasurementLines::Cells& cells);

    const ViewedFile& file_;
    LinePlace place_;
    std::string timeStamp_;
    std::string comment_;
    std::array<FileOpr::DisplayedCells, maxChannels> values_;
    std::array<std::string, tempSensorCount> temperatures_;
};

/// The entry box as a record number: its leading number as a 32-bit integer.
FileRecord RecordNumberOf(std::string_view entry);

} // namespace Mreport
