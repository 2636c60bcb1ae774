#include "screens/Report/StatisticsTable.h"

#include "platform/qt/Text.h"
#include "screens/controls/SeriesStyle.h"

#include <QApplication>
#include <QClipboard>
#include <QEvent>
#include <QHeaderView>
#include <QShortcut>

#include <algorithm>

namespace {
constexpr int mostRows = 5; // seen at once
}

StatisticsTable::StatisticsTable(QWidget* parent) : QTableWidget(parent) {
    setColumnCount(static_cast<int>(Mreport::statisticsColumns));
    auto* copy = new QShortcut(QKeySequence::Copy, this);
    copy->setContext(Qt::WidgetWithChildrenShortcut);
    connect(copy, &QShortcut::activated, this, &StatisticsTable::Copy);
}

void StatisticsTable::Show(std::string_view unit, const std::vector<Series>& series,
                           const Mreport::SpanStatistics& statistics) {
    series_ = series;
    QStringList heading;
    for (const auto& text : Mreport::StatisticsHeading(unit))
        heading << Text::ToQt(text);
    setHorizontalHeaderLabels(heading);
    setRowCount(static_cast<int>(series.size()));
    for (std::size_t i = 0; i < series.size(); ++i)
        ShowRow(static_cast<int>(i), series[i], statistics.Of(i));
    ShowMarks();
    resizeColumnsToContents();
    resizeRowsToContents();
    FitHeight();
}

void StatisticsTable::ShowRow(int row, const Series& series,
                              const Mreport::SeriesStatistics& statistics) {
    setVerticalHeaderItem(row, new QTableWidgetItem(Text::ToQt(series.name)));
    for (int column = 0; const auto& text : Mreport::StatisticsTexts(statistics)) {
        auto* item = new QTableWidgetItem(Text::ToQt(text));
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        setItem(row, column, item);
        ++column;
    }
}

void StatisticsTable::ShowMarks() {
    for (int row = 0; const Series& series : series_) {
        verticalHeaderItem(row)->setIcon(SeriesStyle::Icon(series.style, palette()));
        ++row;
    }
}

void StatisticsTable::FitHeight() {
    const int rows = std::clamp(rowCount(), 1, mostRows);
    setMaximumHeight(horizontalHeader()->sizeHint().height() +
                     rows * verticalHeader()->sectionSize(0) + 2 * frameWidth() + 2);
}

void StatisticsTable::Copy() const {
    QStringList lines;
    for (int row = -1; row < rowCount(); ++row) {
        QStringList cells{row < 0 ? QString() : verticalHeaderItem(row)->text()};
        for (int column = 0; column < columnCount(); ++column)
            cells << (row < 0 ? horizontalHeaderItem(column) : item(row, column))->text();
        lines << cells.join('\t');
    }
    QApplication::clipboard()->setText(lines.join('\n'));
}

void StatisticsTable::changeEvent(QEvent* event) {
    QTableWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && rowCount() == std::ssize(series_))
        ShowMarks();
}
