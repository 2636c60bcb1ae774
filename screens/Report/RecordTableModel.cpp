#include "screens/Report/RecordTableModel.h"

#include "platform/qt/Text.h"
#include "screens/controls/SeriesStyle.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPalette>

#include <limits>

namespace {

int Shown(std::int64_t rows) {
    return static_cast<int>(std::min<std::int64_t>(rows, std::numeric_limits<int>::max()));
}

} // namespace

RecordTableModel::RecordTableModel(const Mreport::ViewedFile& file, QObject* parent)
    : QAbstractTableModel(parent), records_(file) {}

void RecordTableModel::Read() {
    beginResetModel();
    records_.Reset();
    rows_ = Shown(records_.Rows());
    shown_ = true;
    endResetModel();
}

void RecordTableModel::ReadOn() {
    if (!shown_)
        return;
    const int rows = Shown(records_.Update());
    if (rows > rows_) {
        beginInsertRows({}, rows_, rows - 1);
        rows_ = rows;
        endInsertRows();
    }
    if (rows_ > 0) // the last one may have got its values
        Q_EMIT dataChanged(index(rows_ - 1, 0), index(rows_ - 1, columnCount() - 1));
}

void RecordTableModel::Forget() {
    beginResetModel();
    rows_ = 0;
    shown_ = false;
    endResetModel();
}

int RecordTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int RecordTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || !shown_ ? 0 : static_cast<int>(Columns().size());
}

QVariant RecordTableModel::data(const QModelIndex& index, int role) const {
    const auto column = static_cast<std::size_t>(index.column());
    const bool comment = Columns()[column].kind == Mreport::RecordTable::Column::Kind::comment;
    if (role == Qt::TextAlignmentRole)
        return QVariant((comment ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    if (role == Qt::DisplayRole || (role == Qt::ToolTipRole && comment))
        return Text::ToQt(records_.Text(index.row(), column));
    return {};
}

/// A column of values bears its channel's mark, as the graph has it.
QVariant RecordTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= columnCount())
        return {};
    const Mreport::RecordTable::Column& column = Columns()[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole)
        return Text::ToQt(column.title);
    if (role == Qt::DecorationRole && column.kind == Mreport::RecordTable::Column::Kind::value)
        return SeriesStyle::Icon(column.series - 1, QGuiApplication::palette());
    return {};
}
