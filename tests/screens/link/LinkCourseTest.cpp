#include "CourseInstrument.h"
#include "LinkTest.h"

#include "support/FakeBoxes.h"

#include <QCoreApplication>

using namespace std::chrono_literals;

namespace {

/// The port screen and its link over a pseudo-terminal, while by a fixed seed anything happens:
/// starts and ends of reading, faults, frames of its own, time-outs, unplugging, also under a box.
class LinkCourse : public LinkTest {
protected:
    void SetUp() override {
        boxes.whileOpen = [this] { InBox(); };
        StartProgram();
    }
    void TearDown() override { form.reset(); }

    void InBox() {
        ASSERT_FALSE(std::exchange(boxOpen, true)) << "two boxes, " << Place();
        for (int i = 0; i < 4 && !calm; ++i)
            Step();
        boxOpen = false;
    }

    void Step() {
        ++steps;
        switch (instrument.Below(9)) {
        case 0:
            CommPort::BeginReading();
            break;
        case 1:
            CommPort::EndReading();
            break;
        case 2:
            instrument.manner = static_cast<Manner>(instrument.Below(instrument.manners));
            break;
        case 3:
            instrument.SendByItself();
            break;
        case 4:
            if (The<QTimer>("tmrTimeout").isActive())
                The<QTimer>("tmrTimeout").start(1ms);
            break;
        case 5:
            if (instrument.Below(4) == 0)
                instrument.Unplug();
            break;
        case 6:
            instrument.Plug();
            break;
        default:
            if (The<QTimer>("tmrTransferInterval").isActive())
                The<QTimer>("tmrTransferInterval").start(1ms);
        }
        QTest::qWait(static_cast<int>(instrument.Below(8)));
        Check();
    }

    void Check() {
        EXPECT_TRUE(!CommPort::Busy() || The<QTimer>("tmrTimeout").isActive() || boxOpen ||
                    TimeOutHasRun())
            << "busy without an end, " << Place();
        const auto& readings = CommPort::Readings();
        for (std::size_t slot = 1; slot < Frame::valueCount; ++slot)
            EXPECT_EQ(readings[slot], readings[0]) << "values of two frames, " << Place();
    }

    /// The time-out runs a pass of the event loop after its timer has ended.
    bool TimeOutHasRun() {
        QCoreApplication::processEvents();
        return !CommPort::Busy() || The<QTimer>("tmrTimeout").isActive();
    }

    /// Whatever has happened, a good instrument is read after a start.
    void CheckRecovery() {
        calm = true;
        instrument.manner = Manner::good;
        instrument.Plug();
        QTest::qWait(10); // what is on its way from earlier faults, and the boxes that it brings
        CommPort::Readings().fill(0);
        CommPort::BeginReading();
        EXPECT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }, 2s))
            << CommPort::StatusText() << ", " << Place();
        EXPECT_NE(CommPort::Readings()[0], 0.0F) << Place();
        EXPECT_FALSE(CommPort::HasFailed()) << Place();
        calm = false;
    }

    std::string Place() const {
        return "seed " + std::to_string(instrument.seed) + ", step " + std::to_string(steps);
    }

    using Manner = CourseInstrument::Manner;
    fake::Boxes boxes;
    fake::ServicesWithBoxes services{platform, boxes};
    CourseInstrument instrument{platform.places.ConfigurationFolder() / "ports" / "com1"};
    int steps = 0;
    bool boxOpen = false;
    bool calm = false; ///< boxes are answered and nothing else happens
};

TEST_F(LinkCourse, Whatever_happens_a_good_instrument_is_read_again_after_a_start) {
    const auto begin = std::chrono::steady_clock::now();
    int recoveries = 0;
    while (std::chrono::steady_clock::now() - begin < search::Length(8s) && !HasFailure()) {
        for (int i = 0; i < 30; ++i)
            Step();
        CheckRecovery();
        ++recoveries;
    }
    EXPECT_GT(recoveries, 5);
}

} // namespace
