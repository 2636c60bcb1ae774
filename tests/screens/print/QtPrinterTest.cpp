#include "QtPrinterTest.h"

#include "PdfText.h"

#include "base/RunTimeError.h"

#include <QApplication>
#include <QFile>
#include <QKeyEvent>

using platform::PrintOutcome;

TEST_F(QtPrinterTest, A_table_stands_in_the_file_line_by_line) {
    EXPECT_EQ(PrintTable(2), PrintOutcome::printed);

    const std::vector<std::string> lines = PdfLines(file, 1);
    ASSERT_EQ(lines.size(), 10U);
    EXPECT_EQ(lines[0].substr(0, 40), "4-Channel Vantrel - Well 7 Report: Table");
    const auto pageNumber = lines[0].find("Page 1 ");
    ASSERT_NE(pageNumber, std::string::npos);
    EXPECT_NE(lines[0].find(" 07-Mar-2003", pageNumber), std::string::npos);
    EXPECT_EQ(lines[2].substr(0, 8), "Record 1");
    EXPECT_EQ(lines[5].substr(0, 3), "\xC2\xB0"
                                     "C");
    EXPECT_EQ(lines[6].substr(0, 8), "Record 2");
}

TEST_F(QtPrinterTest, Values_stand_below_the_heading_of_their_channel) {
    PrintTable(1);

    std::vector<double> headings;
    std::vector<double> potentials;
    for (const PdfWord& word : PdfWords(file)) {
        if (word.text == "Chan")
            headings.push_back(word.x_pt);
        if (word.text == "177.5" || word.text == "-12.3" || word.text == "1.23E+04")
            potentials.push_back(word.x_pt);
    }
    ASSERT_EQ(headings.size(), 4U);
    ASSERT_EQ(potentials.size(), 3U);
    EXPECT_NEAR(potentials[0], headings[0], 0.1); // of the file's decimals
    EXPECT_NEAR(potentials[1], headings[1], 0.1);
    EXPECT_NEAR(potentials[2], headings[3], 0.1);
    EXPECT_NEAR(headings[2] - headings[1], headings[1] - headings[0], 0.1);
}

TEST_F(QtPrinterTest, Nothing_stands_outside_the_margins_with_eight_channels) {
    page.Add("Record 1\tAt\t14:05:33 07.Mar.2003");
    page.Add("Comment:\t");
    page.Add("mV\t1\t2\t3\t4\t5\t6\t7\t-1.23E+04");
    PrintTable(0, 8);
    const Mreport::TableReport report{page, 1, 5, 8, "Well 7", "07-Mar-2003"};
    platform::PrintOn(printer, "Table", [&](platform::Printer& paper) {
        Mreport::PrintTable(paper, report, {1, 1}, [](const auto&) {});
    });

    const std::vector<PdfWord> words = PdfWords(file);
    ASSERT_FALSE(words.empty());
    const QRectF paint = printer.pageLayout().paintRect(QPageLayout::Point);
    const double widthOfLongest_pt = 9 * 4.9; // nine characters at 8 points
    for (const PdfWord& word : words) {
        EXPECT_GE(word.x_pt, paint.left() - 0.5) << word.text;
        if (word.text == "-1.23E+04") {
            EXPECT_LE(word.x_pt + widthOfLongest_pt, paint.right());
        }
    }
}

TEST_F(QtPrinterTest, Each_page_of_a_long_table_bears_its_number) {
    PrintTable(100);

    const int pages = PdfPageCount(file);
    ASSERT_GE(pages, 7);
    for (int number = 1; number <= pages; ++number) {
        const std::vector<std::string> lines = PdfLines(file, number);
        ASSERT_GE(lines.size(), 3U);
        EXPECT_NE(lines[0].find("Page " + std::to_string(number) + " "), std::string::npos);
        EXPECT_EQ(lines[1].substr(0, 6), "Chan 1");
    }
}

TEST_F(QtPrinterTest, A_picture_is_drawn_into_its_area) {
    const platform::QtPicture picture([](QPainter& painter, const QRectF& area) {
        painter.drawText(area.topLeft() + QPointF(0, painter.fontMetrics().ascent()), "Here");
    });

    platform::PrintOn(printer, "Graph", [&](platform::Printer& paper) {
        paper.DrawPicture(picture, {{100, 200}, 300, 300});
    });

    const std::vector<PdfWord> words = PdfWords(file);
    ASSERT_EQ(words.size(), 1U);
    const QPointF corner = printer.pageLayout().paintRect(QPageLayout::Point).topLeft();
    EXPECT_NEAR(words[0].x_pt, corner.x() + 100, 1);
    EXPECT_NEAR(words[0].y_pt, corner.y() + 200, 3); // the box of a word is higher than its letters
}

TEST_F(QtPrinterTest, A_folder_that_is_not_there_is_an_error_that_names_the_document) {
    printer.setOutputFileName(folder.filePath("gone/report.pdf"));

    try {
        PrintTable(1);
        FAIL() << "nothing was thrown";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(std::string(error.what()).rfind("Printing Table: ", 0), 0U);
    }
}

TEST_F(QtPrinterTest, ESC_stops_the_printing_and_leaves_no_file) {
    platform.clock.step = std::chrono::milliseconds(1);
    platform.desktop.onEvents = [] { // as the event loop would deliver it
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(qApp, &escape);
    };

    EXPECT_EQ(PrintTable(100), PrintOutcome::stopped);

    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files).isEmpty());
}

TEST_F(QtPrinterTest, What_the_document_throws_reaches_the_caller_and_leaves_no_file) {
    EXPECT_THROW(
        platform::PrintOn(printer, "Table",
                          [](platform::Printer&) { throw RunTimeError("no such record"); }),
        RunTimeError);

    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files).isEmpty());
}
