#pragma once

class QPainter;
class QRectF;

/// A graph that can be drawn as on white paper, whatever the screen's palette.
class PaperGraph {
public:
    virtual ~PaperGraph() = default;

    /// Draws what the graph shows into a place of the paper.
    virtual void PaintOnPaper(QPainter& painter, const QRectF& place) = 0;
};
