#include "screens/program/XServer.h"

#include "screens/desktop/EndWithTest.h"

#include <QFile>
#include <QtEndian>
#include <gtest/gtest.h>

XServer::XServer(const QString& folder, QSize screen) : folder_(folder) {
    const QString size = QString("%1x%2x24").arg(screen.width()).arg(screen.height());
    EndWithTest(server_);
    // A server that begins anew when its last client has gone refuses the one that comes meanwhile.
    server_.start("Xvfb", {"-displayfd", "1", "-noreset", "-screen", "0", size, "-nolisten", "tcp",
                           "-fbdir", folder});
    EXPECT_TRUE(server_.waitForStarted()) << server_.errorString().toStdString();
    EXPECT_TRUE(server_.waitForReadyRead()) << "the X server names no display";
    display_ = ":" + server_.readAllStandardOutput().trimmed();
}

XServer::~XServer() {
    server_.kill();
    server_.waitForFinished();
}

/// The file is in the xwd format: fields of four bytes, a table of colours, the pixels.
QImage XServer::Picture() const {
    QFile screen(folder_ + "/Xvfb_screen0");
    if (!screen.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = screen.readAll();
    const auto field = [&bytes](int index) {
        return static_cast<int>(qFromBigEndian<quint32>(bytes.constData() + 4 * index));
    };
    constexpr int width = 4, height = 5, bytesPerLine = 12, colours = 19, headerFields = 25;
    if (bytes.size() < 4 * headerFields)
        return {};
    constexpr int colourBytes = 12;
    const int pixels = field(0) + colourBytes * field(colours);
    return QImage(reinterpret_cast<const uchar*>(bytes.constData()) + pixels, field(width),
                  field(height), field(bytesPerLine), QImage::Format_RGB32)
        .copy();
}
