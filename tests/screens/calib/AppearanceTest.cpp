#include "chem/Measure.h"
#include "screens/SimultCalib/SimultCalib.h"
#include "screens/calib/CalibTest.h"
#include "screens/frmCalib/frmCalib.h"
#include "settings/mWinInit.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QStyleFactory>

#include <cmath>

namespace {

QPalette DarkPalette() {
    QPalette dark(QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    return dark;
}

class Appearance : public CalibTest {
protected:
    Appearance() {
        mWinInit::ChannelSetup[pHChannel].TempSensor = 1;
        mWinInit::ChannelSetup[firstCa].TempSensor = 2;
        for (TempSensorCalibration& table : mWinInit::TempSensor)
            table = {.PointCount = 2, .Temperature = {10, 40}, .Reading = {10, 40}};
    }
    ~Appearance() override {
        QApplication::setPalette(QPalette());
        QApplication::setFont(usualFont);
    }

    const QFont usualFont = QApplication::font();

    /// Looks at the size, and keeps a picture for people in the folder that the environment names.
    void Picture(QWidget& form, const QString& name) const {
        Settle();
        EXPECT_EQ(CutTexts(form), std::vector<std::string>()) << name.toStdString();
        if (QApplication::font() == usualFont)
            ExpectFitsAtDoubleScale(form);
        else
            EXPECT_LE(form.minimumSizeHint().width(), 1024) << name.toStdString();
        const QString folder = qEnvironmentVariable("VANTREL_PICTURES");
        if (folder.isEmpty())
            return;
        EXPECT_TRUE(form.grab().save(QDir(folder).filePath(name + ".png")));
    }

    /// What a screen reader says of a control.
    static std::string Spoken(const QWidget& form, const QString& name) {
        return QAccessible::queryAccessibleInterface(&Find<QWidget>(form, name))
            ->text(QAccessible::Name)
            .toStdString();
    }

    /// The label that a screen reader says before a list: its name is the chosen entry.
    static std::string LabelOf(const QWidget& form, const QString& list) {
        const auto relations = QAccessible::queryAccessibleInterface(&Find<QWidget>(form, list))
                                   ->relations(QAccessible::Label);
        return relations.isEmpty() ? std::string()
                                   : relations[0].first->object()->objectName().toStdString();
    }

    std::unique_ptr<frmCalib> OpenSingle(std::size_t channel) {
        auto form = std::make_unique<frmCalib>(channel);
        Show(*form);
        return form;
    }

    void ReadPoint(const QWidget& form, const QString& entry, const QString& standard,
                   std::size_t button, double potential_mV) {
        Type(form, entry, standard);
        Click(form, "cmdSys", button);
        constexpr int readings = 30;
        for (int i = 0; i < readings; ++i) { // an electrode that settles
            platform.clock.monotonic += std::chrono::milliseconds(1500);
            ReadingArrives(form, potential_mV + 8 * std::exp(-0.4 * i));
        }
    }

    /// Goes through the single calibration with three buffers.
    void WalkSingle(const QString& suffix) {
        const auto form = OpenSingle(pHChannel);
        Pick(*form, "cboCalibPtrs", "3");
        ReadPoint(*form, "txtEntry_0", "4", frmCalib::mainButton, 177.5);
        Click(*form, "cmdSys", frmCalib::mainButton);
        ReadPoint(*form, "txtEntry_1", "7", frmCalib::mainButton, 2.1);
        Picture(*form, "calib-entry" + suffix);
        Click(*form, "cmdSys", frmCalib::mainButton);
        ReadPoint(*form, "txtEntry_2", "10", frmCalib::mainButton, -140.2);
        Click(*form, "cmdSys", frmCalib::mainButton);
        Click(*form, "cmdSys", frmCalib::mainButton);
        Picture(*form, "calib-summary" + suffix);
        form->close();
    }

    void WalkSimultaneous(const QString& suffix) {
        SimultCalib form;
        Show(form);
        for (const std::size_t channel : {firstCa, secondCa})
            Element<QCheckBox>(form, "chkSimult", channel).click();
        Picture(form, "simult-choice" + suffix);
        Click(form, "cmdSys", SimultCalib::nextButton);
        ReadPoint(form, "txtDat_0", "1", SimultCalib::mainButton, 100);
        Click(form, "cmdSys", SimultCalib::mainButton);
        ReadPoint(form, "txtDat_1", "10", SimultCalib::mainButton, 129);
        Picture(form, "simult-points" + suffix);
        Click(form, "cmdSys", SimultCalib::mainButton);
        Picture(form, "simult-summary" + suffix);
        Click(form, "cmdSys", SimultCalib::nextButton); // the second channel's
        form.close();
    }
};

} // namespace

TEST_F(Appearance, Both_forms_pass_through_all_steps_in_the_light_and_the_dark) {
    WalkSingle("-light");
    WalkSimultaneous("-light");
    QApplication::setPalette(DarkPalette());
    WalkSingle("-dark");
    WalkSimultaneous("-dark");
    EXPECT_EQ(Stored(pHChannel).PointCount, 3);
    EXPECT_EQ(Stored(secondCa).PointCount, 2);
}

TEST_F(Appearance, A_larger_font_cuts_nothing) {
    QFont larger = usualFont;
    larger.setPointSize(11);
    QApplication::setFont(larger);
    WalkSingle("-11pt");
    WalkSimultaneous("-11pt");
}

TEST_F(Appearance, Incorrect_data_is_shown_in_place_of_the_slopes) {
    const auto form = OpenSingle(firstCa);
    ReadPoint(*form, "txtEntry_0", "0", frmCalib::mainButton, 100);
    Click(*form, "cmdSys", frmCalib::mainButton);
    ReadPoint(*form, "txtEntry_1", "10", frmCalib::mainButton, 129);
    Click(*form, "cmdSys", frmCalib::mainButton);
    platform.dialogs.ExpectMessage("Incorrect calibration data encountered.", exclamation);
    Click(*form, "cmdSys", frmCalib::mainButton);
    Picture(*form, "calib-incorrect");
    EXPECT_TRUE(Find<QLabel>(*form, "lblIncorrect").isVisible());
    EXPECT_FALSE(Find<QWidget>(*form, "lstSlopes").isVisible());
}

TEST_F(Appearance, Every_control_that_a_user_reaches_has_a_name) {
    const auto single = OpenSingle(firstCa);
    EXPECT_EQ(ControlsWithoutName(*single), std::vector<std::string>());
    SimultCalib simultaneous;
    Show(simultaneous);
    EXPECT_EQ(ControlsWithoutName(simultaneous), std::vector<std::string>());
}

TEST_F(Appearance, No_two_controls_share_a_key) {
    const auto single = OpenSingle(firstCa);
    Pick(*single, "cboCalibPtrs", "6");
    EXPECT_EQ(SharedMnemonics(*single), std::vector<std::string>());
    SimultCalib simultaneous;
    Show(simultaneous);
    EXPECT_EQ(SharedMnemonics(simultaneous), std::vector<std::string>());
    for (const std::size_t channel : {firstCa, secondCa})
        Element<QCheckBox>(simultaneous, "chkSimult", channel).click();
    Click(simultaneous, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(SharedMnemonics(simultaneous), std::vector<std::string>());
}

TEST_F(Appearance, Both_forms_fit_the_smallest_screen) {
    mWinInit::HardwareSettings.ChannelCount = 8;
    for (auto& setup : mWinInit::ChannelSetup)
        setup.Electrode = "Ca";
    const auto single = OpenSingle(firstCa);
    Pick(*single, "cboCalibPtrs", "6");
    Settle();
    ExpectFitsAtDoubleScale(*single);
    ExpectRestsInEverySize(*single);
    SimultCalib simultaneous;
    Show(simultaneous);
    for (std::size_t channel = 0; channel < 8; ++channel)
        Element<QCheckBox>(simultaneous, "chkSimult", channel).click();
    Click(simultaneous, "cmdSys", SimultCalib::nextButton);
    Picture(simultaneous, "simult-eight");
    ExpectFitsAtDoubleScale(simultaneous);
    ExpectRestsInEverySize(simultaneous);
}

TEST_F(Appearance, A_screen_reader_says_each_value_with_its_caption) {
    const auto form = OpenSingle(pHChannel);
    EXPECT_EQ(Spoken(*form, "lblInfo_1"), "Electrode: H (pH)");
    EXPECT_EQ(Spoken(*form, "lblInfo_2"), "Last calibration date: None");
    EXPECT_EQ(Spoken(*form, "lblReading_0"), "Reading of point 1 in mV: blank");
    ReadPoint(*form, "txtEntry_0", "4", frmCalib::mainButton, 177.5);
    EXPECT_EQ(Spoken(*form, "lblReading_0"), "Reading of point 1 in mV: 177.5");
    EXPECT_EQ(Spoken(*form, "lblMark_0"), "State of point 1: steady");
    EXPECT_TRUE(Spoken(*form, "lblElapsed").ends_with(" since Read"));
    EXPECT_EQ(Spoken(*form, "lblTemperature"), "Temperature: 25.0 \u00B0C");
    EXPECT_EQ(Spoken(*form, "pltTrend"), "Trend of the reading");
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(Spoken(*form, "lblMark_0"), "State of point 1: recorded");
    EXPECT_EQ(LabelOf(*form, "cboCalibPtrs"), "lblPoints");
}

TEST_F(Appearance, A_screen_reader_says_each_value_of_a_simultaneous_calibration) {
    SimultCalib form;
    Show(form);
    for (const std::size_t channel : {firstCa, secondCa})
        Element<QCheckBox>(form, "chkSimult", channel).click();
    Click(form, "cmdSys", SimultCalib::nextButton);
    ReadPoint(form, "txtDat_0", "1", SimultCalib::mainButton, 100);
    EXPECT_EQ(Spoken(form, "lblSig_1"), "Reading of channel 2 at point 1 in mV: 100.0");
    EXPECT_EQ(Spoken(form, "lblSig_9"), "Reading of channel 2 at point 2 in mV: blank");
    EXPECT_EQ(Spoken(form, "lblMark_1"), "State of channel 2: steady");
    EXPECT_EQ(Spoken(form, "lblTemp_1"), "Temperature of channel 2 in \u00B0C: 20.0");
    EXPECT_EQ(Spoken(form, "lblTemp_2"), "Temperature of channel 3 in \u00B0C: blank");
    EXPECT_EQ(LabelOf(form, "cboUnits"), "lblUnits");
}
