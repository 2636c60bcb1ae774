#include "screens/frmMain/WatchedReadings.h"

#include "base/Electrode.h"
#include "platform/qt/Text.h"
#include "screens/frmLimits/frmLimits.h"
#include "screens/frmMain/ReadingsTable.h"
#include "settings/StoredLimits.h"
#include "settings/mWinInit.h"

void WatchedReadings::LoadLimits() {
    watch_.WatchLimits(mWinInit::LoadLimits());
}

bool WatchedReadings::ChooseLimits(QWidget& page) {
    frmLimits limits(&page);
    if (limits.exec() != QDialog::Accepted)
        return false;
    watch_.WatchLimits(limits.Accepted());
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i)
        ShowWatch(i);
    return true;
}

MeasuringCycle::Source WatchedReadings::Begin(const Selection& selected) {
    selected_ = selected;
    MeasuringCycle::Source source{mWinInit::ConversionTables(), {}, {}, {}};
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i) {
        source.selected[i] = selected[i] ? -1 : 0;
        source.tempSensor[i] = mWinInit::ChannelSetup[i].TempSensor;
        source.molarMass_g_per_mol[i] = mWinInit::ChannelSetup[i].MolarMass;
        table_.ShowSetup(i, selected[i]);
    }
    watch_.Begin(source);
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i)
        ShowRow(i, {});
    return source;
}

void WatchedReadings::ForgetSeries() {
    watch_.BeginSeries();
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i)
        ShowWatch(i);
}

bool WatchedReadings::Show(const MeasuringCycle::Outcome& outcome) {
    const bool alarm = watch_.Add(outcome);
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i)
        ShowRow(i, outcome);
    return alarm;
}

void WatchedReadings::ShowRow(std::size_t channel, const MeasuringCycle::Outcome& outcome) {
    table_.Show(channel, outcome.cells[channel]);
    ShowWatch(channel);
}

void WatchedReadings::ShowWatch(std::size_t channel) {
    table_.ShowWatch(channel, watch_.RowOf(channel));
}

std::vector<int> WatchedReadings::ChannelsToCheck() const {
    std::vector<int> channels;
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i)
        if (selected_[i] &&
            Electrode::KindOf(mWinInit::ChannelSetup[i].Electrode) != Electrode::Kind::none)
            channels.push_back(static_cast<int>(i));
    return channels;
}

bool WatchedReadings::HasAlarm() const {
    for (std::size_t i = 0; i < maxChannels; ++i)
        if (watch_.RowOf(i).alarm)
            return true;
    return false;
}

void WatchedReadings::Acknowledge(std::size_t channel) {
    watch_.Acknowledge(channel);
    ShowWatch(channel);
}

void WatchedReadings::AcknowledgeAll() {
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i)
        Acknowledge(i);
}

QStringList WatchedReadings::Remarks() const {
    QStringList remarks;
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i) {
        const ReadingWatch::Row& row = watch_.RowOf(i);
        for (const std::string& text : {row.limitsText, row.standardsText})
            if (!text.empty())
                remarks << QString("Channel %1: ").arg(i + 1) + Text::ToQt(text);
    }
    return remarks;
}
