#include "link/ReadingSeries.h"

#include "base/DateText.h"
#include "link/CommPort.h"
#include "link/DataAcq.h"
#include "support/FakeLink.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <utility>

using namespace std::chrono_literals;
using Tick = ReadingSeries::Tick;

namespace {

class Series : public testing::Test {
protected:
    void SetUp() override {
        CommPort::fncInitializeComPort();
        platform.clock.step = 1ms; // events run at every value taken
    }

    bool Hourglass() const { return platform.desktop.pointer == platform::MousePointer::hourglass; }

    void FrameArrives(int firstElectrode_tenths) {
        link.serial.Arrive(FrameOf({firstElectrode_tenths, 0, 0, 0, 0, 0, 0, 0}));
    }

    /// Runs once, at the first moment of the next tick at which events run.
    void DuringNextTick(const std::function<void()>& step) {
        platform.desktop.onEvents = [step, done = false]() mutable {
            if (!std::exchange(done, true))
                step();
        };
    }

    fake::Platform platform;
    fake::Link link;
    fake::Timer timer;
    ReadingSeries series{timer};
    std::array<float, cyclePositions> averages{};
};

} // namespace

TEST_F(Series, Starting_requests_a_frame_and_shows_the_hourglass) {
    series.Start(5);
    EXPECT_EQ(link.Requests(), 1U);
    EXPECT_TRUE(timer.Enabled());
    EXPECT_EQ(timer.Interval(), 50ms);
    EXPECT_EQ(DataAcq::Reader().AverageCount, 5);
    EXPECT_TRUE(DataAcq::Reader().ReadingEnabled);
    EXPECT_TRUE(Hourglass());
}

TEST_F(Series, No_value_is_taken_before_the_first_good_frame) {
    CommPort::Readings().fill(77); // of an earlier reading
    series.Start(2);
    EXPECT_EQ(series.OnTimer(averages), Tick::nothing);
    EXPECT_EQ(DataAcq::Reader().ConnectionState, 0);
    EXPECT_TRUE(Hourglass());
    FrameArrives(100);
    EXPECT_EQ(series.OnTimer(averages), Tick::values);
    EXPECT_EQ(averages[0], 10.0F);
}

TEST_F(Series, The_first_average_ends_the_hourglass_and_slows_the_timer) {
    series.Start(2);
    FrameArrives(100);
    series.OnTimer(averages);
    EXPECT_FALSE(Hourglass());
    EXPECT_EQ(timer.Interval(), 1500ms);
    series.Stop();
    series.Start(2);
    EXPECT_EQ(timer.Interval(), 1500ms) << "the instrument has been heard before";
}

TEST_F(Series, A_failed_link_ends_the_series_once) {
    series.Start(2);
    link.TimeoutTicks();
    EXPECT_EQ(series.OnTimer(averages), Tick::failed);
    EXPECT_FALSE(series.IsRunning());
    EXPECT_FALSE(timer.Enabled());
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
    EXPECT_FALSE(Hourglass());
    EXPECT_EQ(series.OnTimer(averages), Tick::nothing);
}

TEST_F(Series, A_tick_within_a_tick_does_nothing) {
    series.Start(3);
    FrameArrives(100);
    Tick inner = Tick::values;
    DuringNextTick([&] {
        EXPECT_TRUE(series.IsAtWork());
        inner = series.OnTimer(averages);
    });
    EXPECT_EQ(series.OnTimer(averages), Tick::values);
    EXPECT_EQ(inner, Tick::nothing);
    EXPECT_FALSE(series.IsAtWork());
}

TEST_F(Series, Stopped_in_the_middle_of_a_tick_it_gives_no_values) {
    series.Start(3);
    FrameArrives(100);
    DuringNextTick([&] { series.Stop(); });
    EXPECT_EQ(series.OnTimer(averages), Tick::nothing);
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
    EXPECT_FALSE(timer.Enabled());
}

TEST_F(Series, Averaging_begun_in_the_middle_of_a_tick_starts_after_it) {
    series.Start(1000);
    FrameArrives(100);
    DuringNextTick([&] { series.RestartAveraging(2); });
    EXPECT_EQ(series.OnTimer(averages), Tick::nothing);
    EXPECT_TRUE(Hourglass());
    EXPECT_EQ(DataAcq::Reader().AverageCount, 2);
    EXPECT_EQ(series.OnTimer(averages), Tick::values);
    EXPECT_EQ(averages[0], 10.0F);
    EXPECT_FALSE(Hourglass());
}

