#pragma once

#include "report/RunOverview.h"
#include "report/ShownGraph.h"
#include "report/SpanInForce.h"
#include "report/SpanStatistics.h"
#include "screens/controls/EventGuard.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class WholeRunPanel;
}
class SpanPlot;

/// The whole run under the viewer's graph: its overview, the choice of quantity and of how a span
/// is drawn, and the statistics of the span. It fills itself in slices while events run. A span
/// that the viewer's own graph cannot draw (longer than its 50 records, along the time, on other
/// scales) is drawn by a graph of its own that takes that one's place.
class WholeRunPanel : public QWidget {
    Q_OBJECT

public:
    explicit WholeRunPanel(QWidget* parent = nullptr);
    ~WholeRunPanel() override;

    /// The file and the graph that the viewer shows, and the graph of long spans. All must outlive
    /// the panel's last call.
    void Attach(const Mreport::ViewedFile& file, const Mreport::ShownGraph& shown, SpanPlot& plot);

    /// The file has been loaded, or another quantity or other channels are shown.
    void FileReady();
    /// The file has got more records.
    void FileGrown();
    bool IsOpen() const { return open_; }
    /// The file is about to be closed: nothing of it is looked at any more.
    void Clear();

    /// The viewer's own graph shows these records of a page. Until the user has chosen another
    /// span, this is the span in force.
    void PageSpanDrawn(int page, Mreport::PageRecord end, std::int32_t points);
    /// Back from a span of the user's choice to that of the viewer's own graph.
    void BackToPageSpan();

    /// True while the span is drawn by the graph of long spans.
    bool DrawsSpan() const { return drawsSpan_; }
    /// Above 1: longer.
    void ZoomSpan(double factor, double share = 0.5);
    /// Moves the span where it does not hold the record.
    void BringIntoSpan(std::int64_t place);

    /// True once overview and span have been read.
    bool Complete() const;

    const Mreport::RunOverview& Overview() const { return overview_; }
    const Mreport::RecordSpan& Span() const { return span_.Span(); }

Q_SIGNALS:
    void QuantityChosen(Quantity quantity);
    /// The viewer's own graph is to show the span that ends with this record.
    void PageSpanWanted(int page, Mreport::PageRecord end);
    /// The place of viewer's graph and of the graph of long spans has changed.
    void DrawsSpanChanged();
    void RecordWanted(std::int64_t place, std::uint64_t offset);
    void CursorsTold(const QString& text);

private:
    void ConnectControls();
    void ChoicesChanged();
    void MoveSpan(double lengths);
    void TellCursors();
    void tmrSlice_Timer();

    void ChooseSpan(const Mreport::RecordSpan& span);
    void ShowSpan();
    void StartSpan();
    void SpanRead();
    void DrawSpan(const Mreport::RunOverview& run);
    bool SpanIsRead() const;
    QString CommentOf(std::uint64_t offset) const;

    EventGuard guard_{"Unexpected error - "};
    std::unique_ptr<Ui::WholeRunPanel> ui_;
    const Mreport::ViewedFile* file_ = nullptr;
    const Mreport::ShownGraph* shown_ = nullptr;
    SpanPlot* plot_ = nullptr;

    QTimer tmrSlice_;
    QElapsedTimer sincePainted_;
    std::vector<int> series_;       ///< of the quantity, channels or sensors
    Mreport::RunOverview overview_; ///< of the whole run
    Mreport::RunOverview spanRun_;  ///< of the span
    Mreport::SpanStatistics statistics_;
    std::vector<Mreport::SeriesColumns> columns_;
    Mreport::SpanInForce span_;
    bool open_ = false;
    bool drawsSpan_ = false;
    bool spanStarted_ = false;
};
