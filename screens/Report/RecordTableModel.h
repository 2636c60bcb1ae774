#pragma once

#include "report/RecordTable.h"

#include <QAbstractTableModel>

/// The viewed file's records for a table view: what the view shows is read when it is shown.
class RecordTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// The file must outlive the model.
    explicit RecordTableModel(const Mreport::ViewedFile& file, QObject* parent = nullptr);

    /// Takes the file anew, columns and rows.
    void Read();
    /// Takes the records that the file has got since.
    void ReadOn();
    void Forget();

    Mreport::RecordTable& Records() { return records_; }
    const std::vector<Mreport::RecordTable::Column>& Columns() const { return records_.Columns(); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    mutable Mreport::RecordTable records_; ///< keeps what it has read last
    int rows_ = 0;                         ///< that the view knows of
    bool shown_ = false;
};
