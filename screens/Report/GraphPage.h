#pragma once

#include "report/ShownGraph.h"
#include "screens/controls/EventGuard.h"

#include <QString>
#include <QWidget>

#include <memory>
#include <string>

namespace Ui {
class GraphPage;
}
class GraphControl;
class PaperGraph;
class WholeRunPanel;

/// The viewer's graph view: the graph of up to 50 records of a page with its scroll bar, in its
/// place the graph of a long span, and below them the whole run.
class GraphPage : public QWidget {
    Q_OBJECT

public:
    explicit GraphPage(QWidget* parent = nullptr);
    ~GraphPage() override;

    /// The file and what its graph shows, which the choice of a quantity changes. Both must outlive
    /// the page's last call.
    void Attach(const Mreport::ViewedFile& file, Mreport::ShownGraph& shown);

    GraphControl& Graph() const;
    WholeRunPanel& Run() const;

    /// The one of both graphs that is shown.
    PaperGraph& ShownGraph() const;

    /// An empty graph with the left title "mV".
    void Reset();

    /// The graph of records has been drawn anew; its first point stands for this record.
    void GraphDrawn(Mreport::FileRecord firstRecord);

    void SetScroll(const Mreport::ScrollLimits& limits);
    Mreport::PageRecord ScrollValue() const;
    /// The graph is at least so high.
    void KeepRoom(int graphHeight_px);

    void ShowScroll(bool visible);

    /// Above 1: closer.
    void Zoom(double factor);
    void ShowWholeSpan();

    /// Moves the span where it does not hold this record of the graph's page; a graph that follows
    /// a recording stays with the newest records.
    void BringIntoSpan(Mreport::FileRecord record);

Q_SIGNALS:
    /// The graph is to show the span that ends with this record.
    void SpanWanted(Mreport::PageRecord end);
    /// The graph is to show records of this page.
    void PageWanted(int page);
    /// The record that begins at this offset, the file's `place`th from 0, is to be shown.
    void RecordWanted(std::int64_t place, std::uint64_t offset);
    /// The thumb is dragged: the span will end with this record.
    void ThumbMoved(Mreport::FileRecord end);
    void ThumbReleased();
    /// What the information line is to say.
    void Told(const QString& text);
    /// The point of this text has been clicked.
    void PointClicked(const std::string& text);

private:
    void ConnectControls();
    void HScroll_Change(int value);
    void HScroll_Scroll(int value);
    void graReport_Click(int set, int point);
    void graReport_MouseMove(int set, int point);
    void picWholeRun_QuantityChosen(Quantity quantity);
    void picWholeRun_PageSpanWanted(int page, Mreport::PageRecord end);
    void picWholeRun_DrawsSpanChanged();

    /// The channel or sensor of a set; 0 where there is none.
    int SeriesNumber(int set) const;
    std::int64_t RecordOf(int point) const;

    EventGuard guard_{"Unexpected error - "};
    std::unique_ptr<Ui::GraphPage> ui_;
    const Mreport::ViewedFile* file_ = nullptr;
    Mreport::ShownGraph* shown_ = nullptr;
    Mreport::FileRecord firstRecord_{1}; ///< that point 1 of the graph stands for
};
