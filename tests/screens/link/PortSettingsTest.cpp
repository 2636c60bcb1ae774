#include "LinkTest.h"
#include "PtyPeer.h"
#include "screens/support/ScreenTest.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

/// COM5 and COM7 are there; COM5 is the stored one. The other numbers lead nowhere, whatever this
/// computer has.
class PortScreen : public LinkTest {
protected:
    void SetUp() override {
        for (int number = 1; number <= 16; ++number)
            LinkPort(number, "/dev/no such device");
        LinkPort(5, first.Device());
        LinkPort(7, second.Device());
        platform.userStore.values["CommPort/Startup/PortNumber"] = "5";
    }

    void Show() {
        if (!form)
            StartProgram();
        form->show();
    }

    QStringList Ports() {
        QStringList ports;
        for (int i = 0; i < The<QComboBox>("cboPort").count(); ++i)
            ports << The<QComboBox>("cboPort").itemText(i);
        return ports;
    }

    void Choose(const char* combo, const QString& text) {
        auto& box = The<QComboBox>(combo);
        const int index = box.findText(text);
        ASSERT_GE(index, 0) << text.toStdString();
        box.setCurrentIndex(index);
    }

    void Click(const char* button) { QTest::mouseClick(&The<QPushButton>(button), Qt::LeftButton); }

    QString Status() { return The<QLineEdit>("txtStatus").text(); }

    PtyPeer first;
    PtyPeer second;
};

TEST_F(PortScreen, Bears_its_name_and_has_every_control) {
    Show();
    EXPECT_EQ(form->objectName(), "frmPortSettings");
    EXPECT_TRUE(form->findChild<QComboBox*>("cboPort"));
    EXPECT_TRUE(form->findChild<QComboBox*>("cboBitRate"));
    EXPECT_TRUE(form->findChild<QGroupBox*>("fraPort"));
    EXPECT_TRUE(form->findChild<QGroupBox*>("fraBitRate"));
    EXPECT_TRUE(form->findChild<QPushButton*>("cmdOK"));
    EXPECT_TRUE(form->findChild<QPushButton*>("cmdCancel"));
    EXPECT_TRUE(form->findChild<QLineEdit*>("txtStatus"));
    EXPECT_TRUE(form->findChild<QTimer*>("tmrTimeout"));
    EXPECT_TRUE(form->findChild<QTimer*>("tmrTransferInterval"));
}

TEST_F(PortScreen, Offers_the_bit_rates_in_their_order_without_38400) {
    Show();
    QStringList rates;
    for (int i = 0; i < The<QComboBox>("cboBitRate").count(); ++i)
        rates << The<QComboBox>("cboBitRate").itemText(i);

    EXPECT_EQ(rates,
              (QStringList{"300", "1200", "2400", "4800", "9600", "19200", "57600", "115200"}));
}

TEST_F(PortScreen, Offers_the_ports_that_open_and_selects_the_stored_choice) {
    StartProgram(1200);
    Show();

    EXPECT_EQ(Ports(), (QStringList{"COM5", "COM7"}));
    EXPECT_EQ(The<QComboBox>("cboPort").currentText(), "COM5");
    EXPECT_EQ(The<QComboBox>("cboBitRate").currentText(), "1200");
}

TEST_F(PortScreen, Shows_the_device_behind_the_port) {
    Show();
    EXPECT_EQ(The<QLabel>("lblDevice").text(), "COM5: " + QString::fromStdString(first.Device()));
    Choose("cboPort", "COM7");
    EXPECT_EQ(The<QLabel>("lblDevice").text(), "COM7: " + QString::fromStdString(second.Device()));
}

TEST_F(PortScreen, A_successful_test_says_so_and_takes_the_choice_into_use) {
    Show();
    Choose("cboPort", "COM7");
    Choose("cboBitRate", "19200");

    Click("cmdOK");

    EXPECT_EQ(Status(), "The test on Comm7 is successful.");
    EXPECT_EQ(CommPort::PortNumber(), 7);
    EXPECT_EQ(CommPort::BitRate(), 19200);
    EXPECT_EQ(platform.userStore.values["CommPort/Startup/PortNumber"], "7");
}

TEST_F(PortScreen, A_choice_that_cannot_be_kept_is_in_use_and_a_box_says_why) {
    Show();
    Choose("cboPort", "COM7");
    platform.userStore.writeError = "Saving PortNumber: no permission";
    platform.dialogs.ExpectMessage(
        "The port settings hold for now, but could not be kept: Saving PortNumber: no permission",
        boxStyle);

    Click("cmdOK");

    EXPECT_EQ(Status(), "The test on Comm7 is successful.");
    EXPECT_EQ(CommPort::PortNumber(), 7);
    EXPECT_EQ(platform.userStore.values["CommPort/Startup/PortNumber"], "5");
}

TEST_F(PortScreen, Opened_again_it_does_not_show_the_result_of_an_earlier_test) {
    Show();
    Click("cmdOK");
    ASSERT_EQ(Status(), "The test on Comm5 is successful.");
    Click("cmdCancel");

    Show();

    EXPECT_EQ(Status(), "");
}

