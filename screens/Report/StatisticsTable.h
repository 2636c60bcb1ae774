#pragma once

#include "report/SpanStatistics.h"

#include <QTableWidget>

#include <string>
#include <string_view>
#include <vector>

/// The statistics of a span, a row for each series with its colour and mark. Ctrl+C copies the
/// table with its heading.
class StatisticsTable : public QTableWidget {
    Q_OBJECT

public:
    explicit StatisticsTable(QWidget* parent = nullptr);

    struct Series {
        std::string name;
        int style = 0; ///< number of SeriesStyle
    };
    void Show(std::string_view unit, const std::vector<Series>& series,
              const Mreport::SpanStatistics& statistics);

    void Copy() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void ShowRow(int row, const Series& series, const Mreport::SeriesStatistics& statistics);
    void ShowMarks();
    void FitHeight();

    std::vector<Series> series_;
};
