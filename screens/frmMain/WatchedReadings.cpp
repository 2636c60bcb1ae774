#include "screens/frmMain/WatchedReadings.h"

#include "base/Electrode.h"
#include "platform/qt/Text.h"
#include "screens/frmLimits/frmLimits.h"
#include "screens/frmMain/ReadingsTable.h"
#include "settings/StoredLimits.h"
#include "settings/mWinInit.h"

namespace {

int ChannelCount() {
    return mWinInit::HardwareSettings.ChannelCount;
}

} // namespace

void WatchedReadings::LoadLimits() {
    watch_.WatchLimits(mWinInit::LoadLimits());
}

bool WatchedReadings::ChooseLimits(QWidget& page) {
    frmLimits limits(&page);
    if (limits.exec() != QDialog::Accepted)
        return false;
    watch_.WatchLimits(limits.Accepted());
    for (int i = 0; i < ChannelCount(); ++i)
        ShowWatch(i);
    return true;
}

MeasuringCycle::Source WatchedReadings::Begin(const Selection& selected) {
    selected_ = selected;
    MeasuringCycle::Source source{mWinInit::ConversionTables(), {}, {}, {}};
    for (int i = 0; i < ChannelCount(); ++i) {
        const auto position = static_cast<std::size_t>(i);
        source.selected[position] = selected[position] ? -1 : 0;
        source.tempSensor[position] = mWinInit::ChannelSetup[position].TempSensor;
        source.molarMass_g_per_mol[position] = mWinInit::ChannelSetup[position].MolarMass;
        table_.ShowSetup(i, selected[position]);
    }
    watch_.Begin(source);
    for (int i = 0; i < ChannelCount(); ++i)
        ShowRow(i, {});
    return source;
}

bool WatchedReadings::Show(const MeasuringCycle::Outcome& outcome) {
    const bool alarm = watch_.Add(outcome);
    for (int i = 0; i < ChannelCount(); ++i)
        ShowRow(i, outcome);
    return alarm;
}

void WatchedReadings::ShowRow(int channel, const MeasuringCycle::Outcome& outcome) {
    table_.Show(channel, outcome.cells[static_cast<std::size_t>(channel)]);
    ShowWatch(channel);
}

void WatchedReadings::ShowWatch(int channel) {
    table_.ShowWatch(channel, watch_.RowOf(static_cast<std::size_t>(channel)));
}

std::vector<int> WatchedReadings::ChannelsToCheck() const {
    std::vector<int> channels;
    for (int i = 0; i < ChannelCount(); ++i) {
        const auto index = static_cast<std::size_t>(i);
        if (selected_[index] &&
            Electrode::KindOf(mWinInit::ChannelSetup[index].Electrode) != Electrode::Kind::none)
            channels.push_back(i);
    }
    return channels;
}

bool WatchedReadings::HasAlarm() const {
    for (std::size_t i = 0; i < maxChannels; ++i)
        if (watch_.RowOf(i).alarm)
            return true;
    return false;
}

void WatchedReadings::Acknowledge(int channel) {
    watch_.Acknowledge(static_cast<std::size_t>(channel));
    ShowWatch(channel);
}

void WatchedReadings::AcknowledgeAll() {
    for (int i = 0; i < ChannelCount(); ++i)
        Acknowledge(i);
}

QStringList WatchedReadings::Remarks() const {
    QStringList remarks;
    for (int i = 0; i < ChannelCount(); ++i) {
        const ReadingWatch::Row& row = watch_.RowOf(static_cast<std::size_t>(i));
        for (const std::string& text : {row.limitsText, row.standardsText})
            if (!text.empty())
                remarks << QString("Channel %1: ").arg(i + 1) + Text::ToQt(text);
    }
    return remarks;
}
