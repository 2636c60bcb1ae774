#pragma once

#include <QObject>
#include <QPointer>

#include <cstddef>

class QWidget;
class frmHistory;

/// The main form's window of the history, of which there is one at a time.
class HistoryWindow : public QObject {
    Q_OBJECT

public:
    /// The form must outlive the last call.
    explicit HistoryWindow(QWidget& form) : form_(form) {}

    /// Shows the history as it stands now, in place of a window that shows it as it stood. Says so
    /// where none is kept.
    void Show();

    /// The same, with what is known of the electrode of this channel.
    void ShowElectrodeOf(std::size_t channel);

Q_SIGNALS:
    /// The limits for the age of calibrations have been changed.
    void AgesChanged();

private:
    frmHistory* Open();

    QWidget& form_;
    QPointer<frmHistory> window_; ///< while it is open
};
