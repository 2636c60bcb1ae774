#pragma once

#include <QMainWindow>

#include <memory>

namespace Ui {
class frmMain;
}

/// The data acquisition screen: setup page and measuring page.
class frmMain : public QMainWindow {
    Q_OBJECT

public:
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

private:
    std::unique_ptr<Ui::frmMain> ui_;
};
