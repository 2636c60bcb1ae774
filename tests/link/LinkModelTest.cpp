#include "link/Link.h"

#include "base/RunTimeError.h"
#include "support/FakeBoxes.h"
#include "support/FakeLink.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <optional>
#include <random>
#include <set>
#include <sstream>

// Anything may happen to the link at any time, also while a message is open. A machine tries long
// random courses of it, and holds the link against a model that is small enough to be believed. A
// course that breaks a rule is made as short as it can be before it is told.

namespace {

using fake::Boxes;
using Bytes = std::vector<std::uint8_t>;

enum class Act {
    begin,      ///< a screen starts to read
    end,        ///< no screen reads any more
    tick,       ///< the interval has passed
    timeOut,    ///< three seconds have passed
    answer,     ///< the instrument answers a request
    sendItself, ///< it sends a frame by itself
    sendBad,    ///< it sends 48 bytes without EOT
    sendHalf,   ///< it stops in the middle of a frame
    noise,      ///< stray bytes between two frames
    flow,       ///< some bytes pass the line
    flowAll,    ///< all of them do
    unplug,
    replug,
    close,     ///< the message is answered; without one, nothing
    beginGoOn, ///< a screen starts to read that goes on after a failure
    giveUp,    ///< it does so no longer
};

constexpr std::array actNames = {
    "begin", "end",  "tick",    "timeOut", "answer", "sendItself", "sendBad",   "sendHalf",
    "noise", "flow", "flowAll", "unplug",  "replug", "close",      "beginGoOn", "giveUp"};

struct Step {
    Act act;
    std::size_t size; ///< bytes, for those that have a number of them
};

using Course = std::vector<Step>;

std::string Text(const Course& course) {
    std::ostringstream text;
    for (const auto& step : course)
        text << "\n  " << actNames[static_cast<std::size_t>(step.act)] << ' ' << step.size;
    return text.str();
}

/// A rule that the link has broken.
struct Broken {
    std::string rule;
};

void Require(bool holds, const char* rule) {
    if (!holds)
        throw Broken{rule};
}

/// One course, from the program's start on.
class Trial {
public:
    Trial(Boxes& boxes, const Course& course) : course_(course) {
        boxes.whileOpen = [this] { InBox(); };
        CommPort::Controls controls;
        controls.MSComm1 = &serial_;
        controls.tmrTimeout = &timeout_;
        controls.tmrTransferInterval = &interval_;
        link_.Attach(std::move(controls));
        link_.Initialize();
    }
    ~Trial() { link_.Detach(); }
    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;

    /// Throws Broken.
    void Run() {
        while (next_ < course_.size()) {
            Do(course_[next_++]);
            Check();
        }
        CheckRecovery();
    }

private:
    void InBox() {
        Require(!std::exchange(boxOpen_, true), "two boxes are open");
        Require(disturbed_, "a box opened though the instrument was in order");
        Require(!goesOn_ || !reading_, "a box for a screen that goes on");
        ++boxesSinceBegin_;
        Require(boxesSinceBegin_ <= 1 || !reading_, "a second box without a new start");
        while (next_ < course_.size()) {
            const auto step = course_[next_++];
            if (step.act == Act::close)
                break;
            Do(step);
            Check();
        }
        boxOpen_ = false;
        if (std::exchange(begunInBox_, false))
            Begun();
    }

    void Do(const Step& step) {
        switch (step.act) {
        case Act::begin:
        case Act::beginGoOn:
            Choose(step.act == Act::beginGoOn);
            Begin();
            break;
        case Act::giveUp:
            Choose(false);
            break;
        case Act::end:
            reading_ = begunInBox_ = false;
            link_.transfer.EndReading();
            break;
        case Act::tick:
            Tick();
            break;
        case Act::timeOut:
            if (timeout_.Enabled())
                TimeOut();
            break;
        case Act::unplug:
            disturbed_ = true;
            line_.clear();
            serial_.Unplug();
            break;
        case Act::replug:
            serial_.ports.insert(1);
            break;
        case Act::close:
            break;
        default:
            Send(step);
        }
    }

