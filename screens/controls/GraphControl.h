#pragma once

#include "report/ReportGraph.h"
#include "screens/controls/GraphPoints.h"
#include "screens/controls/PaperGraph.h"

#include <QWidget>

#include <memory>
#include <vector>

class GraphMouse;
class PointMarker;
class QCPGraph;
class QCPItemText;
class QCPTextElement;
class QCustomPlot;
class RecordTicker;

/// The graph of a report: series of points above record numbers. Points that carry no value leave
/// a gap. The mouse zooms (wheel) and pans (drag), Shift and the wheel ask for another span, a
/// double click returns to the whole span; from the keyboard + and - zoom, the arrow keys walk
/// along the points, Enter tells about the point, Escape is left to the form.
class GraphControl : public QWidget, public Mreport::ReportGraph, public PaperGraph {
    Q_OBJECT

public:
    explicit GraphControl(QWidget* parent = nullptr);
    ~GraphControl() override;

    int NumSets() const override { return points_.Sets(); }
    void SetNumSets(int sets) override { points_.SetSets(sets); }
    int NumPoints() const override { return points_.Points(); }
    void SetNumPoints(int points) override { points_.SetPoints(points); }
    void SetThisSet(int set) override { points_.Select(set); }
    void SetLegend(int set, const std::string& text) override;
    void SetStyle(int set, int style) override;
    void SetData(int point, double value) override { points_.SetValue(point, value); }
    void SetExtra(int point, int mark) override;
    void SetLabel(int point, const std::string& text) override;
    void SetXAxisMinorTicks(int minor) override { minorTicks_ = minor; }
    void SetTickEvery(int /*points*/) override {} // the labels themselves say it
    std::string LeftTitle() const override;
    void SetLeftTitle(const std::string& text) override;
    void SetGraphTitle(const std::string& text) override;
    void SetDataReset(int what) override;
    void SetDrawMode(int mode) override;
    double DataGetAmp(int set, int point) const override;

    void PaintOnPaper(QPainter& painter, const QRectF& place) override;

    /// Shows the whole span again.
    void ResetZoom();
    void Zoom(double factor); ///< above 1: closer

    /// Shown in place of the points where no point carries a value.
    void SetEmptyText(const QString& text);

Q_SIGNALS:
    void PointClicked(int set, int point);
    /// The point under the mouse or the keyboard's mark; set 0 where there is none.
    void PointHovered(int set, int point);
    /// The wheel with Shift: the user wants a span so many times as long; the record at this share
    /// of it stays in place.
    void SpanZoomWanted(double factor, double share);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakePlot();
    void MakeItems();
    int AxisWidth() const; ///< on the screen, or on the sheet while it is painted
    void FitLabels();
    void ApplyLook(const QPalette& palette, const QFont& font);
    void ApplyPens(const QPalette& palette);
    void ShowSets();
    void ShowSet(int set);
    void FitAxes();
    void NoteZoom();

    QCustomPlot* plot_ = nullptr;
    QCPTextElement* title_ = nullptr;
    QCPItemText* emptyText_ = nullptr;
    std::shared_ptr<RecordTicker> ticker_;
    std::vector<QCPGraph*> graphs_; ///< one for each set
    GraphPoints points_;
    std::unique_ptr<PointMarker> marker_;
    std::unique_ptr<GraphMouse> mouse_;
    int sheetWidth_ = 0; ///< 0 while the graph is drawn on the screen
    int minorTicks_ = 0;
    bool fitting_ = false; ///< the axes are being set to the whole span
    bool zoomed_ = false;  ///< the user has chosen what part of the span is seen
};
