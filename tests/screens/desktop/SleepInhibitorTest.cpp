// The program's part against services on real buses of the test's own: nothing of the computer's
// own is asked or kept awake.

#include "platform/qt/SleepInhibitor.h"

#include "platform/qt/QtDesktop.h"
#include "screens/desktop/PowerServices.h"
#include "screens/desktop/PrivateBus.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

class SleepInhibitor : public testing::Test {
protected:
    /// Before the program first looks for its buses: it finds them once.
    static void SetUpTestSuite() {
        systemBus = std::make_unique<PrivateBus>();
        sessionBus = std::make_unique<PrivateBus>();
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", systemBus->Address().toUtf8());
        qputenv("DBUS_SESSION_BUS_ADDRESS", sessionBus->Address().toUtf8());
        QCoreApplication::setApplicationName("vantrel");
    }
    static void TearDownTestSuite() {
        systemBus.reset();
        sessionBus.reset();
    }

    static void ExpectReleased(const PowerService& service) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return service.Held() == 0; }));
    }

    static std::unique_ptr<PrivateBus> systemBus;
    static std::unique_ptr<PrivateBus> sessionBus;
};

std::unique_ptr<PrivateBus> SleepInhibitor::systemBus;
std::unique_ptr<PrivateBus> SleepInhibitor::sessionBus;

TEST_F(SleepInhibitor, Without_any_service_there_is_no_lock) {
    EXPECT_EQ(platform::InhibitSleep("recording"), nullptr);
}

TEST_F(SleepInhibitor, The_login_manager_is_told_who_and_why_until_the_lock_ends) {
    const LoginManager manager(systemBus->Address());
    auto lock = platform::InhibitSleep("recording");
    ASSERT_NE(lock, nullptr);
    EXPECT_EQ(manager.Asked(), QStringList("sleep:idle|vantrel|recording|block"));
    EXPECT_EQ(manager.Held(), 1);
    lock.reset();
    ExpectReleased(manager);
}

TEST_F(SleepInhibitor, A_desktops_power_manager_gets_its_lock_back) {
    const PowerManagement manager(sessionBus->Address());
    auto lock = platform::InhibitSleep("recording");
    ASSERT_NE(lock, nullptr);
    EXPECT_EQ(manager.Asked(), QStringList("vantrel|recording"));
    EXPECT_EQ(manager.Held(), 1);
    lock.reset();
    ExpectReleased(manager);
}

TEST_F(SleepInhibitor, A_session_manager_is_asked_to_hold_suspending_off_and_not_the_screen) {
    const SessionManager manager(sessionBus->Address());
    auto lock = platform::InhibitSleep("recording");
    ASSERT_NE(lock, nullptr);
    EXPECT_EQ(manager.Asked(), QStringList("vantrel|0|recording|4"));
    lock.reset();
    ExpectReleased(manager);
}

TEST_F(SleepInhibitor, All_services_that_are_there_are_asked) {
    const LoginManager login(systemBus->Address());
    const PowerManagement power(sessionBus->Address());
    const SessionManager session(sessionBus->Address());
    auto lock = platform::InhibitSleep("recording");
    EXPECT_EQ(login.Held() + power.Held() + session.Held(), 3);
    lock.reset();
    ExpectReleased(login);
    ExpectReleased(power);
    ExpectReleased(session);
}

TEST_F(SleepInhibitor, One_refusal_does_not_keep_the_others_from_helping) {
    const LoginManager refuses(systemBus->Address(), Manner::refuses);
    EXPECT_EQ(platform::InhibitSleep("recording"), nullptr);
    const PowerManagement grants(sessionBus->Address());
    const auto lock = platform::InhibitSleep("recording");
    EXPECT_NE(lock, nullptr);
    EXPECT_EQ(refuses.Asked().size(), 2);
    EXPECT_EQ(grants.Held(), 1);
}

TEST_F(SleepInhibitor, A_service_that_hangs_holds_the_program_up_for_less_than_three_seconds) {
    const LoginManager hangs(systemBus->Address(), Manner::hangs);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(platform::InhibitSleep("recording"), nullptr);
    EXPECT_LT(timer.elapsed(), 3000);
    EXPECT_EQ(hangs.Asked().size(), 1);
}

TEST_F(SleepInhibitor, The_desktop_of_the_program_asks_them) {
    const LoginManager manager(systemBus->Address());
    platform::QtDesktop desktop;
    const auto lock = desktop.KeepAwake("Measurements are being recorded");
    ASSERT_NE(lock, nullptr);
    EXPECT_EQ(manager.Asked(),
              QStringList("sleep:idle|vantrel|Measurements are being recorded|block"));
}

} // namespace