TEST_F(Series, Started_anew_in_the_middle_of_a_tick_it_waits_for_its_own_frame) {
    series.Start(1000);
    FrameArrives(100);
    DuringNextTick([&] {
        series.Stop();
        series.Start(1);
    });
    EXPECT_EQ(series.OnTimer(averages), Tick::nothing);
    EXPECT_TRUE(series.IsRunning());
    EXPECT_EQ(series.OnTimer(averages), Tick::nothing);
    FrameArrives(200);
    EXPECT_EQ(series.OnTimer(averages), Tick::values);
    EXPECT_EQ(averages[0], 20.0F);
}

TEST_F(Series, Its_end_of_life_ends_the_reading) {
    {
        ReadingSeries shortLived(timer);
        shortLived.Start(1);
    }
    EXPECT_FALSE(timer.Enabled());
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
    EXPECT_FALSE(Hourglass());
}

TEST_F(Series, A_failure_between_two_ticks_ends_the_series_though_a_good_frame_has_followed) {
    series.Start(2);
    FrameArrives(100);
    EXPECT_EQ(series.OnTimer(averages), Tick::values);
    link.IntervalTicks();
    link.TimeoutTicks();
    FrameArrives(100);
    EXPECT_EQ(CommPort::State(), CommPort::LinkState::answered);
    EXPECT_TRUE(CommPort::HasFailed());
    EXPECT_EQ(series.OnTimer(averages), Tick::failed);
    series.Start(2);
    EXPECT_FALSE(CommPort::HasFailed());
}

TEST_F(Series, The_measuring_page_ticks_every_half_second_before_and_after_the_first_frame) {
    ReadingSeries measuring(timer, ReadingSeries::measuringPace);
    measuring.Start(2);
    EXPECT_EQ(timer.Interval(), 500ms);
    FrameArrives(100);
    EXPECT_EQ(measuring.OnTimer(averages), Tick::values);
    EXPECT_EQ(timer.Interval(), 500ms);
}

TEST_F(Series, It_has_values_from_the_first_average_until_a_new_one_fills_or_the_link_fails) {
    series.Start(2);
    FrameArrives(100);
    EXPECT_FALSE(series.HasValues());
    series.OnTimer(averages);
    EXPECT_TRUE(series.HasValues());
    series.RestartAveraging(3);
    EXPECT_FALSE(series.HasValues());
    series.OnTimer(averages);
    EXPECT_TRUE(series.HasValues());
    link.IntervalTicks();
    link.TimeoutTicks();
    EXPECT_FALSE(series.HasValues()) << "though no tick has told of the failure yet";
}

TEST_F(Series, An_hourglass_that_another_has_set_stays_while_values_come) {
    series.Start(2);
    FrameArrives(100);
    series.OnTimer(averages);
    platform.desktop.pointer = platform::MousePointer::hourglass;
    EXPECT_EQ(series.OnTimer(averages), Tick::values);
    EXPECT_TRUE(Hourglass());
    series.Stop();
    EXPECT_TRUE(Hourglass());
}

TEST_F(Series, New_averaging_without_a_series_does_nothing) {
    series.RestartAveraging(3);
    EXPECT_FALSE(Hourglass());
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
}

TEST_F(Series, One_that_goes_on_tells_the_loss_once_and_gives_new_values_when_it_can_again) {
    series.GoOnAfterFailure(true);
    series.Start(3);
    FrameArrives(100);
    EXPECT_EQ(series.OnTimer(averages), Tick::values);
    link.IntervalTicks();
    link.TimeoutTicks();

    EXPECT_EQ(series.OnTimer(averages), Tick::lost);
    EXPECT_EQ(series.OnTimer(averages), Tick::nothing);
    EXPECT_FALSE(series.HasValues());
    EXPECT_TRUE(series.IsRunning());
    EXPECT_FALSE(Hourglass());

    link.IntervalTicks();
    FrameArrives(400);
    EXPECT_EQ(series.OnTimer(averages), Tick::values);
    EXPECT_EQ(averages[0], 40.0F) << "no average reaches over the gap";
    EXPECT_TRUE(series.HasValues());
}

TEST_F(Series, A_loss_between_two_ticks_is_told_though_the_instrument_answers_again) {
    series.GoOnAfterFailure(true);
    series.Start(3);
    FrameArrives(100);
    EXPECT_EQ(series.OnTimer(averages), Tick::values);
    const auto before = DateText::Record(platform.clock.now);
    link.IntervalTicks();
    link.TimeoutTicks();
    platform.clock.now.second += 4;
    link.IntervalTicks();
    FrameArrives(400);

    EXPECT_FALSE(series.HasValues()) << "those of before the gap";
    EXPECT_EQ(series.OnTimer(averages), Tick::lost);
    ASSERT_TRUE(CommPort::LastReadingBeforeLoss());
    EXPECT_EQ(DateText::Record(*CommPort::LastReadingBeforeLoss()), before);
    EXPECT_EQ(series.OnTimer(averages), Tick::values);
    EXPECT_EQ(averages[0], 40.0F) << "no average reaches over the gap";
}

