#include "screens/frmCheck/frmCheck.h"
#include "screens/frmMain/MainScreenTest.h"
#include "settings/CheckChoices.h"
#include "support/NotedEntries.h"

#include <QComboBox>
#include <QLineEdit>

namespace {

class CheckForm : public MainScreenTest {
protected:
    static constexpr int readingsUntilSteady = 28;

    frmCheck& Open() {
        Click(*form, "cmdCheck");
        return Find<frmCheck>(*form, "frmCheck");
    }
    void ReadUntilSteady() {
        for (int i = 0; i < readingsUntilSteady; ++i)
            ReadFrame(frame);
    }
    static QString Shown(const frmCheck& check, const char* label) {
        return Find<QLabel>(check, label).text();
    }

    NotedEntries noted;
};

} // namespace

TEST_F(CheckForm, A_steady_reading_against_its_standard_passes_and_is_kept) {
    OpenReading();
    ReadUntilSteady();
    frmCheck& check = Open();
    EXPECT_EQ(Find<QComboBox>(check, "cboChannel").count(), 3) << "not the channel without one";
    EXPECT_EQ(Shown(check, "lblReading"), "31.6 ppm, steady");
    Type(check, "txtStandard", "31.62");
    Click(check, "cmdTake");
    EXPECT_EQ(Shown(check, "lblOutcome"), "Recovery 100.0 %: pass (90 to 110 %)");
    const auto entries = noted.All();
    ASSERT_FALSE(entries.empty());
    EXPECT_EQ(entries.back().kind, History::Kind::checked);
    EXPECT_EQ(entries.back().text, "31.6 ppm of 31.62. Recovery 100.0 %: pass (90 to 110 %)");
    EXPECT_EQ(entries.back().serialNo, "CA-1");
    EXPECT_EQ(entries.back().channel, 0);
}

TEST_F(CheckForm, Outside_its_bounds_it_fails_and_the_bounds_are_remembered) {
    OpenReading();
    ReadUntilSteady();
    frmCheck& check = Open();
    Find<QComboBox>(check, "cboChannel").setCurrentIndex(1);
    EXPECT_EQ(Shown(check, "lblReading"), "6.00 pH, steady");
    Type(check, "txtStandard", "7");
    Type(check, "txtLowest", "95");
    Type(check, "txtHighest", "105");
    Click(check, "cmdTake");
    EXPECT_EQ(Shown(check, "lblOutcome"), "Recovery 85.8 %: fail (95 to 105 %)"); // 6.003 of 7
    EXPECT_TRUE(Find<QLabel>(check, "lblOutcome").font().bold());
    EXPECT_EQ(mWinInit::LoadCheckBounds(), (CheckStandard::Bounds{95, 105}));
}

TEST_F(CheckForm, A_reading_that_is_not_steady_and_an_entry_that_is_no_number_are_refused) {
    OpenReading();
    frmCheck& check = Open();
    platform.dialogs.ExpectMessage("Input not correct.", information);
    Click(check, "cmdTake");
    Type(check, "txtStandard", "31.62");
    platform.dialogs.ExpectMessage(
        "The reading is not steady yet. Please wait until the channel says \"steady\".",
        information);
    Click(check, "cmdTake");
    EXPECT_EQ(Shown(check, "lblOutcome"), "");
    EXPECT_EQ(mWinInit::LoadCheckBounds(), CheckStandard::Bounds{});
}

TEST_F(CheckForm, Every_control_has_a_name_and_the_form_fits_onto_a_small_screen) {
    OpenReading();
    frmCheck& check = Open();
    EXPECT_EQ(ControlsWithoutName(check), std::vector<std::string>{});
    EXPECT_EQ(SharedMnemonics(check), std::vector<std::string>{});
    ExpectFitsAtDoubleScale(check);
    ExpectRestsInEverySize(check);
}
