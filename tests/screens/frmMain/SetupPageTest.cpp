#include "screens/frmMain/MainScreenTest.h"

#include "base/Electrode.h"
#include "chem/Measure.h"
#include "platform/qt/Text.h"
#include "screens/SimultCalib/SimultCalib.h"
#include "screens/frmCalib/frmCalib.h"
#include "screens/frmSplash/frmSplash.h"
#include "settings/mWinInit.h"

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <numeric>

namespace {

std::vector<int> Range(int from, int to) {
    std::vector<int> indices(static_cast<std::size_t>(to - from + 1));
    std::iota(indices.begin(), indices.end(), from);
    return indices;
}

using SetupPageTest = MainScreenTest;

} // namespace

TEST_F(SetupPageTest, Has_the_control_arrays_with_exactly_their_indices) {
    Open();
    EXPECT_EQ(IndicesOf(*form, "cmdPage"), Range(0, 4));
    EXPECT_EQ(IndicesOf(*form, "txtEntry"), Range(0, 19));
    EXPECT_EQ(IndicesOf(*form, "cboEntry"), Range(0, 23));
    EXPECT_EQ(IndicesOf(*form, "chkSelect"), Range(0, 7));
    EXPECT_EQ(IndicesOf(*form, "cmdCalib"), Range(0, 7));
    EXPECT_EQ(IndicesOf(*form, "mnuHelp"), Range(0, 2));
    std::vector<int> labels = Range(16, 39);
    labels.push_back(47);
    const std::vector<int> others = Range(56, 71);
    labels.insert(labels.end(), others.begin(), others.end());
    EXPECT_EQ(IndicesOf(*form, "lblEntry"), labels);
}

TEST_F(SetupPageTest, Is_shown_first_with_the_title_of_the_channel_count) {
    Open();
    EXPECT_EQ(form->windowTitle(), "4-Channel Vantrel: Setup");
    EXPECT_EQ(Element<QPushButton>(*form, "cmdPage", frmMain::switchPage).text(), "&Measure >");
    form.reset();
    mWinInit::HardwareSettings.ChannelCount = 8;
    Open();
    EXPECT_EQ(form->windowTitle(), "8-Channel Vantrel: Setup");
}

TEST_F(SetupPageTest, Shows_the_rows_of_the_channels_in_use_only) {
    Open();
    EXPECT_TRUE(Element<QComboBox>(*form, "cboEntry", 3).isVisible());
    for (const char* control : {"cboEntry_4", "cboEntry_15", "cboEntry_20", "txtEntry_8",
                                "txtEntry_19", "chkSelect_4", "cmdCalib_7", "lblCalibDate_5"})
        EXPECT_FALSE(Find<QWidget>(*form, control).isVisible()) << control;
}

TEST_F(SetupPageTest, Shows_eight_rows_in_8_channel_mode) {
    mWinInit::HardwareSettings.ChannelCount = 8;
    Open();
    for (const char* control : {"cboEntry_7", "cboEntry_15", "cboEntry_23", "txtEntry_11",
                                "txtEntry_19", "chkSelect_7", "cmdCalib_7", "lblCalibDate_7"})
        EXPECT_TRUE(Find<QWidget>(*form, control).isVisibleTo(form.get())) << control;
}

TEST_F(SetupPageTest, Offers_the_electrodes_in_their_fixed_order_in_every_channel) {
    Open();
    for (std::size_t channel = 0; channel < 8; ++channel) {
        const auto& box = Element<QComboBox>(*form, "cboEntry", channel);
        ASSERT_EQ(box.count(), 27);
        EXPECT_EQ(box.itemText(0), "Ag");
        EXPECT_EQ(box.itemText(24), "H (pH)");
        EXPECT_EQ(box.itemText(25), "Redox");
        EXPECT_EQ(box.itemText(26), "None");
    }
}

