#pragma once

#include "report/ReportGraph.h"

#include <QWidget>

#include <memory>
#include <vector>

class QCPAxis;
class QCPGraph;
class QCPItemText;
class QCPItemTracer;
class QCPTextElement;
class QCustomPlot;
class QPainter;
class RecordTicker;

/// The graph of a report: series of points above record numbers. Points that carry no value leave
/// a gap. The mouse zooms (wheel) and pans (drag), a double click returns to the whole span; from
/// the keyboard + and - zoom, the arrow keys walk along the points, Enter tells about the point,
/// Escape is left to the form.
class GraphControl : public QWidget, public Mreport::ReportGraph {
    Q_OBJECT

public:
    explicit GraphControl(QWidget* parent = nullptr);
    ~GraphControl() override;

    int NumSets() const override { return numSets_; }
    void SetNumSets(int sets) override;
    int NumPoints() const override { return numPoints_; }
    void SetNumPoints(int points) override;
    void SetThisSet(int set) override;
    void SetLegend(int set, const std::string& text) override;
    void SetStyle(int set, int style) override;
    void SetData(int point, double value) override;
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

    /// Draws the graph as on white paper, whatever the screen's palette.
    void PaintOnPaper(QPainter& painter, const QRectF& place);

    /// Shows the whole span again.
    void ResetZoom();
    void Zoom(double factor); ///< above 1: closer

    /// Shown in place of the points where no point carries a value.
    void SetEmptyText(const QString& text);

Q_SIGNALS:
    void PointClicked(int set, int point);
    /// The point under the mouse or the keyboard's mark; set 0 where there is none.
    void PointHovered(int set, int point);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Set {
        QString legend;
        int style = -1;           ///< -1: by the number of the set
        std::vector<double> data; ///< not-a-number where a point carries no value
    };
    struct Hit {
        int set = 0;
        int point = 0;
    };

    void MakePlot();
    void MakeLegend();
    int AxisWidth() const; ///< on the screen, or on the sheet while it is painted
    void FitLabels();
    void ApplyLook(const QPalette& palette, const QFont& font);
    void ApplyPens(const QPalette& palette);
    void ShowSets();
    void FitAxes();
    void NoteZoom();
    void ZoomAxesAt(const QPointF& position);
    int FirstSetWithValues() const;
    Hit HitAt(const QPointF& position) const;
    double ValueAt(int set, int point) const;
    void MarkPoint(const Hit& hit);
    void StepPoint(int points);
    void StepSet(int sets);
    void Clicked(const QPointF& position);

    QCustomPlot* plot_ = nullptr;
    QCPTextElement* title_ = nullptr;
    QCPItemTracer* tracer_ = nullptr;
    QCPItemText* emptyText_ = nullptr;
    std::shared_ptr<RecordTicker> ticker_;
    std::vector<QCPGraph*> graphs_;
    std::vector<Set> sets_;
    int sheetWidth_ = 0; ///< 0 while the graph is drawn on the screen
    int numSets_ = 0;
    int numPoints_ = 0;
    int thisSet_ = 1;
    int minorTicks_ = 0;
    bool fitting_ = false; ///< the axes are being set to the whole span
    bool zoomed_ = false;  ///< the user has chosen what part of the span is seen
    Hit marked_;
    QPointF pressed_;
};
