#include "PdfText.h"

#include "base/RunTimeError.h"
#include "platform/qt/QtPrinting.h"
#include "report/ReportLoader.h"
#include "report/support/MeasurementText.h"
#include "report/support/RecordingView.h"
#include "screens/controls/GraphControl.h"
#include "screens/frmPrint/frmPrint.h"
#include "screens/support/ScreenTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QRadioButton>
#include <QTemporaryDir>

#include <algorithm>

namespace {

using platform::PrintOutcome;

class PrintScreen : public ScreenTest {
protected:
    PrintScreen() { platform.clock.step = std::chrono::milliseconds(1); }

    /// A loaded file with records 1 to `records`, and the form over it.
    void Open(int records) {
        const MeasurementText text;
        const auto file = platform.folder.Path() / "run.4ch";
        WriteBytes(file, text.File(records));
        loader.ViewFile(file);
        form = std::make_unique<frmPrint>(viewed, shown);
        Show(*form);
    }

    void ChooseGraph() { Element<QRadioButton>(*form, "optPrintOpt", 1).click(); }

    void ChooseRange(const QString& first, const QString& last) {
        Element<QRadioButton>(*form, "optRange", 1).click();
        Type(*form, "txtRange_0", first);
        Type(*form, "txtRange_1", last);
    }

    QString Label(const QString& name) const { return Find<QLabel>(*form, name).text(); }

    const fake::Printer& Printed() const { return platform.printing.documents.at(0); }

    /// The first cells of the printed record lines.
    std::vector<std::string> PrintedRecords() const {
        std::vector<std::string> records;
        for (const fake::PrintedText& text : Printed().texts)
            if (text.text.starts_with("Record "))
                records.push_back(text.text);
        return records;
    }

    FileOpr::MeasuringRun run;
    Mreport::ViewedFile viewed;
    Mreport::ShownGraph shown;
    RecordingView view{viewed, shown};
    Mreport::ReportLoader loader{run, viewed, shown, view};
    std::unique_ptr<frmPrint> form;
};

TEST_F(PrintScreen, The_list_shown_in_the_viewer_is_chosen_and_its_records_are_told) {
    Open(4200); // 8 lines each: two pages
    shown.shownPageIndex = 1;
    form = std::make_unique<frmPrint>(viewed, shown);
    Show(*form);

    auto& list = Find<QComboBox>(*form, "cboList");
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.itemText(0), "List 1");
    EXPECT_EQ(list.currentText(), "List 2");
    const int firstOfSecond = Label("lblRange_0").toInt();
    EXPECT_GT(firstOfSecond, 1);
    EXPECT_EQ(Label("lblRange_1"), "4200");

    Pick(*form, "cboList", "List 1");

    EXPECT_EQ(Label("lblRange_0"), "1");
    EXPECT_EQ(Label("lblRange_1"), QString::number(firstOfSecond - 1));
}

