#pragma once

#include "platform/Printer.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QRectF>

#include <functional>
#include <memory>

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

/// One document on a QPrinter, whichever paper, file or preview stands behind it.
class QtPrinter : public Printer {
public:
    /// Opens the document. Throws RunTimeError when the printer or file cannot be opened.
    QtPrinter(QPrinter& printer, std::function<bool()> stopRequested);

    /// Ends the document and hands it to the printer. Throws RunTimeError when that fails.
    void End();

    /// Gives the document up.
    void Abort();

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
    int PageNumber() const override { return page_; }
    void NewPage() override;
    bool StopRequested() const override { return stopRequested_(); }

private:
    QPointF ToDevice(PrintPosition position) const;
    float ToPoints(double devicePixels) const;

    QPrinter& printer_;
    std::function<bool()> stopRequested_;
    QPainter painter_;
    double pixelsPerPoint_;
    PrintFont font_;
    QFontMetricsF metrics_;
    PrintPosition position_;
    int page_ = 1;
};

} // namespace platform
