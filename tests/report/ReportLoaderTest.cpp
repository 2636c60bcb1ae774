#include "app/Mcommon.h"
#include "base/RunTimeError.h"
#include "report/support/LoadedReport.h"

namespace {

using ReportLoader = LoadedReport;
using Electrode::Kind;
using Kinds = std::array<Kind, 8>;

/// The working counter stands at 12 - 2 + 8 r at the separator of the first page's record r, at
/// 8 r - 1 on later pages, and the page ends where it exceeds 32690 for the first time.
constexpr int recordsOfFirstPage = 4086;
constexpr int recordsOfNextPage = 4087;

} // namespace

TEST_F(ReportLoader, A_file_without_records_is_one_page_and_draws_the_graph_once) {
    View(MeasurementText().Header());
    EXPECT_EQ(viewed.pages.Count(), 1);
    EXPECT_EQ(viewed.pages.LineCount(0), 12U);
    EXPECT_EQ(view.graph.draws, 1);
    EXPECT_EQ(view.graph.labels.at(1), "1");
    EXPECT_EQ(view.firstRecord, 1);
    EXPECT_EQ(LastStatus(), "Ready");
    EXPECT_EQ(Range().recordsInPage, 0);
    EXPECT_TRUE(loader.Idle());
}

TEST_F(ReportLoader, An_empty_file_is_one_empty_page) {
    View("");
    EXPECT_EQ(viewed.pages.LineCount(0), 0U);
    EXPECT_EQ(LastStatus(), "Ready");
}

TEST_F(ReportLoader, Fifty_records_draw_the_graph_at_the_end) {
    View(MeasurementText().File(50));
    EXPECT_EQ(view.graph.draws, 1);
    EXPECT_EQ(view.graph.NumPoints(), 50);
    EXPECT_EQ(view.recordsAtDrawing, std::vector<std::int32_t>{50});
}

TEST_F(ReportLoader, Fifty_one_records_draw_the_graph_while_loading_and_not_again) {
    View(MeasurementText().File(51));
    EXPECT_EQ(view.graph.draws, 1);
    EXPECT_EQ(view.graph.labels.at(1), "1");
    EXPECT_EQ(view.graph.labels.at(50), "50");
}

TEST_F(ReportLoader, A_long_file_draws_the_graph_when_51_records_are_in) {
    View(MeasurementText().File(200));
    EXPECT_EQ(view.graph.draws, 1);
    EXPECT_EQ(view.recordsAtDrawing, std::vector<std::int32_t>{51});
    EXPECT_EQ(Range().recordsInPage, 200);
    EXPECT_EQ(view.scroll.min, 50);
    EXPECT_EQ(view.scroll.max, 200);
    EXPECT_TRUE(view.scrollGuarded);
    EXPECT_FALSE(shown.scrollGuard);
}

TEST_F(ReportLoader, The_caption_and_the_header_box_show_the_file) {
    View(MeasurementText().File(1));
    EXPECT_EQ(view.caption, File());
    EXPECT_NE(view.head.find("Project Name: River\tAnalyst: Ann"), std::string::npos);
    EXPECT_EQ(view.head.find("----"), std::string::npos);
    EXPECT_EQ(viewed.header.projectName, "River");
}

