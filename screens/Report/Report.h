#pragma once

#include <QMainWindow>

#include <filesystem>
#include <memory>

namespace Ui {
class Report;
}

/// The viewer of one measurement file.
class Report : public QMainWindow {
    Q_OBJECT

public:
    explicit Report(QWidget* parent = nullptr);
    ~Report() override;

    /// Opens a measurement file in the viewer.
    void ViewFile(const std::filesystem::path& fileName);

Q_SIGNALS:
    /// The viewer has been closed.
    void Closed();

private:
    std::unique_ptr<Ui::Report> ui_;
};
