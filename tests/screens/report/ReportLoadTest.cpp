#include "screens/report/ReportScreen.h"

#include <QMenu>
#include <QTest>

TEST_F(ReportScreen, Escape_stops_a_load_and_a_second_file_is_refused_meanwhile) {
    platform.dialogs.ExpectMessage("Press ESC to stop current data loading.", information);
    int passes = 0;
    platform.desktop.onEvents = [&] {
        ++passes;
        if (passes == 20) {
            EXPECT_TRUE(Status().startsWith("Loading data, ")) << Status().toStdString();
            EXPECT_FALSE(form->close());
        }
        if (passes == 21)
            QTest::keyClick(form.get(), Qt::Key_Escape);
        QCoreApplication::processEvents();
    };
    View(MeasurementText().File(4000));
    EXPECT_EQ(Status(), "Ready");
    EXPECT_TRUE(form->isVisible());
    EXPECT_LT(Range().recordsInPage, 400);
    EXPECT_TRUE(form->IsIdle());
}

TEST_F(ReportScreen, Escape_reaches_the_load_from_every_control) {
    for (const char* name : {"txtHead", "TabStrip", "HScroll", "graReport", "txtInfo"}) {
        auto& control = Find<QWidget>(*form, name);
        int passes = 0;
        platform.desktop.onEvents = [&] {
            if (++passes == 20)
                QTest::keyClick(&control, Qt::Key_Escape);
            QCoreApplication::processEvents();
        };
        View(MeasurementText().File(1000));
        EXPECT_LT(Range().recordsInPage, 1000) << name;
    }
}

TEST_F(ReportScreen, Selecting_channels_and_printing_wait_for_the_end_of_a_load) {
    DuringLoad([this] {
        platform.dialogs.ExpectMessage("Cannot choose this option while data is loading.",
                                       information);
        Item(ReportMenus::selectChannels).setEnabled(true);
        Choose(ReportMenus::selectChannels);
        platform.dialogs.ExpectMessage("Press ESC to stop current data loading.", information);
        Choose(ReportMenus::openFile);
    });
    View(MeasurementText().File(500));
    EXPECT_EQ(Range().recordsInPage, 500);
}

TEST_F(ReportScreen, Automatic_update_waits_for_the_end_of_a_load) {
    run.measuring = true;
    run.targetFile = File();
    DuringLoad([this] {
        platform.dialogs.ExpectMessage("Cannot choose this option while data is loading.",
                                       information);
        Item(ReportMenus::automaticUpdate).trigger();
    });
    View(MeasurementText().File(500));
    EXPECT_EQ(List(0).LineCount(), 12 + 8 * 500);
    EXPECT_FALSE(Shown().autoUpdate);
    EXPECT_FALSE(Item(ReportMenus::automaticUpdate).isChecked());
}

TEST_F(ReportScreen, A_recent_file_chosen_during_a_load_is_refused_once) {
    View(MeasurementText().File(1), "one.4ch");
    DuringLoad([this] {
        platform.dialogs.ExpectMessage("Press ESC to stop current data loading.", information);
        auto& menu = Find<QMenu>(*form, "mnuRecent");
        Q_EMIT menu.aboutToShow();
        menu.actions().last()->trigger();
    });
    View(MeasurementText().File(500));
    EXPECT_EQ(Range().recordsInPage, 500);
}
