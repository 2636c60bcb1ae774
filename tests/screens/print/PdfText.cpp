#include "PdfText.h"

#include "RunTool.h"

#include <QRegularExpression>
#include <QStringList>

std::vector<PdfWord> PdfWords(const QString& file) {
    static const QRegularExpression pageStart("<page ");
    static const QRegularExpression word(
        R"re(<word xMin="([\d.-]+)" yMin="([\d.-]+)" [^>]*>([^<]*)</word>)re");
    std::vector<PdfWord> words;
    int page = 0;
    for (const QString& line : RunTool("pdftotext", {"-bbox"}, file, {"-"}).split('\n')) {
        if (line.contains(pageStart))
            ++page;
        const QRegularExpressionMatch match = word.match(line);
        if (match.hasMatch())
            words.push_back({page, match.captured(1).toDouble(), match.captured(2).toDouble(),
                             match.captured(3).toStdString()});
    }
    return words;
}

int PdfPageCount(const QString& file) {
    static const QRegularExpression pages("^Pages:\\s+(\\d+)", QRegularExpression::MultilineOption);
    return pages.match(RunTool("pdfinfo", {}, file)).captured(1).toInt();
}

std::vector<std::string> PdfLines(const QString& file, int page) {
    const QString number = QString::number(page);
    std::vector<std::string> lines;
    for (const QString& line :
         RunTool("pdftotext", {"-layout", "-f", number, "-l", number}, file, {"-"}).split('\n'))
        if (!line.trimmed().isEmpty())
            lines.push_back(line.trimmed().toStdString());
    return lines;
}
