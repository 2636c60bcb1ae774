#pragma once

#include "screens/Report/WholeRunPanel.h"
#include "screens/controls/OverviewGraph.h"
#include "screens/controls/SpanPlot.h"
#include "screens/report/ReportScreen.h"

#include <QApplication>
#include <QComboBox>
#include <QTableWidget>
#include <QTest>
#include <qcustomplot.h>

/// The viewer with the whole run under its graph.
class WholeRunScreen : public ReportScreen {
protected:
    WholeRunPanel& Panel() const { return Find<WholeRunPanel>(*form, "picWholeRun"); }
    OverviewGraph& Overview() const { return Find<OverviewGraph>(*form, "graOverview"); }
    SpanPlot& Span() const { return Find<SpanPlot>(*form, "graSpan"); }
    QComboBox& Quantities() const { return Find<QComboBox>(*form, "cboQuantity"); }
    QTableWidget& Statistics() const { return Find<QTableWidget>(*form, "tblStatistics"); }

    void Fill() const {
        while (!Panel().Complete())
            QApplication::processEvents();
    }
    void ViewRun(const MeasurementText& text, int records) {
        View(text.File(records));
        Fill();
    }
    /// The pixel of a place of the run in the overview.
    QPoint At(std::int64_t place) const {
        const double share =
            static_cast<double>(place) / static_cast<double>(Panel().Overview().Span().Count());
        return {static_cast<int>(share * Overview().width()), Overview().height() - 10};
    }
    void Drag(const QPoint& from, const QPoint& to) const {
        QTest::mousePress(&Overview(), Qt::LeftButton, {}, from);
        QTest::mouseMove(&Overview(), (from + to) / 2);
        QTest::mouseMove(&Overview(), to);
        QTest::mouseRelease(&Overview(), Qt::LeftButton, {}, to);
        Fill();
    }
    /// What stands below the axis of records or time of a span.
    QStringList LabelsBelow() const {
        const QCPAxis& axis = *Span().Plot().xAxis;
        QVector<double> ticks;
        QVector<QString> labels;
        axis.ticker()->generate(axis.range(), QLocale::c(), axis.numberFormat().at(0),
                                axis.numberPrecision(), ticks, nullptr, &labels);
        QStringList within;
        for (qsizetype i = 0; i < ticks.size(); ++i) // the ticks may go one beyond the axis
            if (axis.range().contains(ticks[i]))
                within << labels[i];
        return within;
    }
    QStringList Offered() const {
        QStringList texts;
        for (int i = 0; i < Quantities().count(); ++i)
            texts << Quantities().itemText(i);
        return texts;
    }
};
