#include "screens/Report/RecordTableView.h"

#include "app/Mcommon.h"
#include "platform/qt/Text.h"
#include "screens/Report/RecordColumns.h"
#include "screens/controls/Wiring.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr int mostCopied = 50'000; // rows; some tenths of a second
constexpr const char* widestTime = "00:00:00 00.Mmm.0000";
constexpr const char* widestValue = "+1.33E+13";
constexpr const char* usualComment = "a comment of usual length";

} // namespace

RecordTableView::RecordTableView(QWidget* parent) : QTableView(parent) {
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ContiguousSelection);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    horizontalHeader()->setHighlightSections(false);
    FitRows();
}

void RecordTableView::Attach(const Mreport::ViewedFile& file) {
    model_ = std::make_unique<RecordTableModel>(file);
    setModel(model_.get());
    const Wiring wire(*this, guard_, "Report");
    wire(this, &QTableView::activated, "tblRecords", &RecordTableView::Row_Activated);
    wire(horizontalHeader(), &QHeaderView::customContextMenuRequested, "tblRecords",
         &RecordTableView::Header_Menu);
}

void RecordTableView::ShowFile() {
    if (shown_)
        return FileGrown();
    shown_ = true;
    model_->Read();
    ShowColumns();
    FitColumns();
    if (wanted_)
        SelectRecord(*wanted_);
}

void RecordTableView::FileGrown() {
    if (!shown_)
        return;
    const QScrollBar& bar = *verticalScrollBar();
    const bool atEnd = bar.value() == bar.maximum();
    model_->ReadOn();
    if (atEnd)
        scrollToBottom();
}

void RecordTableView::Forget() {
    shown_ = false;
    wanted_.reset();
    model_->Forget();
}

void RecordTableView::SelectRecord(const Mreport::LinePlace& place) {
    wanted_ = place;
    if (!shown_)
        return;
    const auto row = model_->Records().RowOf(place);
    if (!row)
        return;
    const QModelIndex index = model_->index(static_cast<int>(*row), 0);
    setCurrentIndex(index);
    scrollTo(index, QAbstractItemView::PositionAtCenter);
}

void RecordTableView::Row_Activated(const QModelIndex& index) {
    if (const auto place = model_->Records().PlaceOf(index.row()))
        Q_EMIT RecordChosen(*place);
}

std::vector<std::size_t> RecordTableView::ShownColumns() const {
    std::vector<std::size_t> columns;
    for (int column = 0; column < model_->columnCount(); ++column)
        if (!isColumnHidden(column))
            columns.push_back(static_cast<std::size_t>(column));
    return columns;
}

void RecordTableView::CopySelection() {
    const QItemSelection selection = selectionModel()->selection();
    if (selection.isEmpty())
        return;
    const int first = std::ranges::min(selection, {}, &QItemSelectionRange::top).top();
    const int end = std::ranges::max(selection, {}, &QItemSelectionRange::bottom).bottom() + 1;
    if (end - first > mostCopied)
        return Mcommon::Inform("At most 50000 records can be copied; File - Export Records as CSV "
                               "writes them all.");
    QApplication::clipboard()->setText(
        Text::ToQt(model_->Records().Copy(first, end, ShownColumns())));
}

void RecordTableView::ShowColumns() {
    for (int place = 0; const auto& column : model_->Columns())
        setColumnHidden(place++, !RecordColumns::Shown(column));
}

void RecordTableView::Header_Menu(const QPoint& place) {
    ShowColumnMenu(horizontalHeader()->viewport()->mapToGlobal(place));
}

void RecordTableView::contextMenuEvent(QContextMenuEvent* event) {
    guard_("Report - tblRecords", [this, event] { ShowColumnMenu(event->globalPos()); });
}

void RecordTableView::ShowColumnMenu(const QPoint& place) {
    QMenu menu(this);
    menu.setObjectName("mnuColumns");
    for (const auto& column : model_->Columns()) {
        QAction* item = menu.addAction(Text::ToQt(column.title).replace("&", "&&"));
        item->setCheckable(true);
        item->setChecked(RecordColumns::Shown(column));
        item->setEnabled(RecordColumns::CanBeHidden(column));
        connect(item, &QAction::toggled, this, [this, column](bool shown) {
            RecordColumns::Remember(column, shown);
            ShowColumns();
        });
    }
    menu.exec(place);
}

/// All rows are as high as one line of text: measuring each would read the whole file.
void RecordTableView::FitRows() {
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() + 2 * margin);
}

void RecordTableView::FitColumns() {
    for (int place = 0; const auto& column : model_->Columns())
        FitColumn(place++, column);
}

void RecordTableView::FitColumn(int place, const Mreport::RecordTable::Column& column) {
    using Kind = Mreport::RecordTable::Column::Kind;
    const char* widest = column.kind == Kind::time      ? widestTime
                         : column.kind == Kind::comment ? usualComment
                                                        : widestValue;
    const int margin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 3);
    setColumnWidth(place, std::max(fontMetrics().horizontalAdvance(widest) + margin,
                                   horizontalHeader()->sectionSizeHint(place)));
}

void RecordTableView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    FitRows();
    if (shown_)
        FitColumns();
}