    void Send(const Step& step) {
        switch (step.act) {
        case Act::answer:
            if (std::exchange(asked_, false))
                Enqueue(NextFrame());
            break;
        case Act::sendItself:
            Enqueue(NextFrame());
            break;
        case Act::sendBad:
            disturbed_ = true;
            Enqueue(BadFrameOf({1, 2, 3, 4, 5, 6, 7, 8}));
            break;
        case Act::sendHalf: {
            disturbed_ = true;
            const auto whole = FrameOf({1, 2, 3, 4, 5, 6, 7, 8});
            Enqueue(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(step.size)));
            break;
        }
        case Act::noise:
            disturbed_ = true;
            Enqueue(Bytes(step.size, 0x55));
            break;
        default:
            Flow(step.act == Act::flowAll ? line_.size() : std::min(step.size, line_.size()));
        }
    }

    void Choose(bool goOn) {
        goesOn_ = goOn;
        link_.transfer.SetAfterFailure(goOn ? Transfer::AfterFailure::goOn
                                            : Transfer::AfterFailure::stop);
    }

    void Begin() {
        reading_ = true;
        if (boxOpen_)
            begunInBox_ = true;
        else
            Begun();
        const auto requests = serial_.written.size();
        link_.transfer.BeginReading();
        if (!boxOpen_) {
            asked_ = serial_.written.size() > requests;
            Require(asked_ == serial_.ports.contains(1), "a start does not ask at once");
        }
    }

    void Begun() {
        boxesSinceBegin_ = 0;
        disturbed_ = !line_.empty() && disturbed_; // what is still on the line comes yet
        disturbed_ = disturbed_ || !serial_.ports.contains(1);
    }

    void Tick() {
        const auto requests = serial_.written.size();
        const bool mayAsk = reading_ && !boxOpen_ && !link_.transfer.HasFailed();
        if (interval_.Enabled())
            link_.transfer.tmrTransferInterval_Timer();
        const bool asks = serial_.written.size() > requests;
        Require(!asks || mayAsk, "a request though nothing may be asked");
        asked_ = asked_ || asks;
    }

    void TimeOut() {
        disturbed_ = true;
        const bool fails = reading_ && !boxOpen_;
        const auto frames = decoded_;
        link_.transfer.tmrTimeout_Timer();
        Require(frames != decoded_ || !fails || link_.transfer.HasFailed() ||
                    link_.transfer.IsLost() ||
                    link_.transfer.Outcome() == CommPort::LinkState::answered,
                "a time-out without a failure");
    }

    void Enqueue(const Bytes& bytes) {
        constexpr std::size_t mostOnLine = 2000;
        if (serial_.ports.contains(1) && line_.size() < mostOnLine)
            line_.insert(line_.end(), bytes.begin(), bytes.end());
    }

    Bytes NextFrame() {
        number_ = number_ % 9999 + 1;
        sent_.insert(static_cast<float>(number_ / 10.0));
        return FrameOf({number_, number_, number_, number_, number_, number_, number_, number_});
    }

    void Flow(std::size_t count) {
        const Bytes bytes(line_.begin(), line_.begin() + static_cast<std::ptrdiff_t>(count));
        line_.erase(line_.begin(), line_.begin() + static_cast<std::ptrdiff_t>(count));
        if (!bytes.empty())
            serial_.Arrive(bytes);
    }

    void Check() {
        const auto& transfer = link_.transfer;
        Require(!transfer.Busy() || timeout_.Enabled() || boxOpen_, "busy without an end");
        Require(!transfer.TimedOut, "a time-out that nobody judges");
        Require(!boxOpen_ || transfer.Outcome() == CommPort::LinkState::waiting,
                "a screen sees more than waiting while the message is open");
        Require(!transfer.HasFailed() || !interval_.Enabled(), "polled after a failure");
        Require(disturbed_ || !transfer.HasFailed(), "failed though the instrument is in order");
        Require(disturbed_ || !transfer.IsLost(), "lost though the instrument is in order");
        if (reading_ && goesOn_ && !boxOpen_) {
            Require(!transfer.HasFailed(), "failed for a screen that goes on");
            Require(interval_.Enabled(), "a screen that goes on is not polled for");
        }
        Require(goesOn_ || !transfer.IsLost(), "lost for a screen that does not go on");
        CheckReadings();
    }

