#include "screens/controls/StatusLine.h"
#include "screens/frmMain/MainScreenTest.h"

#include "settings/mWinInit.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <algorithm>

namespace {

/// The screen of a small laboratory computer, less what a desktop's panel takes.
constexpr QSize smallScreen(1024, 728);

class Appearance : public MainScreenTest {
protected:
    /// No part of the page is out of sight.
    void ExpectFits(const char* scrollArea) {
        form->resize(smallScreen);
        Settle();
        const auto& area = Find<QScrollArea>(*form, scrollArea);
        EXPECT_EQ(area.horizontalScrollBar()->maximum(), 0) << scrollArea;
        EXPECT_EQ(area.verticalScrollBar()->maximum(), 0) << scrollArea;
    }
};

/// What a screen reader says of a label.
QString Spoken(QLabel& label) {
    return QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name);
}

/// A dark palette for the life of the object.
class DarkPalette {
public:
    DarkPalette() : before_(QApplication::palette()) {
        QPalette dark(QColor(45, 45, 48), QColor(35, 35, 38));
        QApplication::setPalette(dark);
    }
    ~DarkPalette() { QApplication::setPalette(before_); }
    DarkPalette(const DarkPalette&) = delete;
    DarkPalette& operator=(const DarkPalette&) = delete;

private:
    QPalette before_;
};

} // namespace

TEST_F(Appearance, Every_control_has_an_accessible_name) {
    Open();
    EXPECT_EQ(ControlsWithoutName(*form), std::vector<std::string>());
}

TEST_F(Appearance, A_value_is_spoken_with_its_caption) {
    OpenReading();
    EXPECT_EQ(Spoken(Element<QLabel>(*form, "lblEntry", 16)), "Channel 1 potential in mV: 188.5");
    EXPECT_EQ(Spoken(Element<QLabel>(*form, "lblEntry", 33)),
              "Channel 2 concentration in ppm: blank");
    EXPECT_EQ(Spoken(Find<QLabel>(*form, "panTime")), "Clock: 14:05:33 07.Mar.2003");
    EXPECT_EQ(Spoken(Find<QLabel>(*form, "lblAverage")), "Averaging number for measurement: 1");
    EXPECT_EQ(Spoken(Find<QLabel>(*form, "lblRec")), "Records written: 0");
    EXPECT_EQ(Spoken(Find<QLabel>(*form, "lblElectrode_1")), "Channel 2 electrode: H (pH)");
    EXPECT_EQ(Spoken(Find<QLabel>(*form, "lblCalibDate_0")),
              "Channel 1 last calibration: 07.Mar.2003");
    ReadFrame({1000, 7458, 590, 7996, 2300, 9000, -123, 9000});
    EXPECT_EQ(Spoken(Element<QLabel>(*form, "lblEntry", 16)), "Channel 1 potential in mV: 100.0");
}

TEST_F(Appearance, No_two_controls_of_a_page_share_a_mnemonic) {
    mWinInit::HardwareSettings.ChannelCount = 8;
    Open();
    EXPECT_EQ(SharedMnemonics(*form), std::vector<std::string>());
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(SharedMnemonics(*form), std::vector<std::string>());
}

TEST_F(Appearance,
       The_trend_of_four_channels_is_seen_on_a_small_screen_however_the_page_is_reached) {
    Open();
    form->resize(1013, 690);
    Settle();
    Click(*form, "cmdPage", frmMain::switchPage);
    ReadFrame(frame);
    Settle();
    const auto& trend = Find<QWidget>(*form, "graTrend");
    EXPECT_TRUE(trend.isVisible());
    EXPECT_GE(trend.height(), 80);
    EXPECT_GE(Element<QLabel>(*form, "lblEntry", 16).height(), 32) << "the readings stay legible";
    ExpectFits("scrMeasure");
    EXPECT_TRUE(trend.isVisible());
    form->resize(1013, 520);
    Settle();
    EXPECT_FALSE(trend.isVisible());
    form->resize(1013, 690);
    Settle();
    EXPECT_TRUE(trend.isVisible());
}

TEST_F(Appearance, Both_pages_of_eight_channels_fit_a_small_screen) {
    mWinInit::HardwareSettings.ChannelCount = 8;
    Open();
    ExpectFits("scrSetup");
    Click(*form, "cmdPage", frmMain::switchPage);
    ExpectFits("scrMeasure");
}

TEST_F(Appearance, No_text_is_cut_on_either_page_whatever_the_font_and_the_windows_size) {
    const QFont usual = QApplication::font();
    const auto back = qScopeGuard([&usual] { QApplication::setFont(usual); });
    for (const int points : {9, 11}) {
        QApplication::setFont(QFont(usual.family(), points));
        Open();
        for (const QSize& size : {form->size(), smallScreen, smallScreen / 2}) {
            form->resize(size);
            Settle();
            EXPECT_EQ(CutTexts(*form), std::vector<std::string>()) << points << " points";
        }
        Click(*form, "cmdPage", frmMain::switchPage);
        ReadFrame({-9999, 7458, 5000, 7996, 2300, 9000, -123, 9000});
        for (const QSize& size : {form->size(), smallScreen, smallScreen / 2}) {
            form->resize(size);
            Settle();
            EXPECT_EQ(CutTexts(*form), std::vector<std::string>()) << points << " points";
        }
        form.reset();
    }
}