TEST_F(SetupPageTest, Offers_manual_and_automatic_acquisition) {
    Open();
    const auto& box = Find<QComboBox>(*form, "cboAcqr");
    ASSERT_EQ(box.count(), 2);
    EXPECT_EQ(box.itemText(0), "Manual");
    EXPECT_EQ(box.itemText(1), "Automatic");
}

TEST_F(SetupPageTest, Shows_the_loaded_records) {
    mWinInit::HardwareSettings.AveragingForCalibration = 3;
    mWinInit::HardwareSettings.HardwarePortNumber = 7;
    mWinInit::ProjectInfo.MeasurementFileLocation = "/data/runs";
    Open();
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_0").text(), "3");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_1").text(), "1");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_2").text(), "River water");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_3").text(), "A. Analyst");
    EXPECT_EQ(Find<QDateEdit>(*form, "txtExperimentDate").text(), "07.Mar.2003");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtDataFolder").text(), "/data/runs");
    EXPECT_EQ(Find<QAbstractSpinBox>(*form, "txtPortNumber").text(), "7");
    EXPECT_EQ(Find<QComboBox>(*form, "cboEntry_0").currentText(), "Ca");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_4").text(), "CA-1");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtMolarMass_0").text(), "40.078");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtMolarMass_1").text(), "N/A");
    EXPECT_EQ(Find<QComboBox>(*form, "cboEntry_8").currentText(), "Ag/AgCl");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_12").text(), "R-1");
    EXPECT_EQ(Find<QComboBox>(*form, "cboEntry_17").currentText(), "2");
    EXPECT_EQ(Find<QComboBox>(*form, "cboEntry_18").currentText(), "None");
    EXPECT_EQ(Find<QLabel>(*form, "lblCalibDate_0").text(), "07.Mar.2003");
    EXPECT_EQ(Find<QLabel>(*form, "lblCalibDate_3").text(), "N/A");
}

TEST_F(SetupPageTest, A_channel_starts_as_selected_when_it_has_an_electrode) {
    Open();
    EXPECT_TRUE(Find<QCheckBox>(*form, "chkSelect_0").isChecked());
    EXPECT_TRUE(Find<QCheckBox>(*form, "chkSelect_2").isChecked());
    EXPECT_FALSE(Find<QCheckBox>(*form, "chkSelect_3").isChecked());
}

TEST_F(SetupPageTest, Names_the_port_in_use) {
    Open();
    EXPECT_EQ(Find<QGroupBox>(*form, "fraPort").title(), "Communications Port (COM1)");
    CommPort::TestPort(9600, 3);
    EXPECT_EQ(Find<QGroupBox>(*form, "fraPort").title(), "Communications Port (COM3)");
}

TEST_F(SetupPageTest, The_port_button_asks_for_the_port_screen) {
    Open();
    int requests = 0;
    QObject::connect(form.get(), &frmMain::PortSettingsRequested, [&requests] { ++requests; });
    Click(*form, "cmdPort");
    EXPECT_EQ(requests, 1);
}

TEST_F(SetupPageTest, An_absent_experiment_date_reads_NA_and_stays_absent) {
    mWinInit::ProjectInfo.ExperimentDate.clear();
    Open();
    EXPECT_EQ(Find<QDateEdit>(*form, "txtExperimentDate").text(), "N/A");
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(mWinInit::ProjectInfo.ExperimentDate, "");
}

TEST_F(SetupPageTest, Another_experiment_date_keeps_the_time_of_day) {
    Open();
    Find<QDateEdit>(*form, "txtExperimentDate").setDate(QDate(2024, 12, 24));
    EXPECT_EQ(mWinInit::ProjectInfo.ExperimentDate, "14:05:33 24.Dec.2024");
}

TEST_F(SetupPageTest,
       An_electrode_never_calibrated_here_starts_empty_with_its_built_in_molar_mass) {
    Open();
    Pick(*form, "cboEntry_0", "K");
    EXPECT_EQ(mWinInit::ChannelSetup[0].Electrode, "K");
    EXPECT_EQ(mWinInit::Calibration[0].PointCount, 0);
    EXPECT_EQ(Find<QComboBox>(*form, "cboEntry_0").currentText(), "K");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_4").text(), "");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtMolarMass_0").text(), "39.098");
    EXPECT_EQ(Find<QComboBox>(*form, "cboEntry_16").currentText(), "None");
    EXPECT_EQ(Find<QLabel>(*form, "lblCalibDate_0").text(), "N/A");
}

