#pragma once

#include "files/RecordWalk.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Mreport {

struct ShownGraph;
struct ViewedFile;

/// Takes the header of a measurement file, line by line, into the channels of a viewed file.
class ChannelHeader {
public:
    /// Every channel starts as in use, without a kind and a temperature sensor.
    ChannelHeader(ViewedFile& file, ShownGraph& shown);

    void TakeLine(std::string_view line);

    /// Ends the header. A file without channel rows takes its channels from its first record, as
    /// far as the values tell. Returns the number of graph series: 8 less the channels that read
    /// "None", whatever the channel count.
    int Finish();

    /// The lines for the header box, without separators; bounded.
    const std::string& Head() const { return head_; }

private:
    void TakeCell(std::size_t channel, const std::string& cell);
    void InferFromFirstRecord();
    void TakeInferredRow(std::string_view line);

    ViewedFile& file_;
    ShownGraph& shown_;
    std::string head_;
    int headLines_ = 0;
    int unusedChannels_ = 0;
};

} // namespace Mreport
