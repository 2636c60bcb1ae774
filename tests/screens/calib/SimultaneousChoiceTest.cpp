#include "screens/SimultCalib/SimultCalib.h"
#include "screens/calib/CalibTest.h"
#include "screens/calibration/CalibrationTexts.h"
#include "settings/mWinInit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QStackedWidget>
#include <QTextCursor>
#include <QTextEdit>

namespace {

class SimultaneousChoice : public CalibTest {
protected:
    void Open() {
        form = std::make_unique<SimultCalib>();
        Show(*form);
    }

    QCheckBox& Box(std::size_t channel) const {
        return Element<QCheckBox>(*form, "chkSimult", channel);
    }

    QString Page() const {
        return Find<QStackedWidget>(*form, "picPage").currentWidget()->objectName();
    }

    std::unique_ptr<SimultCalib> form;
};

} // namespace

TEST_F(SimultaneousChoice, Every_control_of_the_arrays_is_there) {
    Open();
    EXPECT_EQ(IndicesOf(*form, "chkSimult"), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(IndicesOf(*form, "txtDat"), (std::vector<int>{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(IndicesOf(*form, "lblDat"), (std::vector<int>{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(IndicesOf(*form, "lblSig").size(), 48U);
    EXPECT_EQ(IndicesOf(*form, "cmdSys"), (std::vector<int>{0, 1, 2, 3, 4, 5, 6}));
    EXPECT_NE(form->findChild<QTimer*>("tmrRead"), nullptr);
}

TEST_F(SimultaneousChoice, The_instruments_channels_are_offered_with_their_electrodes) {
    mWinInit::ChannelSetup[clChannel].Electrode = "None";
    Open();
    EXPECT_EQ(Box(1).text(), "Channel 2: Ca");
    EXPECT_TRUE(Box(3).isVisible());
    EXPECT_FALSE(Box(3).isEnabled());
    EXPECT_FALSE(Box(4).isVisible());
}

TEST_F(SimultaneousChoice, The_instructions_stand_there_word_for_word) {
    Open();
    const auto& text = Find<QTextEdit>(*form, "RTXSimult");
    QString expected = QString::fromLatin1(CalibrationTexts::Instructions().c_str());
    expected.replace("\r\n", "\n"); // how a text control gives its line ends
    EXPECT_EQ(text.toPlainText(), expected);
    EXPECT_TRUE(text.isReadOnly());
}

TEST_F(SimultaneousChoice, The_three_phrases_alone_are_bold) {
    Open();
    QString bold;
    QTextCursor cursor(Find<QTextEdit>(*form, "RTXSimult").document());
    while (cursor.movePosition(QTextCursor::NextCharacter)) {
        const QChar character = cursor.document()->characterAt(cursor.position() - 1);
        const bool endsLine = character == QChar::ParagraphSeparator;
        if (!endsLine && cursor.charFormat().fontWeight() == QFont::Bold)
            bold += character;
    }
    EXPECT_EQ(bold.toStdString(),
              "For 'Simultaneous Calibration'"
              "You must then immerse the electrode(s)in the first calibrating solution"
              "When the reading of the electrode is stable");
}

TEST_F(SimultaneousChoice, Another_electrode_is_refused_at_once) {
    Open();
    Box(firstCa).click();
    platform.dialogs.ExpectMessage("This electrode is different to others, it cannot be used "
                                   "during this simultaneous calibration.",
                                   exclamation);
    Box(clChannel).click();
    EXPECT_FALSE(Box(clChannel).isChecked());
    EXPECT_TRUE(Box(firstCa).isChecked());
    Box(secondCa).click();
    EXPECT_TRUE(Box(secondCa).isChecked());
}

TEST_F(SimultaneousChoice, Names_that_differ_by_a_blank_are_different) {
    mWinInit::ChannelSetup[secondCa].Electrode = "Ca ";
    Open();
    Box(firstCa).click();
    platform.dialogs.ExpectMessage("This electrode is different to others, it cannot be used "
                                   "during this simultaneous calibration.",
                                   exclamation);
    Box(secondCa).click();
    EXPECT_FALSE(Box(secondCa).isChecked());
}

TEST_F(SimultaneousChoice, After_unticking_another_kind_can_be_chosen) {
    Open();
    Box(firstCa).click();
    Box(firstCa).click();
    Box(clChannel).click();
    EXPECT_TRUE(Box(clChannel).isChecked());
}

TEST_F(SimultaneousChoice, Fewer_than_two_channels_are_not_enough) {
    Open();
    EXPECT_EQ(Caption(*form, SimultCalib::nextButton), "&Next >");
    for (const bool oneTicked : {false, true}) {
        if (oneTicked)
            Box(firstCa).click();
        platform.dialogs.ExpectMessage(
            "At least two channels are needed for simultaneous calibration.", information);
        Click(*form, "cmdSys", SimultCalib::nextButton);
        EXPECT_EQ(Page(), "fraChoice");
    }
}

TEST_F(SimultaneousChoice, Exactly_two_channels_proceed_and_Back_returns) {
    Open();
    Box(firstCa).click();
    Box(secondCa).click();
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(Page(), "fraPoints");
    EXPECT_EQ(Caption(*form, SimultCalib::nextButton), "< &Back");
    EXPECT_EQ(FocusName(*form), "txtDat_0");
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(Page(), "fraChoice");
    EXPECT_EQ(Caption(*form, SimultCalib::nextButton), "&Next >");
    EXPECT_TRUE(Box(firstCa).isChecked());
}

TEST_F(SimultaneousChoice, Channels_beyond_the_instrument_do_not_count) {
    mWinInit::ChannelSetup[5].Electrode = "Ca";
    Open();
    Box(firstCa).click();
    Box(5).setChecked(true);
    platform.dialogs.ExpectMessage("At least two channels are needed for simultaneous calibration.",
                                   information);
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(Page(), "fraChoice");
}

TEST_F(SimultaneousChoice, Eight_channels_are_offered_by_the_larger_instrument) {
    mWinInit::HardwareSettings.ChannelCount = 8;
    for (const std::size_t channel : {4U, 5U, 6U, 7U})
        mWinInit::ChannelSetup[channel].Electrode = "Ca";
    Open();
    for (const std::size_t channel : {1U, 2U, 4U, 5U, 6U, 7U})
        Box(channel).click();
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_TRUE(Find<QLabel>(*form, "lblHead_7").isVisible());
    EXPECT_FALSE(Find<QLabel>(*form, "lblHead_0").isVisible());
}

TEST_F(SimultaneousChoice, A_tool_cannot_tick_a_channel_that_cannot_be_calibrated) {
    for (const std::size_t channel : {firstCa, clChannel})
        mWinInit::ChannelSetup[channel].Electrode = "None";
    Open();
    Box(firstCa).setChecked(true);
    Box(clChannel).setChecked(true);
    platform.dialogs.ExpectMessage("At least two channels are needed for simultaneous calibration.",
                                   information);
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(Page(), "fraChoice");
}
