#include "screens/controls/GraphExport.h"

#include "base/RunTimeError.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "screens/controls/PaperGraph.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

namespace {

constexpr QSize picture_px(1600, 1120);
constexpr int pdfResolution_dpi = 300;
constexpr double pdfMargin_mm = 15;

void DrawPng(PaperGraph& graph, QIODevice& file) {
    QImage image(picture_px, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    graph.PaintOnPaper(painter, QRectF(QPointF(), picture_px));
    painter.end();
    image.save(&file, "PNG");
}

void DrawSvg(PaperGraph& graph, QIODevice& file) {
    QSvgGenerator generator;
    generator.setOutputDevice(&file);
    generator.setSize(picture_px);
    generator.setViewBox(QRect(QPoint(), picture_px));
    QPainter painter(&generator);
    graph.PaintOnPaper(painter, QRectF(QPointF(), picture_px));
}

void DrawPdf(PaperGraph& graph, QIODevice& file) {
    QPdfWriter writer(&file);
    writer.setResolution(pdfResolution_dpi);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageOrientation(QPageLayout::Landscape);
    writer.setPageMargins(QMarginsF(pdfMargin_mm, pdfMargin_mm, pdfMargin_mm, pdfMargin_mm),
                          QPageLayout::Millimeter);
    QPainter painter(&writer);
    graph.PaintOnPaper(painter, QRectF(0, 0, writer.width(), writer.height()));
}

} // namespace

void ExportGraph(PaperGraph& graph, const QString& fileName) {
    const QFileInfo info(fileName);
    const QString kind = info.suffix().toLower();
    if (kind != "png" && kind != "svg" && kind != "pdf")
        throw RunTimeError("Writing " + Text::ForMessage(info.fileName()) +
                           ": The name must end with .png, .svg or .pdf");
    QBuffer picture;
    picture.open(QIODevice::WriteOnly);
    if (kind == "png")
        DrawPng(graph, picture);
    else if (kind == "svg")
        DrawSvg(graph, picture);
    else
        DrawPdf(graph, picture);
    const QByteArray& bytes = picture.data();
    platform::Current().files.Replace(Text::ToPath(fileName), bytes.toStdString(),
                                      platform::Readers::asUsual);
}
