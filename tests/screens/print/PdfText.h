#pragma once

#include <QString>

#include <string>
#include <vector>

/// A word of a PDF file with the place of its top left corner in points.
struct PdfWord {
    int page = 1;
    double x_pt = 0;
    double y_pt = 0;
    std::string text;
};

/// The words of the file in reading order. Fails the test where the file is no PDF.
std::vector<PdfWord> PdfWords(const QString& file);

int PdfPageCount(const QString& file);

/// The lines of a page as they stand on it, without blanks at their ends; empty lines left out.
std::vector<std::string> PdfLines(const QString& file, int page);
