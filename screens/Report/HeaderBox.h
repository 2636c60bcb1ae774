#pragma once

#include <QPlainTextEdit>

/// The header lines of the viewed file: whole lines in a fixed-width font, in columns, with room
/// for the scroll bar below them.
class HeaderBox : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit HeaderBox(QWidget* parent = nullptr);

private:
    void FitLines();
};
