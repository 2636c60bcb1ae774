// The program under a real window manager. On the screen of a small laboratory computer what stands
// at the window's foot stays on the screen, whatever the desktop's font and scale; where there is
// room, nothing has to be scrolled to.

#include "screens/program/Bench.h"
#include "screens/program/WindowManager.h"

namespace {

class ManagedScreen : public Bench {
protected:
    explicit ManagedScreen(QSize size) : Bench(size), screen(size) {}

    /// The status bar's text and the buttons above it.
    void ExpectFootOnScreen() const {
        const SpokenControl link = reader.AwaitName("label", "COM1, .*");
        const SpokenControl leave = reader.AwaitName("push button", "Exit");
        for (const SpokenControl& control : {link, leave}) {
            const QRect place = reader.PlaceOf(control);
            EXPECT_FALSE(place.isEmpty()) << control.name.toStdString();
            EXPECT_TRUE(QRect({}, screen).contains(place))
                << control.name.toStdString() << " at " << place.x() << "," << place.y() << " of "
                << place.width() << "x" << place.height();
        }
    }

    void ExpectBothPagesOnScreen() {
        Start();
        ExpectFootOnScreen();
        Measure();
        ExpectFootOnScreen();
    }

    void ExpectNothingOutOfSight(const char* page) const {
        for (const SpokenControl& control : reader.Controls())
            EXPECT_NE(control.role, "scroll bar") << page;
    }

    QSize screen;
    WindowManager manager{environment};
};

class SmallScreen : public ManagedScreen {
protected:
    SmallScreen() : ManagedScreen({1024, 768}) {}
};

class LargeScreen : public ManagedScreen {
protected:
    LargeScreen() : ManagedScreen({1920, 1200}) { environment.remove("QT_SCALE_FACTOR"); }
};

} // namespace

TEST_F(SmallScreen, The_foot_of_both_pages_is_seen) {
    ExpectBothPagesOnScreen();
}

TEST_F(SmallScreen, The_foot_of_both_pages_is_seen_with_a_font_of_eleven_points) {
    environment.insert("QT_FONT_DPI", "118"); // 9 points look as 11 do at 96 dots an inch
    ExpectBothPagesOnScreen();
}

TEST_F(SmallScreen, The_foot_of_both_pages_is_seen_at_double_scale) {
    environment.insert("QT_SCALE_FACTOR", "2");
    screen /= 2; // places are told in points
    ExpectBothPagesOnScreen();
}

TEST_F(LargeScreen, At_first_both_pages_are_whole_with_a_large_font) {
    environment.insert("QT_FONT_DPI", "144"); // half as large again
    Start();
    ExpectNothingOutOfSight("setup");
    Measure();
    ExpectNothingOutOfSight("measuring");
}
