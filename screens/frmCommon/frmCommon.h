#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmCommon;
}

/// Choice of the quantity and the channels that the graph shows.
class frmCommon : public QDialog {
    Q_OBJECT

public:
    explicit frmCommon(QWidget* parent = nullptr);
    ~frmCommon() override;

private:
    std::unique_ptr<Ui::frmCommon> ui_;
};
