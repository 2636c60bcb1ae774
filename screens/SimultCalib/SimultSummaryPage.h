#pragma once

#include "chem/CalibrationSession.h"

#include <QWidget>

#include <memory>
#include <string>
#include <vector>

namespace Ui {
class SimultSummaryPage;
}

/// The summaries of a simultaneous calibration, a tab for each channel.
class SimultSummaryPage : public QWidget {
    Q_OBJECT

public:
    explicit SimultSummaryPage(QWidget* parent = nullptr);
    ~SimultSummaryPage() override;

    /// Shows the outcomes of these channels (0-based), from the first on.
    void ShowOutcomes(const std::string& electrode, const std::vector<std::size_t>& channels,
                      std::vector<CalibrationSession::Outcome> outcomes);

    /// In the order of the channels.
    const std::vector<CalibrationSession::Outcome>& Outcomes() const { return outcomes_; }

    /// Prints the summaries of all channels under this date.
    void Print(const std::string& date) const;

    /// Every channel's slopes could be computed.
    bool IsUsable() const;

    /// The summary of each channel has been shown.
    bool AllShown() const;

    bool IsLastChannel() const;
    void ShowNextChannel();

    /// Shows the summary of the chosen tab; without any tab it does nothing.
    void ShowChosenChannel();

Q_SIGNALS:
    /// Another tab has been chosen.
    void ChannelChosen();

private:
    std::unique_ptr<Ui::SimultSummaryPage> ui_;
    std::string electrode_;
    std::vector<std::size_t> channels_;
    std::vector<CalibrationSession::Outcome> outcomes_;
    std::vector<bool> shown_; ///< which of them
};
