#pragma once

#include "chem/TrendHistory.h"
#include "screens/controls/EventGuard.h"

#include <QWidget>

#include <chrono>
#include <memory>

namespace Ui {
class TrendPanel;
}

/// The trend below the readings: how long, of what, and the lines. It can be put away, and folds
/// away by itself where the window leaves it no room to be of use.
class TrendPanel : public QWidget {
    Q_OBJECT

public:
    explicit TrendPanel(QWidget* parent = nullptr);
    ~TrendPanel() override;

    struct Choice {
        bool shown = true;
        int minutes = 10; ///< an entry of cboTrend: 1, 10 or 60
        Quantity quantity = Quantity::mV;

        bool operator==(const Choice&) const = default;
    };
    Choice Chosen() const;

    /// Shows a remembered choice; gives no signal.
    void SetChoice(const Choice& choice);

    /// The next reading of all channels, taken now; those that are not in use have no values.
    void AddReading(const TrendHistory::Reading& reading);

    /// Readings have ended: what comes later is not joined to them.
    void EndReadings() { history_.Break(); }

    /// Another measurement begins.
    void Clear();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user has chosen otherwise.
    void ChoiceChanged();

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;

private:
    void FillLists();
    void ConnectEvents();
    void chkTrend_Click(bool checked);
    void cboTrend_Click(int index);
    void Choose();
    int FoldedHeight() const;
    bool HasRoom() const;
    void Unfold();
    void ShowGraph();
    void Fold();
    std::chrono::milliseconds DrawInterval() const;
    void Draw();

    EventGuard guard_{"Unexpected Error - "};
    std::unique_ptr<Ui::TrendPanel> ui_;
    TrendHistory history_;
    std::chrono::milliseconds drawn_{0}; ///< when, on the monotonic clock
};
