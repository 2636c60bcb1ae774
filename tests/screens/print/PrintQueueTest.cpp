#include "CupsServer.h"
#include "PdfText.h"

#include "base/RunTimeError.h"
#include "platform/qt/QtPrinter.h"
#include "platform/qt/QtPrinting.h"
#include "report/PrintJob.h"
#include "report/PrintLayout.h"
#include "report/PrintedLines.h"
#include "report/ViewedFile.h"
#include "screens/controls/GraphControl.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QTemporaryDir>

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

/// Shares of pixels of the page that are coloured and that are white, of 1.
struct Look {
    double coloured = 0;
    double white = 0;
};

Look LookOf(const QString& pdf) {
    const QTemporaryDir folder;
    QProcess::execute("pdftoppm",
                      {"-r", "50", "-png", "-singlefile", pdf, folder.filePath("page")});
    const QImage image(folder.filePath("page.png"));
    Look look;
    const double share = 1.0 / std::max(1, image.width() * image.height());
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            look.coloured += colour.saturation() > 60 ? share : 0;
            look.white += colour == Qt::white ? share : 0;
        }
    return look;
}

TEST_F(PrintQueue, A_graph_arrives_with_its_legend_and_in_colour) {
    GraphControl graph;
    graph.SetNumSets(1);
    graph.SetNumPoints(50);
    graph.SetLegend(1, "Ch. 1");
    graph.SetLeftTitle("mV");
    graph.SetGraphTitle("4-Channel Vantrel - Well 7 Report: Graphic");
    for (int point = 1; point <= 50; ++point)
        graph.SetData(point, point % 10);
    graph.SetDrawMode(Mreport::graph::draw);
    platform.printing.onPrint = [](const std::string& name, const auto& document) {
        QPrinter printer(QPrinter::HighResolution);
        platform::SetMargins(printer);
        return platform::PrintOn(printer, name, document);
    };

    Mreport::PrintGraph({}, platform::QtPicture([&graph](QPainter& painter, const QRectF& area) {
                            graph.PaintOnPaper(painter, area);
                        }));

    const QString job = server.LastJob();
    ASSERT_FALSE(job.isEmpty());
    EXPECT_EQ(PdfPageCount(job), 1);
    EXPECT_EQ(PdfLines(job, 1).at(0), "4-Channel Vantrel - Well 7 Report: Graphic");
    const Look look = LookOf(job);
    EXPECT_GT(look.coloured, 0.002); // a zigzag line, not a speck
    EXPECT_GT(look.white, 0.8);      // and not a painted page
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
