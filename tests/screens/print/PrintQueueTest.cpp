#include "CupsServer.h"
#include "PdfText.h"

#include "app/RunTimeError.h"
#include "platform/qt/QtPrinter.h"
#include "platform/qt/QtPrinting.h"
#include "report/PrintLayout.h"
#include "report/PrintedLines.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPrinter>
#include <QPrinterInfo>

#include <gtest/gtest.h>

namespace {

using platform::PrintOutcome;

class PrintQueue : public testing::Test {
protected:
    /// Prints on the system's default printer.
    PrintOutcome PrintTable(int records) {
        PrintedLines page;
        for (int record = 1; record <= records; ++record)
            page.AddRecord(record);
        const Mreport::TableReport report{page, 1, 5, 4, "Well 7", "07-Mar-2003"};
        QPrinter printer(QPrinter::HighResolution);
        platform::SetMargins(printer);
        return platform::PrintOn(printer, "Table", [&](platform::Printer& paper) {
            Mreport::PrintTable(paper, report, {1, records}, [](const auto&) {});
        });
    }

    std::string FailureOfTable() {
        try {
            PrintTable(1);
        } catch (const RunTimeError& error) {
            return error.what();
        }
        return "nothing was thrown";
    }

    CupsServer server;
    fake::Platform platform;
};

TEST_F(PrintQueue, A_table_arrives_whole_with_every_page) {
    ASSERT_EQ(QPrinterInfo::defaultPrinterName(), "Lab");

    EXPECT_EQ(PrintTable(100), PrintOutcome::printed);

    const QString job = server.LastJob();
    ASSERT_FALSE(job.isEmpty());
    const int pages = PdfPageCount(job);
    EXPECT_GE(pages, 7);
    EXPECT_NE(PdfLines(job, 1)[0].find("Well 7 Report: Table"), std::string::npos);
    EXPECT_NE(PdfLines(job, pages)[0].find("Page " + std::to_string(pages)), std::string::npos);
}

TEST_F(PrintQueue, A_stopped_printer_is_an_error_that_names_it) {
    server.Administer("cupsdisable", {"Lab"});

    EXPECT_EQ(FailureOfTable(), "Printing Table: the printer Lab is stopped");

    EXPECT_EQ(server.JobCount(), 0);
}

TEST_F(PrintQueue, A_printer_that_takes_no_jobs_is_an_error_that_names_it) {
    server.Administer("cupsreject", {"Lab"});

    const std::string failure = FailureOfTable();

    EXPECT_EQ(failure.rfind("Printing Table: ", 0), 0U) << failure;
    EXPECT_NE(failure.find("Lab"), std::string::npos) << failure;
}

TEST_F(PrintQueue, A_server_that_has_gone_is_an_error) {
    QPrinter printer(QPrinter::HighResolution);
    ASSERT_EQ(printer.printerName(), "Lab");
    server.Stop();

    EXPECT_THROW(platform::PrintOn(printer, "Table", [](platform::Printer&) {}), RunTimeError);
}

TEST_F(PrintQueue, ESC_before_the_end_sends_nothing_to_the_printer) {
    platform.clock.step = std::chrono::milliseconds(1);
    platform.desktop.onEvents = [] {
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(qApp, &escape);
    };

    EXPECT_EQ(PrintTable(100), PrintOutcome::stopped);

    EXPECT_EQ(server.JobCount(), 0);
}

} // namespace
