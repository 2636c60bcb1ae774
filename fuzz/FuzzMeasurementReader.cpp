// Any bytes are a measurement file to the reader: it takes them apart without failing, and what it
// gives keeps its promises.

#include "files/MeasurementReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void Demand(bool promise) {
    if (!promise)
        std::abort();
}

bool IsOneLine(const std::string& text) {
    return text.find('\n') == std::string::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    FileOpr::MeasurementReader reader(text);
    Demand(reader.Header().channelCount >= 0 && reader.Header().channelCount <= maxChannels);
    FileOpr::MeasurementRecord record;
    std::size_t records = 0;
    while (reader.Next(record)) {
        Demand(record.number >= 0);
        Demand(IsOneLine(record.comment) && IsOneLine(record.timeStamp));
        for (const auto& channel : record.cells)
            for (const auto& cell : channel)
                Demand(cell.size() == MeasurementTexts::cellWidth);
        ++records;
    }
    Demand(records <= size / std::string_view("Record 1").size());
    return 0;
}
