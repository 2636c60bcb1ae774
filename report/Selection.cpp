#include "report/Selection.h"

#include <algorithm>

namespace Mreport {

Selection::Selection(const ViewedFile& file, const ShownGraph& shown)
    : file_(file), shown_(shown), unit_(shown.unitCode) {
    FillBoxes();
}

void Selection::ChooseUnit(Quantity unit) {
    if (unit == unit_)
        return;
    unit_ = unit;
    FillBoxes();
    if (CheckedCount() == 0)
        for (Box& box : boxes_)
            box.checked = box.enabled;
}

void Selection::FillBoxes() {
    for (std::size_t i = 0; i < boxes_.size(); ++i)
        boxes_[i] = unit_ == Quantity::celsius ? SensorBox(i) : ChannelBox(i);
}

Selection::Box Selection::SensorBox(std::size_t index) const {
    if (index >= tempSensorCount)
        return {};
    const bool enabled = file_.SensorUsed(static_cast<int>(index) + 1);
    return {true, enabled, enabled && shown_.sensorInUse[index]};
}

Selection::Box Selection::ChannelBox(std::size_t index) const {
    if (index >= file_.channelCount)
        return {};
    const bool enabled = KindGives(file_.channelKind[index], unit_);
    // What another unit could not show has not been deselected.
    const bool selected =
        unit_ == shown_.unitCode ? shown_.channelInUse[index] : shown_.channelWanted[index];
    return {true, enabled, enabled && selected};
}

void Selection::Check(std::size_t index, bool checked) {
    Box& box = boxes_.at(index);
    box.checked = checked && box.enabled;
}

std::string Selection::Heading() const {
    return unit_ == Quantity::celsius ? "Temp. Sensors" : "Channels";
}

std::string Selection::Caption(std::size_t index) const {
    return (unit_ == Quantity::celsius ? "Temp. " : "Ch. ") + std::to_string(index + 1);
}

int Selection::CheckedCount() const {
    return static_cast<int>(
        std::count_if(boxes_.begin(), boxes_.end(), [](const Box& box) { return box.checked; }));
}

bool Selection::Fits(std::int32_t points) const {
    return points * CheckedCount() < maxGraphPoints;
}

void Selection::Accept(ShownGraph& shown) const {
    shown.unitCode = unit_;
    if (unit_ == Quantity::celsius) { // the channels keep their own choice
        for (std::size_t i = 0; i < tempSensorCount; ++i)
            shown.sensorInUse[i] = boxes_[i].checked;
        return;
    }
    for (std::size_t i = 0; i < file_.channelCount; ++i)
        TakeBox(shown, i);
}

void Selection::TakeBox(ShownGraph& shown, std::size_t channel) const {
    shown.channelInUse[channel] = boxes_[channel].checked;
    if (boxes_[channel].enabled)
        shown.channelWanted[channel] = boxes_[channel].checked;
}

} // namespace Mreport
