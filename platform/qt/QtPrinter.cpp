#include "platform/qt/QtPrinter.h"

#include "base/RunTimeError.h"
#include "platform/Platform.h"
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
    fixed.setHintingPreference(QFont::PreferNoHinting); // letters set for the screen stand unevenly
    fixed.setPointSizeF(static_cast<double>(font.size_pt));
    fixed.setBold(font.bold);
    return fixed;
}

} // namespace

QtPrinter::QtPrinter(QPrinter& printer, std::function<bool()> stopRequested)
    : printer_(printer), stopRequested_(std::move(stopRequested)),
      pixelsPerPoint_(printer.resolution() / pointsPerInch), metrics_(QtFont(font_), &printer) {}

bool QtPrinter::Paint(bool mayStop) {
    QPainter painter;
    if (!painter.begin(&printer_))
        throw RunTimeError("the printer or file cannot be opened");
    for (std::size_t page = 0; page < pages_.size(); ++page) {
        platform::LetEventsRun();
        if (mayStop && stopRequested_())
            return false; // not by abort(): Qt frees the pages of an aborted preview twice
        if (page > 0 && !printer_.newPage())
            throw RunTimeError("the printer does not start page " + std::to_string(page + 1));
        PaintPage(painter, pages_[page]);
    }
    if (!painter.end())
        throw RunTimeError("the document could not be ended");
    return true;
}

void QtPrinter::PaintPage(QPainter& painter, const Page& page) const {
    for (const PictureStep& step : page.pictures) {
        painter.save();
        step.picture.DrawOn(painter, step.area);
        painter.restore();
    }
    painter.setPen(QPen(Qt::black, ruleWidth_pt * pixelsPerPoint_));
    for (const LineStep& step : page.lines)
        painter.drawLine(step.from, step.to);
    PrintFont font;
    painter.setFont(QtFont(font));
    for (const TextStep& step : page.texts) {
        if (step.font != font)
            painter.setFont(QtFont(step.font));
        font = step.font;
        painter.drawText(step.baseline, step.text);
    }
}

float QtPrinter::PageWidth() const {
    return static_cast<float>(printer_.pageLayout().paintRect(QPageLayout::Point).width());
}

float QtPrinter::PageHeight() const {
    return static_cast<float>(printer_.pageLayout().paintRect(QPageLayout::Point).height());
}

void QtPrinter::SetFont(PrintFont font) {
    font_ = font;
    metrics_ = QFontMetricsF(QtFont(font), &printer_);
}

float QtPrinter::TextWidth(std::string_view text) const {
    return ToPoints(metrics_.horizontalAdvance(Text::ToQt(text)));
}

float QtPrinter::TextHeight(std::string_view) const {
    return ToPoints(metrics_.height());
}

void QtPrinter::PrintText(std::string_view text) {
    const QPointF baseline = ToDevice(position_) + QPointF(0, metrics_.ascent());
    pages_.back().texts.push_back(TextStep{baseline, Text::ToQt(text), font_});
    position_.x_pt += TextWidth(text);
}

void QtPrinter::DrawLine(PrintPosition from, PrintPosition to) {
    pages_.back().lines.push_back(LineStep{ToDevice(from), ToDevice(to)});
}

void QtPrinter::DrawPicture(const Picture& picture, const PrintArea& area) {
    const QRectF place(ToDevice(area.topLeft),
                       QSizeF(static_cast<double>(area.width_pt) * pixelsPerPoint_,
                              static_cast<double>(area.height_pt) * pixelsPerPoint_));
    pages_.back().pictures.push_back(PictureStep{dynamic_cast<const QtPicture&>(picture), place});
}

void QtPrinter::NewPage() {
    pages_.emplace_back();
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