TEST_F(Series, One_that_goes_on_no_longer_fails_when_the_link_is_lost) {
    series.GoOnAfterFailure(true);
    series.Start(1);
    link.TimeoutTicks();
    EXPECT_EQ(series.OnTimer(averages), Tick::lost);

    series.GoOnAfterFailure(false);

    EXPECT_EQ(series.OnTimer(averages), Tick::failed);
    EXPECT_FALSE(series.IsRunning());
}

TEST_F(Series, A_loss_that_another_series_met_is_none_of_this_one) {
    fake::Timer othersTimer;
    ReadingSeries other(othersTimer);
    other.GoOnAfterFailure(true);
    other.Start(1);
    link.TimeoutTicks();
    other.Stop();
    series.Start(1);
    FrameArrives(100);
    EXPECT_EQ(series.OnTimer(averages), Tick::values);
}

TEST_F(Series, A_late_tick_of_a_series_that_has_ended_does_not_begin_it_again) {
    series.Start(1);
    series.Stop();
    fake::Timer othersTimer;
    ReadingSeries other(othersTimer);
    other.GoOnAfterFailure(true);
    other.Start(1);
    link.TimeoutTicks();

    EXPECT_EQ(series.OnTimer(averages), Tick::nothing);

    EXPECT_FALSE(series.IsRunning());
}

TEST_F(Series, Lost_before_the_first_average_it_takes_its_hourglass_away) {
    series.GoOnAfterFailure(true);
    series.Start(1);
    ASSERT_TRUE(Hourglass());
    link.TimeoutTicks();
    EXPECT_EQ(series.OnTimer(averages), Tick::lost);
    EXPECT_FALSE(Hourglass());
}

TEST_F(Series, The_first_average_after_a_loss_has_its_hourglass) {
    series.GoOnAfterFailure(true);
    series.Start(2);
    link.TimeoutTicks();
    series.OnTimer(averages);
    link.IntervalTicks();
    FrameArrives(100);
    DuringNextTick([this] { EXPECT_TRUE(Hourglass()); });
    EXPECT_EQ(series.OnTimer(averages), Tick::values);
    EXPECT_FALSE(Hourglass());
}

TEST_F(Series, Its_end_ends_the_polling) {
    series.Start(1);
    FrameArrives(100);
    ASSERT_TRUE(link.interval.Enabled());
    series.Stop();
    EXPECT_FALSE(link.interval.Enabled());
    EXPECT_EQ(link.serial.RThreshold(), 0);
}

TEST_F(Series, Stopped_in_a_tick_after_new_averaging_was_begun_it_does_not_average_on) {
    series.Start(3);
    FrameArrives(100);
    DuringNextTick([&] {
        series.RestartAveraging(2);
        series.Stop();
    });
    EXPECT_EQ(series.OnTimer(averages), Tick::nothing);
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
}

TEST_F(Series, New_averaging_abandons_the_pass_at_work_at_once) {
    series.Start(1000);
    FrameArrives(100);
    DuringNextTick([&] {
        series.RestartAveraging(2);
        platform.desktop.eventPasses = 0;
    });
    series.OnTimer(averages);
    EXPECT_LT(platform.desktop.eventPasses, cyclePositions) << "of 12,000";
}

TEST_F(Series, It_has_no_values_while_the_message_about_a_bad_frame_is_open) {
    series.Start(1);
    FrameArrives(100);
    series.OnTimer(averages);
    ASSERT_TRUE(series.HasValues());
    platform.dialogs.ExpectAnyMessage(platform::style::okOnly + platform::style::exclamation);
    platform.dialogs.whileMessageIsOpen = [this] { EXPECT_FALSE(series.HasValues()); };
    link.serial.Arrive(BadFrameOf({990, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_FALSE(series.HasValues());
}

TEST_F(Series, It_has_no_values_after_a_failure_though_a_good_frame_has_followed) {
    series.Start(1);
    FrameArrives(100);
    series.OnTimer(averages);
    link.IntervalTicks();
    link.TimeoutTicks();
    FrameArrives(200);
    ASSERT_EQ(CommPort::State(), CommPort::LinkState::answered);
    EXPECT_FALSE(series.HasValues());
}

TEST_F(Series, The_choice_to_go_on_is_no_other_screens) {
    series.GoOnAfterFailure(true);
    series.Start(1);
    series.Stop();
    ReadingSeries other(timer);
    other.Start(1);

    link.TimeoutTicks();

    EXPECT_EQ(other.OnTimer(averages), Tick::failed);
}
