#pragma once

#include <QObject>
#include <QPointer>

#include <cstdint>

namespace Mreport {
struct ViewedFile;
}
class QWidget;
class frmVerify;

/// The viewer's verification: the window that holds the verdict on the file that is shown.
class ReportVerify : public QObject {
    Q_OBJECT

public:
    /// Both must outlive the last call.
    ReportVerify(const Mreport::ViewedFile& file, QWidget& form);

    /// Begins anew, in a window of its own.
    void Show();

    /// A verification that runs ends; what it has found stays.
    void Stop();

    /// The file is gone, and the window with it.
    void Close();

Q_SIGNALS:
    /// The record that begins at this offset, the file's `place`th from 0, is to be shown.
    void RecordWanted(std::int64_t place, std::uint64_t offset);

private:
    const Mreport::ViewedFile& file_;
    QWidget& form_;
    QPointer<frmVerify> window_;
};
