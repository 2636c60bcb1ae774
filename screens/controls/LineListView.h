#pragma once

#include <QAbstractScrollArea>

#include <functional>

/// A list of text lines that stay where they are: only the visible ones are asked for and painted,
/// in a fixed-width font with tab stops. Lines are selected with the mouse or the keyboard and
/// copied as text.
class LineListView : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit LineListView(QWidget* parent = nullptr);

    /// Where the lines come from. `lineCount` may grow; tell it with LinesChanged. A list that is
    /// scrolled to its end then stays at the end.
    void SetSource(std::function<int()> lineCount, std::function<QString(int)> line);
    void LinesChanged();

    /// Widths of the first column and of each further one, as texts that they must hold.
    void SetTabStops(const QString& firstColumn, const QString& furtherColumns);

    int LineCount() const { return lineCount_ ? lineCount_() : 0; }
    QString LineText(int line) const;
    int CurrentLine() const { return current_; }

    /// Makes the line current, selects it alone and scrolls it into view, with as many lines below
    /// it as have room.
    void SetCurrentLine(int line, int linesBelow = 0);
    void SelectAll();
    bool HasSelection() const { return current_ >= 0; }
    int SelectedFirst() const;
    int SelectedLast() const;

    /// The selected lines, each ended by a line feed, in the file's order.
    QString SelectedText() const;
    void CopySelection() const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void CurrentLineChanged(int line);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void UpdateMetrics();
    void UpdateScrollBars();
    int LineAt(const QPointF& position) const;
    int VisibleLines() const;
    void MoveCurrent(int line, bool extend);
    void PaintLine(QPainter& painter, int line, int top);
    int NextTabStop(int x) const;
    int TextWidth(const QString& text) const;

    std::function<int()> lineCount_;
    std::function<QString(int)> line_;
    QString firstColumn_;
    QString furtherColumns_;
    int firstTab_ = 80;
    int furtherTab_ = 80;
    int lineHeight_ = 16;
    int widest_ = 0; ///< of the lines painted so far
    int current_ = -1;
    int anchor_ = -1;
};
