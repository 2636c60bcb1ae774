#pragma once

#include <QLabel>

/// The mark of a reading: "steady" in bold and green, or how it drifts.
class MarkLabel : public QLabel {
    Q_OBJECT

public:
    explicit MarkLabel(QWidget* parent = nullptr) : QLabel(parent) {}

    void ShowMark(const QString& text, bool steady);
};
