#pragma once

#include <QLabel>

/// The mark of a reading: "steady" in bold and green, or how it drifts.
class MarkLabel : public QLabel {
    Q_OBJECT

public:
    explicit MarkLabel(QWidget* parent = nullptr) : QLabel(parent) {}

    /// Spoken behind the label's accessible name.
    void ShowMark(const QString& mark, bool steady);
};
