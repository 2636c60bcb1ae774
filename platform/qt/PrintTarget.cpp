#include "platform/qt/PrintTarget.h"

#include "base/RunTimeError.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"

#include <QFile>
#include <QFileInfo>
#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>
#include <string>

namespace platform {

namespace {

constexpr qint64 trailerSize = 64; // "startxref", an offset and "%%EOF"

/// A PDF file ends with the place of its cross-reference table. Both are there only when every
/// byte before them was written.
bool IsWholePdf(const QString& name) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly) ||
        !file.seek(std::max<qint64>(0, file.size() - trailerSize)))
        return false;
    const QByteArray trailer = file.readAll();
    const QByteArray mark = "startxref\n";
    const qsizetype start = trailer.lastIndexOf(mark);
    if (start < 0 || !trailer.trimmed().endsWith("%%EOF"))
        return false;
    const QByteArray offset = trailer.mid(start + mark.size()).split('\n').first();
    return file.seek(offset.toLongLong()) && file.read(4) == "xref";
}

} // namespace

PrintTarget::PrintTarget(QPrinter& printer) : printer_(printer), file_(printer.outputFileName()) {
    if (IsFile()) {
        replacement_ = Current().files.BeginReplacement(Text::ToPath(file_), Readers::asUsual);
        printer_.setOutputFileName(Text::FromPath(replacement_->HalfFile()));
        return;
    }
    const QPrinterInfo info(printer_);
    if (info.isNull())
        throw RunTimeError("no printer is set up");
    if (info.state() == QPrinter::Error)
        throw RunTimeError("the printer " + Text::ForMessage(info.printerName()) + " is stopped");
}

PrintTarget::~PrintTarget() {
    if (IsFile())
        printer_.setOutputFileName(file_);
}

void PrintTarget::CheckFile() {
    constexpr std::size_t manyBlocks = std::size_t{1} << 20; // more than a full disk has left over
    if (IsFile())
        replacement_->Write(std::string(manyBlocks, ' '));
}

void PrintTarget::Finish() {
    if (!IsFile()) {
        const QString error = QueueError();
        if (!error.isEmpty())
            throw RunTimeError(Text::ForMessage(printer_.printerName() + ": " + error));
        return;
    }
    if (!IsWholePdf(Text::FromPath(replacement_->HalfFile()))) {
        CheckFile();
        throw RunTimeError("Writing " + Text::ForMessage(QFileInfo(file_).fileName()) +
                           ": The file could not be written whole");
    }
    replacement_->Commit();
}

} // namespace platform
