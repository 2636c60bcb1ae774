#include "screens/report/ReportScreen.h"

#include <QMenu>

namespace {

constexpr int recordsOfFirstPage = 4086;

} // namespace

TEST_F(ReportScreen, A_live_file_is_updated_by_hand) {
    run.measuring = true;
    run.targetFile = File();
    View(MeasurementText().File(60));
    Append(MeasurementText().Record(61));
    platform.dialogs.ExpectMessage("The list has been updated.", information);
    Choose(ReportMenus::updateList);
    EXPECT_EQ(Scroll().value(), 61);
    EXPECT_EQ(Graph().DataGetAmp(1, 50), 61.0);
}

TEST_F(ReportScreen, Automatic_update_hides_the_scroll_bar_until_the_run_ends) {
    run.measuring = true;
    run.targetFile = File();
    View(MeasurementText().File(60));
    Choose(ReportMenus::automaticUpdate);
    EXPECT_TRUE(Shown().autoUpdate);
    EXPECT_FALSE(Scroll().isVisible());
    EXPECT_EQ(Graph().DataGetAmp(1, 10), 60.0) << "the block of 50 that began with record 51";
    form->SetUpdateEnabled(false);
    EXPECT_FALSE(Shown().autoUpdate);
    EXPECT_TRUE(Scroll().isVisible());
    EXPECT_FALSE(Item(ReportMenus::automaticUpdate).isChecked());
}

TEST_F(ReportScreen, The_file_is_no_longer_live_when_the_measuring_page_is_left) {
    run.targetFile = File();
    run.measuring = true;
    View(MeasurementText().File(60));
    Choose(ReportMenus::automaticUpdate);
    run.measuring = false;
    QWidget other;
    Show(other);
    Show(*form);
    EXPECT_FALSE(Viewed().viewingLiveFile);
    EXPECT_FALSE(Shown().autoUpdate);
    EXPECT_TRUE(Item(ReportMenus::selectChannels).isEnabled());
    run.measuring = true;
    Show(other);
    Show(*form);
    EXPECT_TRUE(Item(ReportMenus::updateList).isEnabled());
}

TEST_F(ReportScreen, A_list_chosen_during_automatic_update_leaves_the_live_graph) {
    run.targetFile = File();
    run.measuring = true;
    View(MeasurementText().File(recordsOfFirstPage + 10));
    Choose(ReportMenus::automaticUpdate);
    EXPECT_EQ(Shown().graphPageIndex, 1);
    Find<QTabBar>(*form, "Pages").setCurrentIndex(0);
    EXPECT_EQ(Shown().shownPageIndex, 0);
    EXPECT_EQ(Shown().graphPageIndex, 1);
}

TEST_F(ReportScreen, Records_that_a_flush_brings_reach_the_open_viewer) {
    run.targetFile = File();
    run.measuring = true;
    View(MeasurementText().File(60));
    run.measuring = false; // the measuring page has been left
    Append(MeasurementText().Record(61));
    run.RecordWritten();
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 61);
    EXPECT_EQ(Scroll().maximum(), 61);
    EXPECT_FALSE(Viewed().viewingLiveFile);
}

TEST_F(ReportScreen, A_long_run_that_a_flush_brings_is_read_when_the_flush_has_ended) {
    run.targetFile = File();
    View(MeasurementText().File(60));
    std::string more;
    for (int record = 61; record <= 1000; ++record)
        more += MeasurementText().Record(record);
    Append(more);
    run.RecordWritten();
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 60);
    Settle();
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 1000);
    EXPECT_EQ(Scroll().maximum(), 1000);
}

TEST_F(ReportScreen, A_viewer_used_on_the_setup_page_follows_the_next_run_into_its_file) {
    run.targetFile = File();
    View(MeasurementText().File(60));
    EXPECT_FALSE(Viewed().viewingLiveFile);
    run.measuring = true;
    run.FollowTarget(true);
    Append(MeasurementText().Record(61));
    run.RecordWritten();
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 61);
    EXPECT_TRUE(Viewed().viewingLiveFile);
    EXPECT_TRUE(Item(ReportMenus::automaticUpdate).isEnabled());
}

TEST_F(ReportScreen, A_record_of_another_file_is_no_matter_of_the_viewer) {
    run.measuring = true;
    run.targetFile = File("other.4ch");
    View(MeasurementText().File(60));
    Append(MeasurementText().Record(61));
    run.RecordWritten();
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 60);
}

TEST_F(ReportScreen, The_selection_waits_for_the_end_of_an_automatic_run_and_says_so) {
    run.measuring = true;
    run.targetFile = File();
    View(MeasurementText().File(5));
    const auto& item = Item(ReportMenus::selectChannels);
    EXPECT_FALSE(item.isEnabled());
    EXPECT_EQ(item.toolTip(), "Not while records are written into this file");
    EXPECT_TRUE(Find<QMenu>(*form, "mnuView").toolTipsVisible());
    form->SetUpdateEnabled(false);
    EXPECT_TRUE(item.isEnabled());
    EXPECT_NE(item.toolTip(), "Not while records are written into this file");
}
