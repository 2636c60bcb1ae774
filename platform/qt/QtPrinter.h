#pragma once

#include "platform/Printer.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QRectF>

#include <functional>
#include <vector>

class QPrinter;

namespace platform {

/// A drawing in the coordinates of the painter; `area` is where it belongs.
class QtPicture : public Picture {
public:
    using Draw = std::function<void(QPainter& painter, const QRectF& area)>;

    explicit QtPicture(Draw draw) : draw_(std::move(draw)) {}

    void DrawOn(QPainter& painter, const QRectF& area) const { draw_(painter, area); }

private:
    Draw draw_;
};

/// Takes a document for the paper of a QPrinter and keeps it until it is painted: a print system
/// cannot be made to forget the pages that it has, so it gets none before the document is complete.
class QtPrinter : public Printer {
public:
    QtPrinter(QPrinter& printer, std::function<bool()> stopRequested);

    /// Paints the document on its printer and lets events run at each page. `mayStop`: gives up
    /// when asked to stop, and returns false. Throws RunTimeError when the printer or file cannot
    /// be opened or fails.
    bool Paint(bool mayStop);

    float PageWidth() const override;
    float PageHeight() const override;
    void SetFont(PrintFont font) override;
    float TextWidth(std::string_view text) const override;
    float TextHeight(std::string_view text) const override;
    void SetCurrentPosition(PrintPosition position) override { position_ = position; }
    PrintPosition CurrentPosition() const override { return position_; }
    void PrintText(std::string_view text) override;
    void DrawLine(PrintPosition from, PrintPosition to) override;
    void DrawPicture(const Picture& picture, const PrintArea& area) override;
    int PageNumber() const override { return static_cast<int>(pages_.size()); }
    void NewPage() override;
    bool StopRequested() const override { return stopRequested_(); }

private:
    struct TextStep {
        QPointF baseline;
        QString text;
        PrintFont font;
    };
    struct LineStep {
        QPointF from;
        QPointF to;
    };
    struct PictureStep {
        QtPicture picture;
        QRectF area;
    };
    struct Page {
        std::vector<PictureStep> pictures;
        std::vector<LineStep> lines;
        std::vector<TextStep> texts;
    };

    void PaintPage(QPainter& painter, const Page& page) const;
    QPointF ToDevice(PrintPosition position) const;
    float ToPoints(double devicePixels) const;

    QPrinter& printer_;
    std::function<bool()> stopRequested_;
    double pixelsPerPoint_;
    PrintFont font_;
    QFontMetricsF metrics_;
    PrintPosition position_;
    std::vector<Page> pages_{1};
};

} // namespace platform
