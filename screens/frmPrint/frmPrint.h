#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmPrint;
}

/// Printing of a table or a graph.
class frmPrint : public QDialog {
    Q_OBJECT

public:
    explicit frmPrint(QWidget* parent = nullptr);
    ~frmPrint() override;

private:
    std::unique_ptr<Ui::frmPrint> ui_;
};
