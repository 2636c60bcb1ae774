#include "program/DarkPaletteStyle.h"

#include <QApplication>
#include <QStyle>
#include <gtest/gtest.h>

namespace {

const QPalette light(QColor(240, 240, 240));
const QPalette dark(QColor(45, 45, 48), QColor(35, 35, 38));

/// "windows" stands for the style that stays light: every system has it.
class DarkPaletteStyleTest : public testing::Test {
protected:
    DarkPaletteStyleTest() { Begin("windows", light); }

    ~DarkPaletteStyleTest() override { Begin(style_, palette_); }

    static void Begin(const QString& style, const QPalette& palette) {
        QApplication::setStyle(style);
        QApplication::setPalette(palette);
    }

    static QString Style() { return QApplication::style()->name(); }

private:
    QString style_ = QApplication::style()->name();
    QPalette palette_ = QApplication::palette();
};

TEST_F(DarkPaletteStyleTest, A_light_palette_keeps_the_style_of_the_system) {
    const DarkPaletteStyle style("windows");
    EXPECT_EQ(Style(), "windows");
}

TEST_F(DarkPaletteStyleTest, A_palette_that_is_dark_at_the_start_is_drawn_in_fusion) {
    QApplication::setPalette(dark);
    const DarkPaletteStyle style("windows");
    EXPECT_EQ(Style(), "fusion");
}

TEST_F(DarkPaletteStyleTest, The_style_follows_the_palette_while_the_program_runs) {
    const DarkPaletteStyle style("windows");
    QApplication::setPalette(dark);
    QCoreApplication::processEvents();
    EXPECT_EQ(Style(), "fusion");
    QApplication::setPalette(light);
    QCoreApplication::processEvents();
    EXPECT_EQ(Style(), "windows");
}

TEST_F(DarkPaletteStyleTest, A_style_that_was_asked_for_stays) {
    QApplication::setStyle("fusion");
    QApplication::setPalette(dark);
    const DarkPaletteStyle style("windows");
    QApplication::setPalette(light);
    QCoreApplication::processEvents();
    EXPECT_EQ(Style(), "fusion");
}

} // namespace