TEST_F(ReportLoader, The_channel_header_gives_kinds_sensors_and_the_number_of_series) {
    View(MeasurementText().File(1));
    EXPECT_EQ(viewed.channelCount, 4);
    EXPECT_EQ(viewed.channelKind, (Kinds{Kind::ion, Kind::pH, Kind::redox}));
    EXPECT_EQ(viewed.channelNumber, (std::array<int, 8>{1, 2, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(shown.channelInUse,
              (std::array<bool, 8>{true, true, true, false, true, true, true, true}));
    EXPECT_EQ(view.graph.NumSets(), 7) << "8 less one None, in a file of four channels, too";
}

TEST_F(ReportLoader, A_project_or_a_comment_that_looks_like_a_marker_upsets_nothing) {
    MeasurementText text;
    text.project = "Record 5 ---- mV";
    text.comment = [](int) { return "Record 99\t------ ppm mV"; };
    View(text.File(3));
    EXPECT_EQ(Range().recordsInPage, 3);
    EXPECT_EQ(Range().pageFirstRecordOffset, 0);
    EXPECT_EQ(Mreport::CountLinesPerRecord(viewed.pages), 8);
    EXPECT_EQ(view.scroll.max, 3);
    EXPECT_EQ(viewed.pages.Shown(0, 13), "Comment:\tRecord 99\t------ ppm mV");
}

TEST_F(ReportLoader, Separators_are_shown_as_200_dashes) {
    View(MeasurementText().File(1));
    EXPECT_EQ(viewed.pages.Shown(0, 0), std::string(200, '-'));
    EXPECT_EQ(viewed.pages.Shown(0, 19), std::string(200, '-'));
    EXPECT_EQ(viewed.pages.Text(0, 19), std::string(150, '-'));
}

TEST_F(ReportLoader, Progress_counts_line_lengths_and_ends_with_100_and_ready) {
    View(MeasurementText().File(500));
    EXPECT_EQ(view.statuses.front(), "Loading data, 0% complete. [Press ESC to stop loading]");
    EXPECT_TRUE(StatusShown("Loading data, 50% complete. [Press ESC to stop loading]"));
    ASSERT_GE(view.statuses.size(), 2U);
    EXPECT_EQ(view.statuses[view.statuses.size() - 2],
              "Loading data, 100% complete. [Press ESC to stop loading]");
    EXPECT_EQ(LastStatus(), "Ready");
    EXPECT_FALSE(StatusShown("Loading data, 101% complete. [Press ESC to stop loading]"));
}

TEST_F(ReportLoader, The_view_is_told_that_all_is_read_before_the_last_progress_is_shown) {
    View(MeasurementText().File(500));
    EXPECT_EQ(view.recordsAtFileRead, 500);
    EXPECT_NE(view.statusAtFileRead, "Ready");
    EXPECT_NE(view.statusAtFileRead, "Loading data, 100% complete. [Press ESC to stop loading]");
}

TEST_F(ReportLoader, A_page_ends_at_the_separator_within_ten_lines_of_the_limit) {
    View(MeasurementText().File(recordsOfFirstPage + recordsOfNextPage + 5));
    EXPECT_EQ(view.tabs, (std::vector<std::string>{"List &1", "List &2", "List &3"}));
    EXPECT_EQ(viewed.LastPageIndex(), 2);
    const auto first = Mreport::PageRecordRange(viewed.pages, 0);
    EXPECT_EQ(first.recordsInPage, recordsOfFirstPage);
    EXPECT_EQ(first.lastRecord.number, recordsOfFirstPage);
    const auto second = Mreport::PageRecordRange(viewed.pages, 1);
    EXPECT_EQ(second.recordsInPage, recordsOfNextPage);
    EXPECT_EQ(second.pageFirstRecordOffset, recordsOfFirstPage);
    EXPECT_EQ(second.lastRecord.number, recordsOfFirstPage + recordsOfNextPage);
    EXPECT_EQ(Mreport::PageRecordRange(viewed.pages, 2).recordsInPage, 5);
    for (int page = 0; page < 3; ++page)
        EXPECT_LE(viewed.pages.LineCount(page), 32700U);
}

TEST_F(ReportLoader, Pages_hold_up_to_the_limit_of_lines) {
    View(MeasurementText().File(recordsOfFirstPage + recordsOfNextPage + 1));
    EXPECT_EQ(viewed.pages.LineCount(0), 32700U);
    EXPECT_EQ(viewed.pages.LineCount(1), 32696U);
    EXPECT_EQ(viewed.pages.LineCount(2), 8U);
    EXPECT_EQ(viewed.pages.Shown(1, 0), "Record 4087\tAt\t14:05:33 07.Mar.2003");
}

TEST_F(ReportLoader, A_separator_that_ends_the_file_starts_no_new_page) {
    View(MeasurementText().File(recordsOfFirstPage));
    EXPECT_EQ(viewed.pages.Count(), 1);
    EXPECT_EQ(view.tabs.size(), 1U);
}

TEST_F(ReportLoader, After_a_load_the_range_is_that_of_the_page_the_graph_shows) {
    View(MeasurementText().File(recordsOfFirstPage + 20));
    EXPECT_EQ(shown.graphPageIndex, 0);
    EXPECT_EQ(shown.shownPageIndex, 0);
    EXPECT_EQ(Range().recordsInPage, recordsOfFirstPage);
    EXPECT_EQ(Range().pageFirstRecordOffset, 0);
    EXPECT_EQ(view.scroll.max, recordsOfFirstPage);
}

TEST_F(ReportLoader, Escape_stops_the_load_and_keeps_what_has_been_read) {
    int passes = 0;
    platform.desktop.onEvents = [&] {
        if (++passes == 3)
            loader.RequestStop();
    };
    View(MeasurementText().File(2000));
    EXPECT_EQ(LastStatus(), "Ready");
    EXPECT_GT(viewed.pages.LineCount(0), 0U);
    EXPECT_LT(viewed.pages.LineCount(0), 200U);
    EXPECT_TRUE(loader.Idle());
    EXPECT_EQ(view.graph.draws, 1);
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

TEST_F(ReportLoader, Escape_without_a_load_does_not_stop_the_next_one) {
    loader.RequestStop();
    View(MeasurementText().File(60));
    EXPECT_EQ(Range().recordsInPage, 60);
}

TEST_F(ReportLoader, Events_run_all_through_a_load) {
    View(MeasurementText().File(400));
    EXPECT_GT(platform.desktop.eventPasses, 400 * 8 / 32);
}

TEST_F(ReportLoader, Opening_while_a_load_runs_is_refused_and_the_load_goes_on) {
    platform.dialogs.ExpectMessage("Press ESC to stop current data loading.",
                                   platform::style::information);
    bool tried = false;
    platform.desktop.onEvents = [&] {
        if (!tried) {
            tried = true;
            EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::hourglass);
            EXPECT_FALSE(loader.Idle());
            loader.ViewFile(File());
        }
    };
    View(MeasurementText().File(60));
    EXPECT_TRUE(tried);
    EXPECT_EQ(Range().recordsInPage, 60);
}

TEST_F(ReportLoader, A_second_file_replaces_the_first_one_whole) {
    View(MeasurementText().File(recordsOfFirstPage + 20));
    loader.SelectPage(1);
    MeasurementText other;
    other.electrodes = {"None", "None", "None", "Ca"};
    View(other.File(7, 100));
    EXPECT_EQ(viewed.pages.Count(), 1);
    EXPECT_EQ(viewed.LastPageIndex(), 0);
    EXPECT_EQ(shown.graphPageIndex, 0);
    EXPECT_EQ(Range().pageFirstRecordOffset, 99);
    EXPECT_EQ(Range().recordsInPage, 7);
    EXPECT_EQ(viewed.channelKind, (Kinds{Kind::none, Kind::none, Kind::none, Kind::ion}));
}

TEST_F(ReportLoader, A_file_that_cannot_be_opened_leaves_the_shown_one) {
    View(MeasurementText().File(5));
    const auto message = [&](const std::filesystem::path& file) {
        try {
            loader.ViewFile(file);
        } catch (const RunTimeError& error) {
            return std::string(error.what());
        }
        return std::string("no error");
    };
    EXPECT_EQ(message(platform.folder.Path() / "gone.4ch"), "Opening gone.4ch: File not found");
    EXPECT_EQ(message(platform.folder.Path() / "tmp"),
              "Opening tmp: This is a folder, not a measurement file");
    EXPECT_EQ(Mcommon::errorLocation, "Report - ViewFile");
    EXPECT_EQ(Range().recordsInPage, 5);
    EXPECT_EQ(view.caption, File());
    EXPECT_TRUE(loader.Idle());
}

TEST_F(ReportLoader, Line_feeds_alone_and_a_cut_last_record_are_read) {
    MeasurementText text;
    text.lineEnd = "\n";
    std::string file = text.File(3);
    file.resize(file.size() - 200); // within the last rows of record 3
    View(file);
    EXPECT_EQ(Range().recordsInPage, 3);
    EXPECT_EQ(Mreport::CountLinesPerRecord(viewed.pages), 8);
    EXPECT_EQ(viewed.pages.Shown(0, 13), "Comment:\t");
}

TEST_F(ReportLoader, A_file_in_utf8_shows_the_same_text) {
    std::string file = MeasurementText().File(2);
    for (auto place = file.find('\xB0'); place != std::string::npos;
         place = file.find('\xB0', place + 2))
        file.replace(place, 1, "\xC2\xB0");
    View("\xEF\xBB\xBF" + file);
    EXPECT_EQ(viewed.pages.Shown(0, 18).substr(0, 3), "\xB0"
                                                      "C ");
    EXPECT_EQ(Range().recordsInPage, 2);
    shown.unitCode = Quantity::celsius;
    loader.Redraw({2});
    EXPECT_EQ(view.graph.Values(1), 2);
}

TEST_F(ReportLoader, A_file_without_a_header_takes_its_channels_from_the_first_record) {
    MeasurementText text;
    text.cell = [](int, const std::string& row, int channel) -> std::string {
        const bool missing = channel == 3 || (row == "pH" && channel != 1) ||
                             ((row == "ppm" || row == "mol/l") && channel != 0);
        return missing ? "NA" : "1.5";
    };
    View(text.Record(1) + text.Record(2));
    EXPECT_EQ(viewed.channelCount, 4);
    EXPECT_EQ(viewed.channelKind, (Kinds{Kind::ion, Kind::pH, Kind::redox}));
    EXPECT_EQ(view.graph.Values(1), 2);
}

TEST_F(ReportLoader, A_file_of_one_endless_line_is_one_line_and_can_be_stopped) {
    View(std::string(3'000'000, 'x'));
    EXPECT_EQ(viewed.pages.LineCount(0), 1U);
    EXPECT_EQ(viewed.pages.Shown(0, 0).size(), Mreport::longestLineText);
    platform.desktop.onEvents = [&] { loader.RequestStop(); };
    View(std::string(3'000'000, 'x'));
    EXPECT_EQ(viewed.pages.LineCount(0), 0U);
    EXPECT_EQ(LastStatus(), "Ready");
}

TEST_F(ReportLoader, A_file_that_shrinks_gives_blank_lines_and_says_so) {
    View(MeasurementText().File(30));
    EXPECT_FALSE(viewed.pages.Damaged());
    std::filesystem::resize_file(File(), 400);
    EXPECT_EQ(viewed.pages.Shown(0, 100), "");
    EXPECT_TRUE(viewed.pages.Damaged());
    loader.Redraw({30});
    EXPECT_EQ(view.graph.Values(1), 0);
}

TEST_F(ReportLoader, Updating_the_live_file_adds_what_was_recorded_since) {
    run.measuring = true;
    run.targetFile = File();
    const MeasurementText text;
    View(text.File(60));
    EXPECT_TRUE(viewed.viewingLiveFile);
    EXPECT_EQ(view.graph.draws, 1) << "a live file is drawn when it is read";
    EXPECT_EQ(view.recordsAtDrawing, std::vector<std::int32_t>{60});
    Append(text.Record(61) + text.Record(62));
    platform.dialogs.ExpectMessage("The list has been updated.", platform::style::information);
    loader.UpdateList();
    EXPECT_EQ(Range().recordsInPage, 62);
    EXPECT_EQ(view.scroll.value, 62);
    EXPECT_EQ(view.graph.labels.at(50), "62");
    EXPECT_TRUE(StatusShown("Please be patient, loading data..."));
    EXPECT_TRUE(StatusShown("Loading..."));
    EXPECT_EQ(LastStatus(), "Ready");
    EXPECT_TRUE(loader.Idle());
}

TEST_F(ReportLoader, A_last_line_that_was_incomplete_is_completed_by_an_update) {
    run.measuring = true;
    run.targetFile = File();
    const MeasurementText text;
    const std::string whole = text.File(5);
    for (const std::size_t missing : {1U, 40U, 160U, 300U, 565U, 570U, 590U}) {
        View(whole.substr(0, whole.size() - missing));
        Append(whole.substr(whole.size() - missing));
        platform.dialogs.ExpectMessage("The list has been updated.", platform::style::information);
        loader.UpdateList();
        EXPECT_EQ(viewed.pages.LineCount(0), 12U + 40U) << missing;
        EXPECT_EQ(Range().recordsInPage, 5) << missing;
        EXPECT_EQ(Mreport::CountLinesPerRecord(viewed.pages), 8) << missing;
    }
}

TEST_F(ReportLoader, A_new_run_under_the_same_name_is_noticed) {
    View(MeasurementText().File(60));
    EXPECT_FALSE(viewed.BegunAnew());
    Append(MeasurementText().Record(61));
    EXPECT_FALSE(viewed.BegunAnew());
    WriteBytes(File(), MeasurementText().Header());
    EXPECT_TRUE(viewed.BegunAnew());
}
