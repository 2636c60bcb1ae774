#include "LinkTest.h"
#include "PtyPeer.h"

#include "support/FakeBoxes.h"

#include <QCoreApplication>

#include <cstdlib>
#include <random>

using namespace std::chrono_literals;

namespace {

/// How the instrument behaves when it is asked.
enum class Manner { good, inPieces, bad, half, silent, noisy };

/// The port screen and its link over a pseudo-terminal, while by a fixed seed anything happens:
/// starts and ends of reading, faults, frames of its own, time-outs, unplugging, also under a box.
class LinkCourse : public LinkTest {
protected:
    void SetUp() override {
        boxes.whileOpen = [this] { InBox(); };
        Plug();
        StartProgram();
    }
    void TearDown() override { form.reset(); }

    static std::chrono::seconds Length() {
        const char* const asked = std::getenv("VANTREL_COURSE_SECONDS");
        return std::chrono::seconds(asked ? std::atoi(asked) : 8);
    }

    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    }

    void Plug() {
        waiting.clear();
        peer = std::make_unique<PtyPeer>();
        peer->OnRequest([this] { Answer(); });
        LinkPort(1, peer->Device());
    }

    /// The name leads nowhere then: its old device may soon be that of another program's line.
    void Unplug() {
        LinkPort(1, "/dev/no such device");
        peer.reset();
    }

    Bytes NextFrame() {
        number = number % 9999 + 1;
        return FrameOf({number, number, number, number, number, number, number, number});
    }

    /// What is sent while the rest of a frame waits comes behind it.
    void Send(std::span<const std::uint8_t> bytes) {
        if (waiting.empty())
            peer->Send(bytes);
        else
            waiting.insert(waiting.end(), bytes.begin(), bytes.end());
    }

    void SendInPieces(const Bytes& bytes) {
        constexpr std::size_t first = 20;
        Send(std::span(bytes).first(first));
        const bool onItsWay = !waiting.empty();
        waiting.insert(waiting.end(), bytes.begin() + first, bytes.end());
        if (!onItsWay)
            QTimer::singleShot(3, form.get(), [this, plugged = peer.get()] {
                if (peer && peer.get() == plugged)
                    peer->Send(std::exchange(waiting, {}));
            });
    }

    void Answer() {
        const auto whole = NextFrame();
        switch (manner) {
        case Manner::good:
            Send(whole);
            break;
        case Manner::inPieces:
            SendInPieces(whole);
            break;
        case Manner::bad:
            Send(BadFrameOf({1, 1, 1, 1, 1, 1, 1, 1}));
            break;
        case Manner::half:
            Send(std::span(whole).first(1 + Below(47)));
            break;
        case Manner::silent:
            break;
        case Manner::noisy:
            Send(Bytes(1 + Below(60), 0x55));
            Send(whole);
        }
    }

    void InBox() {
        ASSERT_FALSE(std::exchange(boxOpen, true)) << "two boxes, " << Place();
        for (int i = 0; i < 4 && !calm; ++i)
            Step();
        boxOpen = false;
    }

    void Step() {
        ++steps;
        switch (Below(9)) {
        case 0:
            CommPort::BeginReading();
            break;
        case 1:
            CommPort::EndReading();
            break;
        case 2:
            manner = static_cast<Manner>(Below(6));
            break;
        case 3:
            if (peer)
                Send(NextFrame());
            break;
        case 4:
            if (The<QTimer>("tmrTimeout").isActive())
                The<QTimer>("tmrTimeout").start(1ms);
            break;
        case 5:
            if (Below(4) == 0)
                Unplug();
            break;
        case 6:
            if (!peer)
                Plug();
            break;
        default:
            if (The<QTimer>("tmrTransferInterval").isActive())
                The<QTimer>("tmrTransferInterval").start(1ms);
        }
        QTest::qWait(static_cast<int>(Below(8)));
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
        manner = Manner::good;
        if (!peer)
            Plug();
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
        return "seed " + std::to_string(seed) + ", step " + std::to_string(steps);
    }

    static constexpr unsigned seed = 6444;
    std::mt19937 random{seed};
    fake::Boxes boxes;
    fake::ServicesWithBoxes services{platform, boxes};
    std::unique_ptr<PtyPeer> peer;
    Bytes waiting; ///< the rest of a frame that is sent in pieces, and what comes behind it
    Manner manner = Manner::good;
    int number = 0;
    int steps = 0;
    bool boxOpen = false;
    bool calm = false; ///< boxes are answered and nothing else happens
};

TEST_F(LinkCourse, Whatever_happens_a_good_instrument_is_read_again_after_a_start) {
    const auto begin = std::chrono::steady_clock::now();
    int recoveries = 0;
    while (std::chrono::steady_clock::now() - begin < Length() && !HasFailure()) {
        for (int i = 0; i < 30; ++i)
            Step();
        CheckRecovery();
        ++recoveries;
    }
    EXPECT_GT(recoveries, 5);
}

} // namespace
