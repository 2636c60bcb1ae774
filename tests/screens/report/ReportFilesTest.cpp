#include "screens/report/ReportScreen.h"

#include <QMenu>

TEST_F(ReportScreen, Opening_goes_through_the_file_dialog) {
    WriteBytes(File("other.4ch"), MeasurementText().File(5));
    platform.dialogs.ExpectFileDialog([this](const platform::FileDialogRequest& request) {
        EXPECT_EQ(request.title, "Open File");
        return std::optional(File("other.4ch"));
    });
    Choose(ReportMenus::openFile);
    EXPECT_EQ(Range().recordsInPage, 5);
    EXPECT_EQ(Viewed().path, File("other.4ch"));
}

TEST_F(ReportScreen, A_file_that_cannot_be_opened_is_said_and_the_old_one_stays) {
    View(MeasurementText().File(5));
    platform.dialogs.ExpectMessage(
        "Unexpected error - Opening gone.4ch: File not found\nError location - Report - ViewFile",
        critical);
    form->ViewFile(File("gone.4ch"));
    EXPECT_EQ(Viewed().path, File());
    EXPECT_EQ(List(0).LineCount(), 12 + 40);
}

TEST_F(ReportScreen, Recent_files_are_offered_newest_first) {
    View(MeasurementText().File(1), "one.4ch");
    View(MeasurementText().File(2), "two&2.4ch");
    auto& menu = Find<QMenu>(*form, "mnuRecent");
    Q_EMIT menu.aboutToShow();
    ASSERT_EQ(menu.actions().size(), 2);
    EXPECT_TRUE(menu.actions()[0]->text().endsWith("two&&2.4ch"));
    menu.actions()[1]->trigger();
    EXPECT_EQ(Range().recordsInPage, 1);
}

TEST_F(ReportScreen, Opening_a_file_resets_update_and_view) {
    run.measuring = true;
    run.targetFile = File();
    View(MeasurementText().File(60));
    Choose(ReportMenus::automaticUpdate);
    Choose(ReportMenus::tableView);
    EXPECT_TRUE(Find<QWidget>(*form, "picMode").isVisible());
    View(MeasurementText().File(3), "other.4ch");
    EXPECT_FALSE(Shown().autoUpdate);
    EXPECT_FALSE(Item(ReportMenus::automaticUpdate).isChecked());
    EXPECT_TRUE(Item(ReportMenus::graphView).isChecked());
    EXPECT_FALSE(Item(ReportMenus::tableView).isChecked());
    EXPECT_TRUE(Scroll().isVisible());
}

TEST_F(ReportScreen, Closing_frees_the_file_and_remembers_the_place) {
    int closed = 0;
    QObject::connect(form.get(), &Report::Closed, form.get(), [&closed] { ++closed; });
    View(MeasurementText().File(3));
    form->move(40, 50);
    Choose(*form, "mnuBack");
    EXPECT_EQ(closed, 1);
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(Viewed().path.empty());
    EXPECT_EQ(platform.userStore.values.at("Report/Window/Left"), "40");
    EXPECT_EQ(platform.userStore.values.at("Report/Window/Top"), "50");
}

TEST_F(ReportScreen, Records_and_graph_are_exported) {
    View(MeasurementText().File(3));
    for (const char* name : {"out.csv", "graph.png", "graph.svg", "graph.pdf"}) {
        platform.dialogs.ExpectFileDialog(
            [this, name](const platform::FileDialogRequest&) { return std::optional(File(name)); });
        Choose(std::string(name) == "out.csv" ? ReportMenus::exportRecords
                                              : ReportMenus::exportGraph);
    }
    EXPECT_EQ(ReadBytes(File("out.csv")).substr(0, 20), "Record,Time,Comment,");
    EXPECT_EQ(ReadBytes(File("graph.png")).substr(1, 3), "PNG");
    EXPECT_NE(ReadBytes(File("graph.svg")).find("Ch. 1"), std::string::npos);
    EXPECT_EQ(ReadBytes(File("graph.pdf")).substr(0, 5), "%PDF-");
    EXPECT_EQ(Status(), "Ready: graph exported");
}

TEST_F(ReportScreen, A_file_that_shrinks_is_said_in_the_status) {
    View(MeasurementText().File(120));
    std::filesystem::resize_file(File(), 100);
    Scroll().setValue(120);
    EXPECT_EQ(Status(),
              "The file has become shorter since it was loaded; what is gone is shown blank.");
}

TEST_F(ReportScreen, The_status_tells_of_the_last_export) {
    View(MeasurementText().File(3));
    const auto exportAs = [this](const char* name, ReportMenus::FileItem item, std::size_t filter) {
        platform.dialogs.ExpectFileDialog(
            [this, name, filter](const platform::FileDialogRequest& request) {
                if (request.chosenFilter != nullptr)
                    *request.chosenFilter = filter;
                return std::optional(File(name));
            });
        Choose(item);
    };
    exportAs("out.csv", ReportMenus::exportRecords, 1);
    EXPECT_EQ(Status(), "Ready: 3 records exported");
    EXPECT_EQ(ReadBytes(File("out.csv")).substr(0, 9), "\xEF\xBB\xBFRecord");
    exportAs("graph.png", ReportMenus::exportGraph, 0);
    EXPECT_EQ(Status(), "Ready: graph exported");
    platform.dialogs.ExpectAnyMessage(critical);
    exportAs("no/out.csv", ReportMenus::exportRecords, 0);
    EXPECT_EQ(Status(), "Ready");
}
