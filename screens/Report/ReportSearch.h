#pragma once

#include <QObject>
#include <QPointer>

namespace Mreport {
struct LinePlace;
struct ViewedFile;
} // namespace Mreport
class QWidget;
class frmSrch;

/// The viewer's search: the one window of it, made when it is first wanted.
class ReportSearch : public QObject {
    Q_OBJECT

public:
    /// Both must outlive the search's last call.
    ReportSearch(const Mreport::ViewedFile& file, QWidget& form);

    /// Brings the window to the front.
    void Show();

    /// The next record that pleases, where the window is open; else brings it to the front.
    void FindNext();

    /// A search that runs ends.
    void Stop();

    /// What was found is of another file.
    void Forget();

    void Close();

Q_SIGNALS:
    /// Where the record that was found begins.
    void RecordFound(const Mreport::LinePlace& place);

private:
    const Mreport::ViewedFile& file_;
    QWidget& form_;
    QPointer<frmSrch> window_;
};
