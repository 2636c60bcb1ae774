// Writes that the system refuses to the program as it has been built: where a call fails in a test
// of the file seam, a signal comes with it here.

#include "screens/program/Bench.h"

#include <QTest>

#include <algorithm>

namespace {

class FailingWrites : public Bench {
protected:
    /// Presses "OK" in every box, the foremost one first.
    void CloseBoxes() const {
        constexpr int pressed_ms = 300; // a press lasts 100 ms
        const auto noneIsLeft = [this] {
            const auto controls = reader.Controls();
            const auto ok =
                std::ranges::find(controls.rbegin(), controls.rend(), "OK", &SpokenControl::name);
            if (ok == controls.rend())
                return true;
            reader.Press(*ok);
            QTest::qWait(pressed_ms);
            return false;
        };
        constexpr int longest_ms = 20000;
        EXPECT_TRUE(QTest::qWaitFor(noneIsLeft, longest_ms));
    }
};

} // namespace

TEST_F(FailingWrites, A_file_at_the_limit_that_its_user_has_set_is_told_as_a_full_disk) {
    AddSettings("[Measuring Choices]\nAutomatic=1\nPeriod=1\n");
    Start();
    Measure();
    Record("limited");
    reader.AwaitName("label", "Records written: [1-9]\\d*");
    LimitFilesTo(0);
    reader.AwaitName("label", "(?s).*Disk full.*");
    EXPECT_EQ(program.state(), QProcess::Running);
    LiftLimitOfFiles();
    CloseBoxes(); // the history tells of its own disk, too
    reader.AwaitName("label", "Recording: .* failed at .*: Disk full. Last record: [1-9].*");
}

TEST_F(FailingWrites, Messages_of_which_the_reader_has_gone_do_not_end_the_program) {
    environment.insert("QT_DEBUG_PLUGINS", "1"); // it tells of all that it loads
    program.setProcessChannelMode(QProcess::SeparateChannels);
    QObject::connect(&program, &QProcess::started, &program,
                     [this] { program.closeReadChannel(QProcess::StandardError); });
    Start();
    Measure();
}