TEST_F(Appearance, The_window_itself_fits_a_small_screen_at_double_scale) {
    mWinInit::HardwareSettings.ChannelCount = 8;
    Open();
    ExpectFitsAtDoubleScale(*form);
    ExpectRestsInEverySize(*form);
    Click(*form, "cmdPage", frmMain::switchPage);
    ExpectFitsAtDoubleScale(*form);
    ExpectRestsInEverySize(*form);
}

TEST_F(Appearance, Nothing_moves_when_the_figures_change) {
    OpenReading();
    Settle();
    const auto& cell = Element<QLabel>(*form, "lblEntry", 18);
    const QRect before = cell.geometry();
    for (const int tenths : {-9999, 1, 0, 9999, -5}) {
        ReadFrame({tenths, 7458, 590, 7996, tenths, 9000, tenths, 9000});
        Settle();
        EXPECT_EQ(cell.geometry(), before) << tenths;
        EXPECT_LE(cell.fontMetrics().horizontalAdvance(cell.text()), cell.contentsRect().width());
    }
}

TEST_F(Appearance, Figures_grow_with_the_window_and_shrink_back) {
    OpenReading();
    form->resize(smallScreen);
    Settle();
    const auto& cell = Element<QLabel>(*form, "lblEntry", 18);
    const int small = cell.font().pointSize();
    form->resize(1900, 1000);
    Settle();
    EXPECT_GT(cell.font().pointSize(), small);
    EXPECT_LE(cell.fontMetrics().horizontalAdvance("-8.88E+88"), cell.contentsRect().width());
    form->resize(smallScreen);
    Settle();
    EXPECT_EQ(cell.font().pointSize(), small);
}

TEST_F(Appearance, Title_and_errors_are_readable_on_a_dark_palette) {
    const DarkPalette dark;
    OpenReading();
    const auto& title = Element<QLabel>(*form, "lblEntry", 47);
    for (int tick = 0; tick < 2; ++tick) {
        ReadFrame({1885, 7458, 5000, 7996, 2300, 9000, -123, 9000});
        EXPECT_GE(Contrast(title.palette().color(QPalette::WindowText),
                           form->palette().color(QPalette::Window)),
                  4.5);
    }
    const auto& error = Element<QLabel>(*form, "lblEntry", 33);
    EXPECT_EQ(error.text(), "Error");
    EXPECT_GE(Contrast(error.palette().color(QPalette::WindowText),
                       error.palette().color(QPalette::Base)),
              4.5);
}

TEST_F(Appearance, A_palette_changed_while_measuring_is_taken_up) {
    OpenReading();
    const DarkPalette dark;
    Settle(); // the form takes the palette
    Settle(); // then its controls
    const auto& cell = Element<QLabel>(*form, "lblEntry", 16);
    EXPECT_GE(
        Contrast(cell.palette().color(QPalette::WindowText), cell.palette().color(QPalette::Base)),
        4.5);
}

TEST_F(Appearance, A_status_without_room_ends_in_dots_and_is_told_whole_by_its_tool_tip) {
    Open();
    auto& line = Find<StatusLine>(*form, "statusbar");
    const auto& instrument = Find<QLabel>(*form, "lblLink");
    line.ShowText("last reading 14:05:33");
    EXPECT_EQ(line.ShownText(), "last reading 14:05:33");
    const QString longText = QString("Channel 2: outside its limits since 14:05:33; ").repeated(5);
    line.ShowText(longText);
    EXPECT_TRUE(line.ShownText().endsWith(QChar(0x2026))) << line.ShownText().toStdString();
    EXPECT_LT(line.fontMetrics().horizontalAdvance(line.ShownText()), instrument.x());
    EXPECT_EQ(line.currentMessage(), longText);
    EXPECT_EQ(line.toolTip(), longText);
}

TEST_F(Appearance, The_tab_key_reaches_every_control_of_the_setup_page) {
    Open();
    std::vector<QWidget*> reached;
    QWidget* first = form->focusWidget();
    QWidget* at = first;
    for (int step = 0; step < 200 && at != nullptr; ++step) {
        reached.push_back(at);
        QTest::keyClick(at, Qt::Key_Tab);
        at = form->focusWidget();
        if (at == first)
            break;
    }
    for (const char* name : {"txtEntry_0", "txtEntry_2", "txtExperimentDate", "cmdBrowse",
                             "txtPortNumber", "cmdPort", "chkSelect_0", "cboEntry_0", "txtEntry_4",
                             "txtMolarMass_3", "cmdCalib_3", "cmdSimult", "cmdPage_0", "cmdPage_3"})
        EXPECT_NE(std::find(reached.begin(), reached.end(), &Find<QWidget>(*form, name)),
                  reached.end())
            << name;
}
