#include "screens/SimultCalib/SimultSummaryPage.h"

#include "report/PrintCalibSummary.h"
#include "ui_SimultSummaryPage.h"

#include <QSignalBlocker>

#include <algorithm>
#include <functional>

SimultSummaryPage::SimultSummaryPage(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::SimultSummaryPage>()) {
    ui_->setupUi(this);
    connect(ui_->tabChannel, &QTabBar::currentChanged, this, &SimultSummaryPage::ChannelChosen);
}

SimultSummaryPage::~SimultSummaryPage() = default;

void SimultSummaryPage::ShowOutcomes(const std::string& electrode,
                                     const std::vector<std::size_t>& channels,
                                     std::vector<CalibrationSession::Outcome> outcomes) {
    electrode_ = electrode;
    channels_ = channels;
    outcomes_ = std::move(outcomes);
    shown_.assign(outcomes_.size(), false);
    QTabBar& tabs = *ui_->tabChannel;
    const QSignalBlocker quiet(tabs);
    while (tabs.count() > 0)
        tabs.removeTab(0);
    for (const std::size_t channel : channels)
        tabs.addTab(QString("Channel %1").arg(channel + 1));
    tabs.setCurrentIndex(0);
    tabs.updateGeometry(); // filled while hidden, it has claimed no room yet
    ShowChosenChannel();
}

void SimultSummaryPage::Print(const std::string& date) const {
    std::vector<CalibrationSummary::Summary> summaries;
    for (std::size_t i = 0; i < outcomes_.size(); ++i) {
        CalibrationRecord record = outcomes_[i].record;
        record.CalibrationDate = date;
        summaries.push_back(CalibrationSummary::Compose(electrode_, channels_[i], record));
    }
    Measure::PrintCalibSummaries(summaries);
}

bool SimultSummaryPage::IsUsable() const {
    return std::ranges::all_of(outcomes_, &CalibrationSession::Outcome::usable);
}

bool SimultSummaryPage::AllShown() const {
    return std::ranges::all_of(shown_, std::identity());
}

bool SimultSummaryPage::IsLastChannel() const {
    return ui_->tabChannel->currentIndex() >= ui_->tabChannel->count() - 1;
}

void SimultSummaryPage::ShowNextChannel() {
    ui_->tabChannel->setCurrentIndex(ui_->tabChannel->currentIndex() + 1);
}

void SimultSummaryPage::ShowChosenChannel() {
    const int tab = ui_->tabChannel->currentIndex();
    if (tab < 0)
        return;
    const auto channel = static_cast<std::size_t>(tab);
    const CalibrationSession::Outcome& outcome = outcomes_.at(channel);
    shown_.at(channel) = true;
    ui_->pagSummary->ShowCalibration(outcome.record, electrode_, outcome.usable);
    ui_->pagSummary->ShowStanding(outcome.usable
                                      ? History::StandingOf(channels_.at(channel), outcome.record)
                                      : History::Standing{});
}
