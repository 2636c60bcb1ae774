// A user who has asked his desktop for less motion gets a title that stands still.

#include "screens/desktop/BusService.h"
#include "screens/program/Bench.h"

#include <QDBusError>
#include <QDBusVariant>
#include <QTest>

#include <set>

namespace {

/// The settings of a desktop as its portal tells them.
class DesktopPortal : public BusService {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    DesktopPortal(const QString& bus, bool lessMotion) : lessMotion_(lessMotion) {
        Offer(bus, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop");
    }
    ~DesktopPortal() override { Withdraw(); }

public Q_SLOTS:
    QDBusVariant Read(const QString& group, const QString& key) {
        if (group == "org.freedesktop.appearance" && key == "reduced-motion")
            return QDBusVariant(QVariant::fromValue(QDBusVariant(lessMotion_ ? 1U : 0U)));
        sendErrorReply(QDBusError::UnknownProperty, "no such setting");
        return {};
    }

private:
    bool lessMotion_;
};

class LessMotion : public Bench {
protected:
    LessMotion() {
        environment.remove("QT_SCALE_FACTOR"); // a place is looked up in a picture of the screen
    }

    /// Whether the title was seen red, and whether not, in the pictures of four seconds.
    std::set<bool> TitleSeenRed() const {
        const QRect place = reader.PlaceOf(reader.AwaitName("label", "Data Acquisition"));
        EXPECT_GT(place.width(), 0);
        std::set<bool> seen;
        for (int look = 0; look < 40; ++look) {
            seen.insert(HoldsRed(server.Picture().copy(place)));
            QTest::qWait(100);
        }
        return seen;
    }

private:
    static bool HoldsRed(const QImage& picture) {
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (const QRgb pixel = picture.pixel(x, y);
                    qRed(pixel) > 200 && qGreen(pixel) < 60 && qBlue(pixel) < 60)
                    return true;
        return false;
    }
};

} // namespace

TEST_F(LessMotion, The_title_blinks_between_red_and_black_while_the_instrument_is_read) {
    const DesktopPortal portal(bus.Address(), false);
    Start();
    Measure();
    EXPECT_EQ(TitleSeenRed(), (std::set<bool>{false, true}));
}

TEST_F(LessMotion, The_title_stays_red_where_the_desktop_asks_for_less_motion) {
    const DesktopPortal portal(bus.Address(), true);
    Start();
    Measure();
    EXPECT_EQ(TitleSeenRed(), std::set<bool>{true});
}

#include "LessMotionTest.moc"
