#pragma once

#include <QPlainTextEdit>

/// The header lines of the viewed file: whole lines in a fixed-width font, in columns, with room
/// for the scroll bar below them.
class HeaderBox : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit HeaderBox(QWidget* parent = nullptr);

    /// So many whole lines are seen at once.
    void ShowLines(int lines);

private:
    void FitLines();

    int lines_ = 4;
};