TEST_F(PrintScreen, All_records_are_printed_as_a_table_and_the_form_closes) {
    Open(30);

    Click(*form, "cmdPrint");

    EXPECT_EQ(platform.printing.names,
              std::vector<std::string>{"4-Channel Vantrel - River Report: Table"});
    const auto records = PrintedRecords();
    ASSERT_EQ(records.size(), 30U);
    EXPECT_EQ(records.front(), "Record 1");
    EXPECT_EQ(records.back(), "Record 30");
    EXPECT_EQ(Printed().texts.at(1).text, "Page 1   07-Mar-2003"); // the day of the fake clock
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(form->result(), QDialog::Accepted);
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

TEST_F(PrintScreen, A_range_prints_its_records_alone) {
    Open(30);
    ChooseRange("12", "14");

    Click(*form, "cmdPrint");

    EXPECT_EQ(PrintedRecords(), (std::vector<std::string>{"Record 12", "Record 13", "Record 14"}));
}

TEST_F(PrintScreen, Typing_a_record_number_chooses_the_range) {
    Open(30);
    ASSERT_TRUE(Element<QRadioButton>(*form, "optRange", 0).isChecked());

    Type(*form, "txtRange_0", "3");

    EXPECT_TRUE(Element<QRadioButton>(*form, "optRange", 1).isChecked());
}

TEST_F(PrintScreen, What_a_tool_sets_has_the_same_effect_as_by_hand) {
    Open(4200);
    Find<QComboBox>(*form, "cboList").setCurrentIndex(1);
    EXPECT_EQ(Label("lblRange_1"), "4200");
    Element<QLineEdit>(*form, "txtRange", 0).setText("4190");
    EXPECT_TRUE(Element<QRadioButton>(*form, "optRange", 1).isChecked());
}

TEST_F(PrintScreen, A_last_record_before_the_first_is_refused_with_the_focus_in_the_range) {
    Open(30);
    ChooseRange("14", "12");
    platform.dialogs.ExpectMessage("Invalid range", exclamation);

    Click(*form, "cmdPrint");

    EXPECT_TRUE(platform.printing.names.empty());
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(form->focusWidget(), &Element<QLineEdit>(*form, "txtRange", 1));
}

TEST_F(PrintScreen, A_first_record_of_0_is_invalid_although_the_page_starts_at_1) {
    Open(30);
    ChooseRange("0", "12");
    platform.dialogs.ExpectMessage("Invalid range", exclamation);

    Click(*form, "cmdPrint");

    EXPECT_EQ(form->focusWidget(), &Element<QLineEdit>(*form, "txtRange", 0));
}

TEST_F(PrintScreen, Empty_range_boxes_are_an_invalid_range) {
    Open(30);
    Element<QRadioButton>(*form, "optRange", 1).click();
    platform.dialogs.ExpectMessage("Invalid range", exclamation);

    Click(*form, "cmdPrint");

    EXPECT_TRUE(platform.printing.names.empty());
}

TEST_F(PrintScreen, Records_that_the_list_does_not_hold_are_out_of_range) {
    Open(30);
    ChooseRange("12", "31");
    platform.dialogs.ExpectMessage("Out of range", exclamation);

    Click(*form, "cmdPrint");

    EXPECT_EQ(form->focusWidget(), &Element<QLineEdit>(*form, "txtRange", 1));
    EXPECT_TRUE(form->isVisible());
}

TEST_F(PrintScreen, A_file_without_records_has_no_range_to_print) {
    Open(0);
    platform.dialogs.ExpectMessage("Invalid range", exclamation);

    Click(*form, "cmdPrint");

    EXPECT_TRUE(platform.printing.names.empty());
}

TEST_F(PrintScreen, A_graph_of_1500_records_is_printed_across_the_page) {
    Open(1501);
    ChooseGraph();
    ChooseRange("2", "1501");

    Click(*form, "cmdPrint");

    EXPECT_EQ(platform.printing.names,
              std::vector<std::string>{"4-Channel Vantrel - River Report: Graphic"});
    ASSERT_EQ(Printed().pictures.size(), 1U);
    EXPECT_EQ(Printed().pictures[0].width_pt, 540.0F);
    EXPECT_EQ(Printed().pictures[0].height_pt, 405.0F); // three quarters of the width
}

TEST_F(PrintScreen, A_graph_of_1501_records_is_refused_and_a_range_asked_for) {
    Open(1501);
    ChooseGraph();
    platform.dialogs.ExpectMessage("Too much record to print a graph (Max. 1500 points)",
                                   exclamation);

    Click(*form, "cmdPrint");

    EXPECT_TRUE(platform.printing.names.empty());
    EXPECT_TRUE(Element<QRadioButton>(*form, "optRange", 1).isChecked());
    EXPECT_EQ(form->focusWidget(), &Element<QLineEdit>(*form, "txtRange", 0));
}

TEST_F(PrintScreen, The_graph_has_the_records_of_the_range_while_it_prints_and_50_points_after) {
    Open(200);
    ChooseGraph();
    ChooseRange("101", "160");
    int pointsWhilePrinting = 0;
    auto& graph = Find<GraphControl>(*form, "graReport");
    platform.printing.onPrint = [&](const auto&, const auto&) {
        pointsWhilePrinting = graph.NumPoints();
        EXPECT_EQ(graph.DataGetAmp(1, 1), 101.0); // the first channel's potential of record 101
        EXPECT_EQ(graph.DataGetAmp(1, 60), 160.0);
        return PrintOutcome::cancelled;
    };

    Click(*form, "cmdPrint");

    EXPECT_EQ(pointsWhilePrinting, 60);
    EXPECT_EQ(graph.NumPoints(), 50);
}

TEST_F(PrintScreen, The_printed_graph_bears_title_unit_legend_and_record_numbers) {
    Open(200);
    ChooseGraph();
    ChooseRange("101", "150");
    const QTemporaryDir folder;
    const QString file = folder.filePath("graph.pdf");
    platform.printing.onPrint = [&](const std::string& name, const auto& document) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(file);
        platform::SetMargins(printer);
        return platform::PrintOn(printer, name, document);
    };

    Click(*form, "cmdPrint");

    EXPECT_EQ(PdfPageCount(file), 1);
    std::string text;
    for (const PdfWord& word : PdfWords(file))
        text += word.text + " ";
    for (const auto* expected : {"4-Channel Vantrel - River Report: Graphic", "mV", "Ch. 1",
                                 "Ch. 2", "Ch. 3", "101", "146", "Record"})
        EXPECT_NE(text.find(expected), std::string::npos) << expected << " in " << text;
    EXPECT_EQ(text.find("Ch. 4"), std::string::npos) << "a channel that is not in use";
}

