#pragma once

#include "platform/qt/QtPrinter.h"
#include "platform/qt/QtPrinting.h"
#include "report/PrintLayout.h"
#include "report/PrintedLines.h"
#include "support/FakePlatform.h"

#include <QPrinter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A printer whose pages come into a PDF file of the test's own folder.
class QtPrinterTest : public testing::Test {
protected:
    QtPrinterTest() : file(folder.filePath("report.pdf")), printer(QPrinter::HighResolution) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setPageSize(QPageSize(QPageSize::A4));
        platform::SetMargins(printer);
        printer.setOutputFileName(file);
    }

    platform::PrintOutcome PrintTable(int records, int channelCount = 4) {
        for (int record = 1; record <= records; ++record)
            page.AddRecord(record);
        const Mreport::TableReport report{page, 1, 5, channelCount, "Well 7", "07-Mar-2003"};
        return platform::PrintOn(printer, "Table", [&](platform::Printer& paper) {
            Mreport::PrintTable(paper, report, {1, records}, [](const auto&) {});
        });
    }

    fake::Platform platform;
    QTemporaryDir folder;
    QString file;
    QPrinter printer;
    PrintedLines page;
};
