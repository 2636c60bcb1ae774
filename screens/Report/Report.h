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

    /// The update menu can be used: an automatic run goes on.
    void SetUpdateEnabled(bool enabled);

Q_SIGNALS:
    /// The viewer shows this file from now on.
    void FileShown(const std::filesystem::path& fileName);

    /// The viewer has been closed.
    void Closed();

private:
    std::unique_ptr<Ui::Report> ui_;
};
