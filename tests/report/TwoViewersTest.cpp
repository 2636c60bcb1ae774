#include "report/CsvExport.h"
#include "report/RecordSearch.h"
#include "report/Selection.h"
#include "report/support/LoadedReport.h"

namespace {

/// A second viewer beside the one of the fixture.
class TwoViewers : public LoadedReport {
protected:
    Mreport::ViewedFile otherViewed;
    Mreport::ShownGraph otherShown;
    RecordingView otherView{otherViewed, otherShown};
    Mreport::ReportLoader otherLoader{run, otherViewed, otherShown, otherView};

    std::filesystem::path OtherFile() const { return platform.folder.Path() / "other.8ch"; }

    static MeasurementText OtherText() {
        MeasurementText text;
        text.project = "Lake";
        text.electrodes = {"None", "Cl", "H (pH)", "None", "Ag", "None", "None", "None"};
        text.sensors = {"N/A", "3", "N/A", "N/A", "4", "N/A", "N/A", "N/A"};
        return text;
    }
    void ViewOther(int records, int first) {
        WriteBytes(OtherFile(), OtherText().File(records, first));
        otherLoader.ViewFile(OtherFile());
    }

    void ExpectFirstUndisturbed() {
        EXPECT_EQ(viewed.path, File());
        EXPECT_EQ(viewed.header.projectName, "River");
        EXPECT_EQ(viewed.channelCount, 4);
        EXPECT_EQ(viewed.LastPageIndex(), 0);
        EXPECT_EQ(Range().recordsInPage, 120);
        EXPECT_EQ(Mreport::Series(viewed, shown), (std::vector<int>{1, 2, 3}));
        EXPECT_EQ(view.caption, File());
        EXPECT_EQ(view.tabs.size(), 1U);
        EXPECT_EQ(view.graph.LeftTitle(), "mV");
        EXPECT_EQ(view.graph.labels.at(1), "41");
        EXPECT_EQ(view.graph.labels.at(50), "90");
    }
};

TEST_F(TwoViewers, A_second_file_leaves_the_first_one_as_it_was) {
    View(MeasurementText().File(120));
    loader.Redraw({90});
    ViewOther(5000, 1000);
    otherLoader.SelectPage(1);
    otherShown.unitCode = Quantity::celsius;
    otherLoader.Redraw({60});
    ExpectFirstUndisturbed();
    EXPECT_EQ(otherViewed.header.projectName, "Lake");
    EXPECT_EQ(otherViewed.channelCount, 8);
    EXPECT_EQ(otherViewed.LastPageIndex(), 1);
    EXPECT_EQ(Mreport::Series(otherViewed, otherShown), (std::vector<int>{3, 4}));
    loader.Redraw({90});
    EXPECT_EQ(otherView.graph.LeftTitle(), "\xB0"
                                           "C");
    EXPECT_EQ(otherShown.graphPageIndex, 1);
}

TEST_F(TwoViewers, A_file_loaded_within_the_load_of_another_disturbs_neither) {
    bool opened = false;
    platform.desktop.onEvents = [&] {
        if (!std::exchange(opened, true))
            ViewOther(60, 500);
    };
    View(MeasurementText().File(120));
    ASSERT_TRUE(opened);
    loader.Redraw({90});
    ExpectFirstUndisturbed();
    EXPECT_EQ(Mreport::GraphRange(otherViewed, otherShown).pageFirstRecordOffset, 499);
    EXPECT_EQ(otherView.graph.Values(1), 50);
}

TEST_F(TwoViewers, Search_selection_and_export_take_their_own_file) {
    View(MeasurementText().File(20));
    ViewOther(20, 1000);
    Mreport::RecordSearch search(viewed);
    EXPECT_TRUE(search.Find({12}));
    EXPECT_FALSE(search.Find({1012}));
    Mreport::RecordSearch otherSearch(otherViewed);
    EXPECT_TRUE(otherSearch.Find({1012}));

    Mreport::Selection selection(otherViewed, otherShown);
    selection.ChooseUnit(Quantity::pH);
    selection.Accept(otherShown);
    EXPECT_EQ(Mreport::Series(otherViewed, otherShown), std::vector<int>{3});
    EXPECT_EQ(Mreport::Series(viewed, shown), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(shown.unitCode, Quantity::mV);

    const auto target = platform.folder.Path() / "out.csv";
    EXPECT_EQ(Mreport::ExportCsv(viewed, target, Mreport::CsvReader::any, [] { return false; }),
              20);
    EXPECT_NE(ReadBytes(target).find("\r\n20,2003-03-07T14:05:33,"), std::string::npos);
    EXPECT_EQ(ReadBytes(target).find("\r\n1012,"), std::string::npos);
}

TEST_F(TwoViewers, One_follows_the_recording_while_the_other_stays) {
    run.measuring = true;
    run.targetFile = File();
    const MeasurementText text;
    View(text.File(60));
    loader.SetAutoUpdate(true);
    ViewOther(60, 500);
    Append(text.Record(61));
    loader.LiveRecord();
    otherLoader.LiveRecord();
    EXPECT_EQ(Range().recordsInPage, 61);
    EXPECT_EQ(view.graph.Values(1), 11);
    EXPECT_TRUE(shown.autoUpdate);
    EXPECT_FALSE(otherShown.autoUpdate);
    EXPECT_FALSE(otherViewed.viewingLiveFile);
    EXPECT_EQ(Mreport::GraphRange(otherViewed, otherShown).recordsInPage, 60);
}

} // namespace