TEST_F(PrintScreen, The_status_tells_what_is_done_and_how_to_stop_it) {
    Open(30);
    std::vector<QString> busy;
    std::vector<QString> status;
    platform.desktop.onEvents = [&] {
        busy.push_back(Label("lblBusy"));
        status.push_back(Label("lblStatus"));
    };

    Click(*form, "cmdPrint");

    ASSERT_FALSE(busy.empty());
    EXPECT_EQ(busy.front(), "Please be patient, printing the report in text...");
    EXPECT_EQ(status.front(), "Loading...");
    EXPECT_EQ(status.back(), "Page 5, 99% complete. [Press ESC to stop printing]");
    EXPECT_EQ(Label("lblBusy"), "");
}

TEST_F(PrintScreen, A_graph_is_announced_as_such) {
    Open(30);
    ChooseGraph();
    QString busy;
    platform.printing.onPrint = [&](const auto&, const auto&) {
        busy = Label("lblBusy");
        return PrintOutcome::printed;
    };

    Click(*form, "cmdPrint");

    EXPECT_EQ(busy, "Please be patient, printing the report in graph...");
}

TEST_F(PrintScreen, A_preview_that_is_closed_leaves_the_form_open) {
    Open(30);
    platform.printing.outcome = PrintOutcome::cancelled;

    Click(*form, "cmdPrint");

    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(Label("lblBusy"), "");
    EXPECT_EQ(Label("lblStatus"), "");
}

TEST_F(PrintScreen, A_stopped_printing_says_so_and_leaves_the_form_open) {
    Open(30);
    platform.printing.outcome = PrintOutcome::stopped;

    Click(*form, "cmdPrint");

    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(Label("lblStatus"), "Printing was stopped.");
}

TEST_F(PrintScreen, A_printer_that_fails_is_told_in_the_error_box_and_the_form_stays_ready) {
    Open(30);
    platform.printing.failure = "Printing Table: the printer Lab is stopped";
    platform.dialogs.ExpectMessage("Unexpected error - Printing Table: the printer Lab is stopped\n"
                                   "Error location - PrintTable",
                                   critical);

    Click(*form, "cmdPrint");

    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(Label("lblBusy"), "");

    platform.printing.failure.clear();
    Click(*form, "cmdPrint");
    EXPECT_EQ(form->result(), QDialog::Accepted);
}

TEST_F(PrintScreen, A_graph_that_cannot_be_printed_leaves_50_points_behind) {
    Open(200);
    ChooseGraph();
    platform.printing.failure = "Printing Graph: no printer is set up";
    platform.dialogs.ExpectMessage("Unexpected error - Printing Graph: no printer is set up\n"
                                   "Error location - PrintGraph",
                                   critical);

    Click(*form, "cmdPrint");

    EXPECT_EQ(Find<GraphControl>(*form, "graReport").NumPoints(), 50);
    EXPECT_TRUE(form->isVisible());
}

TEST_F(PrintScreen, Every_control_has_a_name_and_a_mnemonic_of_its_own) {
    Open(30);

    EXPECT_EQ(ControlsWithoutName(*form), std::vector<std::string>());
    EXPECT_EQ(SharedMnemonics(*form), std::vector<std::string>());
    ExpectFitsAtDoubleScale(*form);
    ExpectRestsInEverySize(*form);
    EXPECT_EQ(IndicesOf(*form, "optPrintOpt"), (std::vector<int>{0, 1}));
    EXPECT_EQ(IndicesOf(*form, "optRange"), (std::vector<int>{0, 1}));
    EXPECT_EQ(IndicesOf(*form, "txtRange"), (std::vector<int>{0, 1}));
    EXPECT_EQ(IndicesOf(*form, "lblRange"), (std::vector<int>{0, 1}));
}