TEST_F(PortScreen, After_a_successful_test_the_instruments_answer_stands_below) {
    second.OnRequest([this] { second.Send(FrameOf({123, 7458, 0, 0, 0, 0, 0, 0})); });
    Show();
    Choose("cboPort", "COM7");

    Click("cmdOK");

    EXPECT_EQ(Status(), "The test on Comm7 is successful.");
    const auto& answer = The<QLabel>("lblAnswer");
    EXPECT_TRUE(WaitFor([&] { return answer.text() != "The instrument is asked..."; }));
    EXPECT_TRUE(answer.text().startsWith("The instrument answered: E1 12.3 mV, T1 745.8, E2 0.0"))
        << answer.text().toStdString();
}

TEST_F(PortScreen, Silence_after_a_successful_test_is_told_below) {
    Show();

    Click("cmdOK");

    EXPECT_TRUE(WaitFor([this] {
        return The<QLabel>("lblAnswer").text() ==
               "No answer in 3 s: check cable, power and bit rate.";
    }));
}

TEST_F(PortScreen, Find_Instrument_passes_a_held_port_over_and_chooses_the_one_that_answers) {
    const int holder = ::open(first.Device().c_str(), O_RDWR | O_NOCTTY);
    ASSERT_EQ(::flock(holder, LOCK_EX), 0);
    second.OnRequest([this] { second.Send(FrameOf({123, 7458, 0, 0, 0, 0, 0, 0})); });
    Show();

    Click("cmdFind");

    EXPECT_TRUE(WaitFor([] { return CommPort::PortNumber() == 7; }));
    EXPECT_EQ(Status(), "The instrument was found on COM7 at 9600 bit/s.");
    EXPECT_EQ(The<QComboBox>("cboPort").currentText(), "COM7");
    EXPECT_TRUE(first.Received().empty()) << "the other program's line was written to";
    ::close(holder);
}

TEST_F(PortScreen, The_search_is_ended_by_its_button_and_by_closing_the_screen) {
    Show();
    auto& find = The<QPushButton>("cmdFind");
    Click("cmdFind");
    EXPECT_EQ(find.text(), "Stop Searc&hing");
    EXPECT_FALSE(The<QPushButton>("cmdOK").isEnabled());
    EXPECT_EQ(Status(), "Trying COM5 at 9600 bit/s...");

    Click("cmdFind");
    EXPECT_EQ(Status(), "The search was stopped.");
    EXPECT_EQ(find.text(), "&Find Instrument");

    Click("cmdFind");
    Click("cmdCancel");
    EXPECT_EQ(Status(), "The search was stopped.");
    EXPECT_TRUE(CommPort::PortOK());
    EXPECT_EQ(CommPort::PortNumber(), 5);
}

TEST_F(PortScreen, A_choice_is_not_in_use_before_it_was_tested) {
    Show();
    Choose("cboPort", "COM7");
    Choose("cboBitRate", "300");

    Click("cmdCancel");

    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(CommPort::PortNumber(), 5);
    EXPECT_EQ(CommPort::BitRate(), 9600);
    Show();
    EXPECT_EQ(The<QComboBox>("cboPort").currentText(), "COM5");
    EXPECT_EQ(The<QComboBox>("cboBitRate").currentText(), "9600");
}

TEST_F(PortScreen, A_stored_port_that_is_away_is_not_replaced_by_another_unasked) {
    UnlinkPort(5);
    LinkPort(5, "/dev/no such device");
    Show();
    EXPECT_EQ(The<QComboBox>("cboPort").currentIndex(), -1);

    Click("cmdOK");

    EXPECT_EQ(Status(), "COM5 is unavailable. Please select a different port.");
}

TEST_F(PortScreen, A_stored_port_number_of_0_asks_for_a_port) {
    platform.userStore.values["CommPort/Startup/PortNumber"] = "0";
    Show();

    Click("cmdOK");

    EXPECT_EQ(Status(), "Please select a COM port.");
}

TEST_F(PortScreen, A_stored_bit_rate_outside_the_list_is_kept) {
    StartProgram(38400);
    Show();
    EXPECT_EQ(The<QComboBox>("cboBitRate").currentIndex(), -1);

    Click("cmdOK");

    EXPECT_EQ(Status(), "The test on Comm5 is successful.");
    EXPECT_EQ(CommPort::BitRate(), 38400);
}

TEST_F(PortScreen, A_port_that_another_program_holds_is_not_offered_and_the_reason_is_shown) {
    const int holder = ::open(second.Device().c_str(), O_RDWR | O_NOCTTY);
    ASSERT_EQ(::flock(holder, LOCK_EX), 0);
    Show();

    EXPECT_EQ(Ports(), QStringList{"COM5"});
    EXPECT_TRUE(The<QLabel>("lblProblems")
                    .text()
                    .startsWith("Opening COM7: " + QString::fromStdString(second.Device()) +
                                " is in use by another program: "));
    EXPECT_TRUE(The<QLabel>("lblProblems").isVisible());
    ::close(holder);
}

