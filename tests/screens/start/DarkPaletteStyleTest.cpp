#include "program/DarkPaletteStyle.h"

#include "screens/support/ScreenTest.h"

#include <QApplication>
#include <QCheckBox>
#include <QProxyStyle>
#include <QRadioButton>
#include <QStyle>

#include <gtest/gtest.h>

#include <algorithm>

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

    static QString Style() {
        const auto* const outlined = dynamic_cast<const QProxyStyle*>(QApplication::style());
        return (outlined != nullptr ? outlined->baseStyle() : QApplication::style())->name();
    }

    /// The outline is the colour that differs most from the window's, since the mark is empty.
    static double ContrastOfEmpty(QAbstractButton& mark) {
        mark.setMaximumWidth(mark.sizeHint().width());
        const QImage image = mark.grab().toImage();
        double most = 1;
        for (int x = 0; x < image.width(); ++x)
            most = std::max(most, Contrast(image.pixelColor(x, image.height() / 2),
                                           mark.palette().color(QPalette::Window)));
        return most;
    }

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

constexpr double leastContrastOfControls = 3; // WCAG 2.1, 1.4.11

TEST_F(DarkPaletteStyleTest, An_empty_box_is_seen_on_a_dark_palette) {
    Begin("fusion", dark);
    const DarkPaletteStyle style("windows");
    QCheckBox box;
    QRadioButton button;
    EXPECT_GE(ContrastOfEmpty(box), leastContrastOfControls);
    EXPECT_GE(ContrastOfEmpty(button), leastContrastOfControls);
}

TEST_F(DarkPaletteStyleTest, A_box_on_a_light_palette_looks_as_fusion_draws_it) {
    Begin("fusion", light);
    QCheckBox box("box");
    const QImage before = box.grab().toImage();
    const DarkPaletteStyle style("windows");
    EXPECT_EQ(box.grab().toImage(), before);
}

} // namespace
