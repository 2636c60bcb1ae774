#include "screens/report/ReportScreen.h"

#include "files/LiveReport.h"

#include <QPlainTextEdit>

namespace {

/// A second viewer beside the one of the fixture.
class TwoReports : public ReportScreen {
protected:
    TwoReports() { Show(other); }

    void ViewOther(const MeasurementText& text, int records) {
        WriteBytes(File("other.4ch"), text.File(records));
        other.ViewFile(File("other.4ch"));
        Settle();
    }
    static QString Head(const Report& report) {
        return Find<QPlainTextEdit>(report, "txtHead").toPlainText();
    }

    Report other{run};
};

TEST_F(TwoReports, Neither_disturbs_the_other) {
    View(MeasurementText().File(120));
    Scroll().setValue(90);
    MeasurementText lake;
    lake.project = "Lake";
    ViewOther(lake, 4200);
    Find<QTabBar>(other, "Pages").setCurrentIndex(1);
    EXPECT_TRUE(form->windowTitle().endsWith("run.4ch"));
    EXPECT_TRUE(other.windowTitle().endsWith("other.4ch"));
    EXPECT_TRUE(Head(*form).startsWith("Project Name: River"));
    EXPECT_TRUE(Head(other).startsWith("Project Name: Lake"));
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 120);
    EXPECT_EQ(Element<LineListView>(other, "lstData", 1).LineText(0).left(11), "Record 4087");
    EXPECT_EQ(Graph().DataGetAmp(1, 50), 90.0);
    EXPECT_EQ(Find<GraphControl>(other, "graReport").DataGetAmp(1, 1), 4087.0);
    Scroll().setValue(100);
    EXPECT_EQ(Graph().DataGetAmp(1, 50), 100.0);
    EXPECT_EQ(Find<QScrollBar>(other, "HScroll").maximum(), 114);
    other.close();
    EXPECT_EQ(List(0).LineText(12), "Record 1\tAt\t14:05:33 07.Mar.2003");
    EXPECT_EQ(Viewed().path, File());
}

TEST_F(TwoReports, Another_file_opened_beside_it_does_not_end_the_following) {
    run.measuring = true;
    run.targetFile = File();
    View(MeasurementText().File(60));
    run.FollowTarget(true);
    ViewOther(MeasurementText(), 5);
    Append(MeasurementText().Record(61));
    run.RecordWritten();
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 61);
    EXPECT_EQ(Element<LineListView>(other, "lstData", 0).LineCount(), 12 + 8 * 5);
    other.close();
    Append(MeasurementText().Record(62));
    run.RecordWritten();
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 62);
}

} // namespace