TEST_F(PrintScreen, A_graph_holds_the_range_that_was_asked_for_during_automatic_update_too) {
    Open(200);
    shown.autoUpdate = true;
    ChooseGraph();
    ChooseRange("1", "200");
    const auto& graph = Find<GraphControl>(*form, "graReport");
    platform.printing.onPrint = [&](const auto&, const auto&) {
        EXPECT_EQ(graph.NumPoints(), 200);
        EXPECT_EQ(graph.DataGetAmp(1, 200), 200.0);
        return PrintOutcome::cancelled;
    };
    Click(*form, "cmdPrint");
    ASSERT_EQ(platform.printing.names.size(), 1U);
}

TEST_F(PrintScreen, A_file_that_grows_meanwhile_is_printed_as_far_as_the_form_says) {
    Open(20);
    ASSERT_EQ(Label("lblRange_1"), "20");
    const auto file = platform.folder.Path() / "run.4ch";
    WriteBytes(file, MeasurementText().File(30));
    loader.ViewFile(file);
    Click(*form, "cmdPrint");
    EXPECT_EQ(PrintedRecords().size(), 20U);
}

TEST_F(PrintScreen, The_range_boxes_refuse_characters_that_the_code_page_lacks) {
    Open(20);
    auto& box = Find<QLineEdit>(*form, "txtRange_0");
    QTest::keyClicks(&box, "12");
    box.insert(QString(QChar(0x2192))); // an arrow
    EXPECT_EQ(box.text(), "12");
}

TEST_F(PrintScreen, A_compact_table_is_a_choice_of_its_own) {
    Open(30);
    auto& compact = Find<QCheckBox>(*form, "chkCompact");
    EXPECT_FALSE(compact.isChecked());
    compact.click();
    EXPECT_FALSE(Find<QCheckBox>(*form, "chkWholeRecords").isEnabled()) << "they are so anyway";
    Click(*form, "cmdPrint");
    EXPECT_TRUE(PrintedRecords().empty());
    const auto isTime = [](const fake::PrintedText& text) {
        return text.text == "14:05:33 07.Mar.2003";
    };
    EXPECT_EQ(std::ranges::count_if(Printed().texts, isTime), 30);
    EXPECT_EQ(Printed().PageNumber(), 1);
}

TEST_F(PrintScreen, First_page_and_whole_records_are_off_until_they_are_chosen) {
    Open(30);
    auto& firstPage = Find<QCheckBox>(*form, "chkFirstPage");
    auto& wholeRecords = Find<QCheckBox>(*form, "chkWholeRecords");
    EXPECT_FALSE(firstPage.isChecked());
    EXPECT_FALSE(wholeRecords.isChecked());
    ChooseGraph();
    EXPECT_FALSE(firstPage.isEnabled());
    EXPECT_FALSE(wholeRecords.isEnabled());
    Element<QRadioButton>(*form, "optPrintOpt", frmPrint::asTable).click();
    firstPage.click();
    wholeRecords.click();
    Click(*form, "cmdPrint");
    const auto first = Printed().Page(1);
    EXPECT_TRUE(std::ranges::none_of(
        first, [](const auto& line) { return line.find("Record 1") != std::string::npos; }));
    EXPECT_EQ(PrintedRecords().size(), 30U);
}

TEST_F(PrintScreen, The_choices_of_a_printed_table_are_remembered) {
    Open(30);
    Find<QCheckBox>(*form, "chkFirstPage").click();
    Find<QCheckBox>(*form, "chkWholeRecords").click();
    Click(*form, "cmdPrint");
    EXPECT_EQ(platform.profile->GetInt("Printing", "FirstPage", 0), 1);
    Open(30);
    EXPECT_FALSE(Find<QCheckBox>(*form, "chkCompact").isChecked());
    EXPECT_TRUE(Find<QCheckBox>(*form, "chkFirstPage").isChecked());
    EXPECT_TRUE(Find<QCheckBox>(*form, "chkWholeRecords").isChecked());
    Find<QCheckBox>(*form, "chkCompact").click();
    Click(*form, "cmdPrint");
    Open(30);
    EXPECT_TRUE(Find<QCheckBox>(*form, "chkCompact").isChecked());
    EXPECT_FALSE(Find<QCheckBox>(*form, "chkWholeRecords").isEnabled());
}

} // namespace