TEST_F(SetupPageTest, An_electrode_from_the_library_comes_back_with_its_calibration) {
    mWinInit::SaveCalibrationInfo("Ca", 0);
    Open();
    Pick(*form, "cboEntry_0", "K");
    Pick(*form, "cboEntry_0", "Ca");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_4").text(), "CA-1");
    EXPECT_EQ(Find<QComboBox>(*form, "cboEntry_16").currentText(), "1");
    EXPECT_EQ(Find<QLabel>(*form, "lblCalibDate_0").text(), "07.Mar.2003");
    EXPECT_EQ(mWinInit::Calibration[0].PointCount, 3);
}

TEST_F(SetupPageTest, The_same_electrode_chosen_again_loads_its_stored_calibration) {
    mWinInit::SaveCalibrationInfo("Ca", 0);
    mWinInit::Calibration[0] = {}; // as after a crash behind the calibration
    Open();
    Type(*form, "txtEntry_4", "CA-99");
    auto& electrodes = Find<QComboBox>(*form, "cboEntry_0");
    Q_EMIT electrodes.activated(electrodes.currentIndex());
    EXPECT_EQ(mWinInit::Calibration[0].PointCount, 3);
    EXPECT_EQ(Find<QLabel>(*form, "lblCalibDate_0").text(), "07.Mar.2003");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_4").text(), "CA-1");
}

TEST_F(SetupPageTest, An_electrode_set_by_an_assistive_tool_brings_its_own_calibration) {
    Open();
    auto& electrodes = Find<QComboBox>(*form, "cboEntry_0");
    electrodes.setCurrentIndex(electrodes.findText("K"));
    EXPECT_EQ(mWinInit::ChannelSetup[0].Electrode, "K");
    EXPECT_EQ(mWinInit::Calibration[0].PointCount, 0);
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_4").text(), "");
    EXPECT_EQ(Find<QLabel>(*form, "lblCalibDate_0").text(), "N/A");
}

TEST_F(SetupPageTest, Showing_an_electrode_does_not_choose_it) {
    mWinInit::Calibration[0].CalibrationDate = "09:30:00 24.Dec.2024";
    Open();
    EXPECT_EQ(Find<QLabel>(*form, "lblCalibDate_0").text(), "24.Dec.2024");
    EXPECT_EQ(mWinInit::Calibration[0].PointCount, 3);
}

TEST_F(SetupPageTest, An_unused_channel_that_gets_an_electrode_is_selected) {
    Open();
    Pick(*form, "cboEntry_3", "Na");
    EXPECT_TRUE(Find<QCheckBox>(*form, "chkSelect_3").isChecked());
}

