#include "platform/qt/QtPrinter.h"

#include "app/RunTimeError.h"
#include "platform/qt/Text.h"

#include <QFontDatabase>
#include <QPen>
#include <QPrinter>

namespace platform {

namespace {

constexpr double pointsPerInch = 72;
constexpr double ruleWidth_pt = 0.5;

QFont QtFont(PrintFont font) {
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setStyleHint(QFont::TypeWriter);
    fixed.setFixedPitch(true);
    fixed.setPointSizeF(static_cast<double>(font.size_pt));
    fixed.setBold(font.bold);
    return fixed;
}

} // namespace

QtPrinter::QtPrinter(QPrinter& printer, std::function<bool()> stopRequested)
    : printer_(printer), stopRequested_(std::move(stopRequested)),
      pixelsPerPoint_(printer.resolution() / pointsPerInch), metrics_(QtFont(font_), &printer) {
    if (!painter_.begin(&printer))
        throw RunTimeError("the printer or file cannot be opened");
    SetFont(font_);
}

void QtPrinter::End() {
    if (!painter_.end())
        throw RunTimeError("the document could not be ended");
}

void QtPrinter::Abort() {
    printer_.abort();
    painter_.end();
}

float QtPrinter::PageWidth() const {
    return static_cast<float>(printer_.pageLayout().paintRect(QPageLayout::Point).width());
}

float QtPrinter::PageHeight() const {
    return static_cast<float>(printer_.pageLayout().paintRect(QPageLayout::Point).height());
}

void QtPrinter::SetFont(PrintFont font) {
    font_ = font;
    const QFont qtFont = QtFont(font);
    painter_.setFont(qtFont);
    metrics_ = QFontMetricsF(qtFont, &printer_);
}

float QtPrinter::TextWidth(std::string_view text) const {
    return ToPoints(metrics_.horizontalAdvance(Text::ToQt(text)));
}

float QtPrinter::TextHeight(std::string_view) const {
    return ToPoints(metrics_.height());
}

void QtPrinter::PrintText(std::string_view text) {
    const QPointF topLeft = ToDevice(position_);
    painter_.drawText(topLeft + QPointF(0, metrics_.ascent()), Text::ToQt(text));
    position_.x_pt += TextWidth(text);
}

void QtPrinter::DrawLine(PrintPosition from, PrintPosition to) {
    painter_.setPen(QPen(Qt::black, ruleWidth_pt * pixelsPerPoint_));
    painter_.drawLine(ToDevice(from), ToDevice(to));
}

void QtPrinter::DrawPicture(const Picture& picture, const PrintArea& area) {
    const QRectF place(ToDevice(area.topLeft),
                       QSizeF(static_cast<double>(area.width_pt) * pixelsPerPoint_,
                              static_cast<double>(area.height_pt) * pixelsPerPoint_));
    painter_.save();
    dynamic_cast<const QtPicture&>(picture).DrawOn(painter_, place);
    painter_.restore();
}

void QtPrinter::NewPage() {
    if (!printer_.newPage())
        throw RunTimeError("the printer does not start page " + std::to_string(page_ + 1));
    ++page_;
    position_ = {};
}

QPointF QtPrinter::ToDevice(PrintPosition position) const {
    return {static_cast<double>(position.x_pt) * pixelsPerPoint_,
            static_cast<double>(position.y_pt) * pixelsPerPoint_};
}

float QtPrinter::ToPoints(double devicePixels) const {
    return static_cast<float>(devicePixels / pixelsPerPoint_);
}

} // namespace platform
