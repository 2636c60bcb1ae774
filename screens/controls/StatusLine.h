#pragma once

#include <QStatusBar>

/// A status bar whose message ends in dots where it has no room beside the permanent widgets; the
/// tool tip then holds the whole of it.
class StatusLine : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr) : QStatusBar(parent) {}

    /// Shows the text until the next one; an empty one clears the line.
    void ShowText(const QString& text);

    /// The message as far as there is room for it.
    QString ShownText() const { return ElidedIn(MessagePlace()); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect MessagePlace() const;
    QString ElidedIn(const QRect& place) const;
};