TEST_F(SetupPageTest, Calibrating_takes_the_entries_and_opens_the_screen_over_the_page) {
    Open();
    Type(*form, "txtEntry_0", "5");
    Type(*form, "txtEntry_6", "RX-99");
    Click(*form, "cmdCalib", 2);
    const auto& screen = Find<frmCalib>(*form, "frmCalib");
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(Find<QLabel>(screen, "lblInfo_0").text(), "Channel 3");
    EXPECT_EQ(mWinInit::HardwareSettings.AveragingForCalibration, 5);
    EXPECT_EQ(mWinInit::ChannelSetup[2].SerialNo, "RX-99");
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

TEST_F(SetupPageTest, A_stored_calibration_shows_its_date) {
    Open();
    Click(*form, "cmdCalib", 1);
    mWinInit::Calibration[1].CalibrationDate = "09:30 24.Dec.2024";
    Q_EMIT Find<frmCalib>(*form, "frmCalib").CalibrationStored(1);
    EXPECT_EQ(Find<QLabel>(*form, "lblCalibDate_1").text(), "24.Dec.2024");
}

TEST_F(SetupPageTest, Two_equal_electrodes_open_the_simultaneous_calibration) {
    Open();
    Pick(*form, "cboEntry_3", "Ca");
    Click(*form, "cmdSimult");
    EXPECT_TRUE(Find<SimultCalib>(*form, "SimultCalib").isVisible());
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

TEST_F(SetupPageTest, An_averaging_number_given_while_calibrating_is_kept) {
    Open();
    Pick(*form, "cboEntry_3", "Ca");
    Click(*form, "cmdSimult");
    auto& calibration = Find<SimultCalib>(*form, "SimultCalib");
    platform.dialogs.ExpectInput("Input new averaging number for the calibration.", "2", "7");
    Click(calibration, "cmdSys", StepButtons::averagingButton);
    platform.dialogs.ExpectMessage("Calibration is not completed, quit anyway?",
                                   Style(platform::style::yesNo, platform::style::exclamation,
                                         platform::style::defaultButton2),
                                   platform::button::yes);
    calibration.close();
    Settle();
    EXPECT_EQ(Element<QLineEdit>(*form, "txtEntry", 0).text(), "7");
    Click(*form, "cmdCalib_0"); // stores what the page shows
    EXPECT_EQ(mWinInit::HardwareSettings.AveragingForCalibration, 7);
}

TEST_F(SetupPageTest, Without_two_equal_electrodes_there_is_no_simultaneous_calibration) {
    Open();
    platform.dialogs.ExpectMessage("Invalid selection of electrodes to do calibration.",
                                   information);
    Click(*form, "cmdSimult");
    EXPECT_EQ(form->findChild<SimultCalib*>(), nullptr);
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

TEST_F(SetupPageTest, Two_unused_channels_are_no_pair) {
    mWinInit::ChannelSetup[2].Electrode = "None";
    Open();
    platform.dialogs.ExpectMessage("Invalid selection of electrodes to do calibration.",
                                   information);
    Click(*form, "cmdSimult");
}

TEST_F(SetupPageTest, Alt_and_a_letter_move_the_focus) {
    Open();
    const std::array<std::pair<Qt::Key, const char*>, 5> moves = {{{Qt::Key_P, "cboEntry_0"},
                                                                   {Qt::Key_N, "txtEntry_0"},
                                                                   {Qt::Key_T, "cboEntry_8"},
                                                                   {Qt::Key_R, "txtEntry_12"},
                                                                   {Qt::Key_D, "txtEntry_2"}}};
    for (const auto& [key, box] : moves) {
        Element<QPushButton>(*form, "cmdPage", frmMain::leave).setFocus();
        QTest::keyClick(form.get(), key, Qt::AltModifier);
        EXPECT_TRUE(Find<QWidget>(*form, box).hasFocus()) << box;
    }
}

TEST_F(SetupPageTest, A_letter_without_Alt_moves_nothing) {
    Open();
    auto& button = Element<QPushButton>(*form, "cmdPage", frmMain::leave);
    button.setFocus();
    QTest::keyClick(form.get(), Qt::Key_P);
    EXPECT_TRUE(button.hasFocus());
}

TEST_F(SetupPageTest, Help_shows_the_text_of_the_setup_page) {
    Open();
    Choose(*form, "mnuHelp_0");
    ASSERT_EQ(platform.desktop.helpShown.size(), 1U);
    EXPECT_EQ(platform.desktop.helpShown[0], platform.places.ProgramFolder() / "SetupHlp.txt");
}

TEST_F(SetupPageTest, About_shows_the_splash_until_its_button_is_pressed) {
    Open();
    bool shown = false;
    QTimer::singleShot(0, [&shown] {
        auto* about = qobject_cast<frmSplash*>(QApplication::activeModalWidget());
        ASSERT_NE(about, nullptr);
        shown = true;
        Click(*about, "cmdCommand1");
    });
    Choose(*form, "mnuHelp_2");
    EXPECT_TRUE(shown);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(SetupPageTest, A_chosen_data_folder_is_where_the_save_dialog_starts) {
    Open();
    const auto folder = platform.folder.Path() / "m\xC3\xBCll";
    platform.dialogs.ExpectFileDialog([&folder](const platform::FileDialogRequest& request) {
        EXPECT_EQ(request.kind, platform::FileDialogRequest::Kind::folder);
        return folder;
    });
    Click(*form, "cmdBrowse");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtDataFolder").text(), Text::FromPath(folder));
    Click(*form, "cmdPage", frmMain::switchPage);
    ReadFrame(frame);
    platform.dialogs.ExpectFileDialog([&folder](const platform::FileDialogRequest& request) {
        EXPECT_EQ(request.initialFolder, folder);
        return std::nullopt;
    });
    Click(*form, "cmdPage", frmMain::run);
}

TEST_F(SetupPageTest, A_folder_that_the_settings_cannot_hold_is_refused) {
    Open();
    const std::string before = mWinInit::ProjectInfo.MeasurementFileLocation;
    platform.dialogs.ExpectFileDialog([this](const platform::FileDialogRequest&) {
        return platform.folder.Path() / "\xE6\xB8\xAC\xE5\xAE\x9A";
    });
    platform.dialogs.ExpectMessage("The name of this folder holds characters that the settings "
                                   "file cannot store. Please choose another folder.",
                                   exclamation);
    Click(*form, "cmdBrowse");
    EXPECT_EQ(mWinInit::ProjectInfo.MeasurementFileLocation, before);
    EXPECT_EQ(Find<QLineEdit>(*form, "txtDataFolder").text(), Text::ToQt(before));
}

TEST_F(SetupPageTest, A_click_into_a_prompt_selects_it_and_into_a_name_does_not) {
    mWinInit::ProjectInfo.ProjectName = mWinInit::projectPlaceholder;
    Open();
    for (const char* name : {"txtEntry_2", "txtEntry_3"}) {
        auto& box = Find<QLineEdit>(*form, name);
        Element<QPushButton>(*form, "cmdPage", frmMain::leave).setFocus();
        QTest::mouseClick(&box, Qt::LeftButton);
        Settle();
        EXPECT_EQ(box.selectedText(), box.text().startsWith("< Please") ? box.text() : "");
    }
}

TEST_F(SetupPageTest, Entry_boxes_refuse_what_the_files_cannot_hold) {
    Open();
    Type(*form, "txtEntry_2", QString::fromUtf8("Gr\xC3\xBC\xC3\x9F\xE6\xB8\xAC\x65"));
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_2").text(),
              QString::fromUtf8("Gr\xC3\xBC\xC3\x9F\x65"));
    Type(*form, "txtEntry_4", "A;1");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_4").text(), "A1");
}

TEST_F(SetupPageTest, Alt_D_goes_to_the_project_name_from_another_box_of_its_frame) {
    Open();
    Find<QLineEdit>(*form, "txtEntry_3").setFocus();
    Find<QComboBox>(*form, "cboEntry_0").setFocus();
    QTest::keyClick(form.get(), Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(Find<QLineEdit>(*form, "txtEntry_2").hasFocus());
}

TEST_F(SetupPageTest, The_wheel_changes_a_list_only_while_it_has_the_focus) {
    Open();
    auto& electrodes = Find<QComboBox>(*form, "cboEntry_0");
    const auto turn = [&electrodes] {
        QWheelEvent wheel({5, 5}, electrodes.mapToGlobal(QPointF(5, 5)), {}, {0, -120},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&electrodes, &wheel);
    };
    Element<QPushButton>(*form, "cmdPage", frmMain::leave).setFocus();
    const int before = electrodes.currentIndex();
    turn();
    EXPECT_EQ(electrodes.currentIndex(), before);
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_4").text(), "CA-1");
    electrodes.setFocus();
    turn();
    EXPECT_NE(electrodes.currentIndex(), before);
}