TEST_F(PortScreen, The_reason_why_a_port_is_held_is_seen_whole) {
    Show();
    const int holder = ::open(second.Device().c_str(), O_RDWR | O_NOCTTY);
    ASSERT_EQ(::flock(holder, LOCK_EX), 0);
    Click("cmdScan");
    QTest::qWait(50);

    const auto& reason = The<QLabel>("lblProblems");
    EXPECT_GE(reason.height(), reason.heightForWidth(reason.width()));
    EXPECT_GE(form->height(), form->layout()->heightForWidth(form->width()));
    ::close(holder);
}

TEST_F(PortScreen, Scanning_again_finds_a_device_that_was_plugged_in_and_keeps_the_choice) {
    Show();
    Choose("cboPort", "COM7");
    PtyPeer third;
    LinkPort(2, third.Device());

    Click("cmdScan");

    EXPECT_EQ(Ports(), (QStringList{"COM2", "COM5", "COM7"}));
    EXPECT_EQ(The<QComboBox>("cboPort").currentText(), "COM7");
}

TEST_F(PortScreen, A_device_that_vanished_since_the_scan_is_told_and_the_former_port_stays) {
    Show();
    Choose("cboPort", "COM7");
    second.Unplug();

    Click("cmdOK");

    EXPECT_TRUE(Status().startsWith("Opening COM7: ")) << Status().toStdString();
    EXPECT_EQ(CommPort::PortNumber(), 5);
    EXPECT_TRUE(CommPort::PortOK());
}

TEST_F(PortScreen, Offers_seconds_minutes_and_hours_and_begins_with_one_second) {
    Show();
    auto& unit = The<QComboBox>("cboIntervalUnit");
    ASSERT_EQ(unit.count(), 3);
    EXPECT_EQ(unit.itemText(0), "seconds");
    EXPECT_EQ(unit.itemText(1), "Minutes");
    EXPECT_EQ(unit.itemText(2), "Hour(s)");
    EXPECT_EQ(unit.currentText(), "seconds");
    EXPECT_EQ(The<QSpinBox>("txtInterval").value(), 1);
    EXPECT_EQ(The<QTimer>("tmrTransferInterval").interval(), 1000);
    EXPECT_FALSE(The<QTimer>("tmrTransferInterval").isActive());
}

TEST_F(PortScreen, A_changed_interval_holds_at_once_while_a_screen_reads) {
    Show();
    CommPort::BeginReading();
    The<QSpinBox>("txtInterval").setValue(5);
    EXPECT_EQ(The<QTimer>("tmrTransferInterval").interval(), 5000);

    QTest::keyClick(&The<QComboBox>("cboIntervalUnit"), Qt::Key_Down);
    EXPECT_EQ(The<QTimer>("tmrTransferInterval").interval(), 300000);
    CommPort::EndReading();
}

TEST_F(PortScreen, A_unit_that_a_tool_sets_holds_as_one_set_by_hand) {
    Show();
    CommPort::BeginReading();
    The<QComboBox>("cboIntervalUnit").setCurrentIndex(1);
    EXPECT_EQ(The<QTimer>("tmrTransferInterval").interval(), 60000);
    CommPort::EndReading();
}

TEST_F(PortScreen, Every_control_has_an_accessible_name_or_a_label_of_its_own) {
    Show();
    ExpectFitsAtDoubleScale(*form);
    for (const auto* control : form->findChildren<QWidget*>()) {
        const bool answers =
            qobject_cast<const QComboBox*>(control) || qobject_cast<const QSpinBox*>(control) ||
            qobject_cast<const QPushButton*>(control) || control->objectName() == "txtStatus";
        if (answers) {
            EXPECT_FALSE(control->accessibleName().isEmpty())
                << control->objectName().toStdString();
        }
    }
}

TEST_F(PortScreen, The_tab_key_goes_through_the_controls_in_the_order_of_use) {
    Show();
    form->activateWindow();
    ASSERT_TRUE(WaitFor([] { return QApplication::focusWidget() != nullptr; }));
    QStringList order;
    for (int i = 0; i < 8; ++i) {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }

    EXPECT_EQ(order, (QStringList{"cboPort", "cmdScan", "cboBitRate", "txtInterval",
                                  "cboIntervalUnit", "cmdOK", "cmdCancel", "txtStatus"}))
        << order.join(' ').toStdString();
}

TEST_F(PortScreen, Escape_closes_it_and_the_link_stays_open) {
    Show();
    QTest::keyClick(form.get(), Qt::Key_Escape);

    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(CommPort::PortOK());
}

TEST_F(PortScreen, Its_destruction_closes_the_port_and_detaches_the_link) {
    Show();
    form.reset();

    CommPort::BeginReading();

    EXPECT_EQ(CommPort::State(), LinkState::failed);
}

} // namespace
