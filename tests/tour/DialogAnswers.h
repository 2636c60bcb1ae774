#pragma once

#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QTimer>

#include <deque>
#include <functional>

/// Answers the boxes that the program opens, in the order in which they were announced. A box
/// that nobody announced fails the tour and is dismissed, since nothing would ever answer it.
class DialogAnswers : public QObject {
    Q_OBJECT

public:
    DialogAnswers();
    ~DialogAnswers() override;

    /// A message box that holds this text; its picture is taken under `pictureName` if given.
    void Message(const QString& text, QMessageBox::StandardButton answer,
                 const QString& pictureName = {});

    /// An input box with this prompt.
    void Input(const QString& prompt, const QString& answer);

    /// The open or save dialog with this title.
    void File(const QString& title, const QString& file, const QString& pictureName = {});

    /// Any other modal window of this class.
    void Other(const char* className, const std::function<void(QWidget&)>& answer);

    bool AllGiven() const { return expected_.empty(); }

private:
    struct Expected {
        QString what;
        std::function<bool(QWidget&)> answer; ///< false when the box is another one
    };

    void Look();

    std::deque<Expected> expected_;
    QTimer timer_;
    bool answering_ = false;
};
