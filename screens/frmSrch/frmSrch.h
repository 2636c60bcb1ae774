#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmSrch;
}

/// Search of one record by its number.
class frmSrch : public QDialog {
    Q_OBJECT

public:
    explicit frmSrch(QWidget* parent = nullptr);
    ~frmSrch() override;

private:
    std::unique_ptr<Ui::frmSrch> ui_;
};