    void CheckReadings() {
        const auto& readings = link_.transfer.Readings;
        if (readings[0] != shown_) {
            Require(sent_.contains(readings[0]), "a value that no frame carried");
            shown_ = readings[0];
            ++decoded_;
        }
        for (std::size_t slot = 0; slot < Frame::valueCount; ++slot)
            Require(readings[slot] == shown_, "values of two frames");
        for (std::size_t slot = Frame::valueCount; slot < readings.size(); ++slot)
            Require(readings[slot] == 0, "a value where no frame has one");
    }

    /// Whatever has happened, a good instrument is read again after a start.
    void CheckRecovery() {
        line_.clear();
        serial_.ports.insert(1);
        Begin();
        Require(link_.transfer.Busy(), "not busy after a start");
        Enqueue(NextFrame());
        Flow(line_.size());
        CheckReadings();
        Require(shown_ == static_cast<float>(number_ / 10.0), "not read after a start");
        Require(link_.transfer.Outcome() == CommPort::LinkState::answered, "not answered");
        Require(!link_.transfer.HasFailed() && !link_.transfer.Busy(), "not at rest");
    }

    const Course& course_;
    std::size_t next_ = 0;
    fake::SerialControl serial_;
    fake::Timer timeout_;
    fake::Timer interval_;
    Link link_;

    std::deque<std::uint8_t> line_; ///< sent by the instrument, not arrived yet
    bool asked_ = false;
    bool reading_ = false;
    bool goesOn_ = false; ///< the screen's choice for the time after a failure
    bool boxOpen_ = false;
    bool begunInBox_ = false;
    bool disturbed_ = false; ///< something was not in order since reading began
    int boxesSinceBegin_ = 0;
    int number_ = 0; ///< of the frame sent last
    int decoded_ = 0;
    float shown_ = 0;
    std::set<float> sent_ = {0};
};

/// The rule that a course breaks, if any.
std::optional<std::string> RuleBrokenBy(Boxes& boxes, const Course& course) {
    try {
        Trial(boxes, course).Run();
    } catch (const Broken& broken) {
        return broken.rule;
    } catch (const RunTimeError& error) {
        return std::string("thrown: ") + error.what();
    }
    return std::nullopt;
}

/// The same without the steps that it does not need to break a rule.
Course Shrunk(Boxes& boxes, Course course) {
    for (std::size_t piece = course.size() / 2; piece > 0; piece /= 2) {
        for (std::size_t at = 0; at + piece <= course.size();) {
            auto shorter = course;
            const auto from = shorter.begin() + static_cast<std::ptrdiff_t>(at);
            shorter.erase(from, from + static_cast<std::ptrdiff_t>(piece));
            if (RuleBrokenBy(boxes, shorter))
                course = shorter;
            else
                at += piece;
        }
    }
    return course;
}

/// Mostly what happens all the time, now and then what should not.
Course AnyCourse(std::mt19937& random, std::size_t length) {
    //                              begin end tick out answer itself bad half noise flow all un re
    //                              close begin-and-go-on give-up
    std::discrete_distribution<int> acts({4, 3, 14, 3, 14, 6, 2, 2, 2, 20, 14, 1, 3, 6, 3, 1});
    std::uniform_int_distribution<std::size_t> sizes(1, 47);
    Course course;
    while (course.size() < length)
        course.push_back({static_cast<Act>(acts(random)), sizes(random)});
    return course;
}

class LinkModel : public testing::TestWithParam<unsigned> {
protected:
    fake::Platform platform;
    Boxes boxes;

private:
    fake::ServicesWithBoxes services_{platform, boxes};
};

TEST_P(LinkModel, No_course_of_events_breaks_a_rule) {
    constexpr std::size_t steps = 200000;
    constexpr std::size_t courseLength = 100;
    std::mt19937 random(GetParam());
    for (std::size_t done = 0; done < steps; done += courseLength) {
        const auto course = AnyCourse(random, courseLength);
        const auto rule = RuleBrokenBy(boxes, course);
        if (!rule)
            continue;
        const auto shortest = Shrunk(boxes, course);
        FAIL() << "seed " << GetParam() << ", step " << done << ": "
               << RuleBrokenBy(boxes, shortest).value_or(*rule) << " by" << Text(shortest);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, LinkModel, testing::Values(1U, 20030307U, 48U));

} // namespace
