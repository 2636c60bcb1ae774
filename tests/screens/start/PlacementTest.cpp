#include "screens/controls/Placement.h"
#include "screens/support/ScreenTest.h"

#include <QScreen>

namespace {

using Placement = ScreenTest;

TEST_F(Placement, A_form_is_centred_on_its_screen) {
    QWidget form;
    form.resize(300, 201);
    Mcommon::CenterForm(form);
    const QRect screen = form.screen()->availableGeometry();
    EXPECT_EQ(form.x(), screen.left() + (screen.width() - 300) / 2);
    EXPECT_EQ(form.y(), screen.top() + (screen.height() - 201) / 2);
}

TEST_F(Placement, A_control_is_centred_in_its_form_and_keeps_its_top) {
    QWidget form;
    form.resize(300, 200);
    QWidget control(&form);
    control.setGeometry(3, 17, 80, 20);
    Mcommon::CenterControl(control);
    EXPECT_EQ(control.geometry(), QRect(110, 17, 80, 20));
}

TEST_F(Placement, A_form_on_top_and_released_again_stays_where_and_as_large_as_it_is) {
    QWidget form;
    form.setGeometry(40, 50, 300, 200);
    Show(form);
    const QRect before = form.geometry();
    for (const bool onTop : {true, false}) {
        Mcommon::SetTopMost(form, onTop);
        EXPECT_EQ(form.windowFlags().testFlag(Qt::WindowStaysOnTopHint), onTop);
        EXPECT_EQ(form.geometry(), before);
        EXPECT_TRUE(form.isVisible());
    }
}

TEST_F(Placement, A_hidden_form_is_not_shown_by_being_put_on_top) {
    QWidget form;
    Mcommon::SetTopMost(form, true);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(Placement, A_position_off_every_screen_is_brought_onto_one) {
    QWidget form;
    form.resize(300, 200);
    const QRect screen = form.screen()->availableGeometry();
    Mcommon::MoveOntoScreen(form, screen.right() + 5000, -5000);
    EXPECT_TRUE(screen.contains(form.geometry()));
    Mcommon::MoveOntoScreen(form, screen.left() + 7, screen.top() + 9);
    EXPECT_EQ(form.pos(), screen.topLeft() + QPoint(7, 9));
}

TEST_F(Placement, A_form_that_the_desktop_placed_too_low_is_moved_up_and_no_further) {
    QWidget form;
    const QRect screen = form.screen()->availableGeometry();
    form.setGeometry(screen.left() + 40, screen.bottom() - 50, 300, 200);
    Show(form);
    const int left = form.x();
    Mcommon::KeepOnScreen(form);
    EXPECT_TRUE(screen.contains(form.frameGeometry()));
    EXPECT_EQ(form.x(), left);
    EXPECT_NEAR(form.frameGeometry().bottom(), screen.bottom(), 1);
}

TEST_F(Placement, A_form_that_stands_on_its_screen_is_left_where_the_desktop_placed_it) {
    QWidget form;
    form.setGeometry(40, 50, 300, 200);
    Show(form);
    Mcommon::KeepOnScreen(form);
    EXPECT_EQ(form.geometry(), QRect(40, 50, 300, 200));
}

TEST_F(Placement, A_form_larger_than_its_screen_is_made_to_fit_and_a_smaller_one_left_alone) {
    QWidget form;
    const QSize screen = form.screen()->availableSize();
    form.resize(screen.width() + 100, 200);
    Mcommon::FitOntoScreen(form);
    EXPECT_EQ(form.size(), QSize(screen.width(), 200));
    form.resize(300, 200);
    Mcommon::FitOntoScreen(form);
    EXPECT_EQ(form.size(), QSize(300, 200));
}

} // namespace
