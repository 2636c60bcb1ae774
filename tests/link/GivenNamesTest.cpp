#include "TransferFixture.h"

#include "link/DataAcq.h"
#include "link/Link.h"

namespace {

/// What is reached by the given names alone, and the state at program start.
class GivenNames : public TransferFixture {};

TEST_F(GivenNames, ReceiveFrame_takes_what_has_arrived_for_a_request) {
    CommPort::TransferOnce();
    link.serial.OnArrival = nullptr;
    link.serial.Arrive(frame);

    CommPort::ReceiveFrame();

    EXPECT_EQ(CommPort::Readings(), frameReadings);
    EXPECT_FALSE(CommPort::Busy());
}

TEST_F(GivenNames, ReceiveFrame_without_a_request_takes_nothing) {
    link.serial.Arrive(frame);
    CommPort::ReceiveFrame();
    EXPECT_EQ(CommPort::Readings(), noReadings);
    EXPECT_EQ(link.serial.InBufferCount(), frame.size());
}

TEST_F(GivenNames, DecodeFrame_gives_the_values_of_the_last_frame_again) {
    CommPort::TransferOnce();
    link.serial.Arrive(frame);
    CommPort::Readings().fill(0);

    CommPort::DecodeFrame();

    EXPECT_EQ(CommPort::Readings(), frameReadings);
}

TEST_F(GivenNames, ApplyTransferInterval_takes_over_what_the_controls_say) {
    link.intervalValue = 7;
    CommPort::ApplyTransferInterval();
    EXPECT_EQ(link.interval.Interval(), std::chrono::seconds(7));
}

TEST_F(GivenNames, MSComm1_OnComm_takes_a_frame_that_came_by_itself) {
    CommPort::BeginReading();
    link.serial.Arrive(frame);
    link.serial.OnArrival = nullptr;
    link.serial.OnComm = nullptr;
    link.serial.Arrive(FrameOf({10, 0, 0, 0, 0, 0, 0, 0}));

    CommPort::MSComm1_OnComm(platform::SerialControl::Event::receive);

    EXPECT_EQ(CommPort::Readings()[0], 1.0F);
}

TEST_F(GivenNames, MSComm1_OnArrival_takes_the_answer_to_a_request) {
    CommPort::TransferOnce();
    link.serial.OnArrival = nullptr;
    link.serial.Arrive(frame);

    CommPort::MSComm1_OnArrival();

    EXPECT_EQ(CommPort::Readings(), frameReadings);
}

TEST_F(GivenNames, Losses_counts_how_often_the_link_was_lost) {
    EXPECT_EQ(CommPort::Losses(), 0U);
    CommPort::GoOnAfterFailure(true);
    CommPort::BeginReading();
    for (unsigned losses = 1; losses <= 2; ++losses) {
        link.TimeoutTicks();
        EXPECT_EQ(CommPort::Losses(), losses);
        link.IntervalTicks();
        EXPECT_TRUE(CommPort::IsLost()) << "asked again, and not answered yet";
        link.TimeoutTicks();
        EXPECT_EQ(CommPort::Losses(), losses) << "the same loss";
        link.IntervalTicks();
        link.serial.Arrive(frame);
        link.IntervalTicks();
    }
}

TEST_F(GivenNames, Reset_closes_the_port_and_forgets_what_it_has_read) {
    CommPort::TransferOnce();
    link.serial.Arrive(frame);

    CommPort::Reset();

    EXPECT_FALSE(link.serial.PortOpen());
    EXPECT_FALSE(link.serial.OnArrival) << "it would reach what is no more";
    EXPECT_EQ(CommPort::Readings(), noReadings);
    EXPECT_FALSE(CommPort::LastReading());
}

TEST_F(GivenNames, Reset_of_the_averages_begins_as_at_program_start) {
    DataAcq::StartSeries(3);
    std::array<float, cyclePositions> averages{};
    DataAcq::ReadChannels(averages);
    ASSERT_EQ(DataAcq::Reader().ConnectionState, 1);

    DataAcq::Reset();

    EXPECT_EQ(DataAcq::Reader().ConnectionState, 0);
    EXPECT_EQ(DataAcq::Reader().AverageCount, 1);
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
}

// ---- Fewer controls ----------------------------------------------------------------------------

TEST_F(GivenNames, A_screen_without_lists_is_told_nothing_of_them) {
    CommPort::Controls controls;
    controls.MSComm1 = &link.serial;
    CommPort::Attach(controls);

    CommPort::ScanPorts();
    CommPort::fncInitializeComPort();

    EXPECT_TRUE(CommPort::PortOK());
}

TEST_F(GivenNames, Without_controls_for_the_interval_a_request_goes_out_every_second) {
    CommPort::Controls controls;
    controls.MSComm1 = &link.serial;
    controls.tmrTransferInterval = &link.interval;
    CommPort::Attach(controls);

    CommPort::BeginReading();

    EXPECT_EQ(link.interval.Interval(), std::chrono::seconds(1));
    EXPECT_TRUE(link.interval.Enabled());
}

TEST_F(GivenNames, Controls_that_have_gone_are_touched_no_more) {
    CommPort::Detach();
    link.answer = "the last words";
    link.interval.SetInterval(std::chrono::milliseconds(7));

    CommPort::ShowPresentStatus();
    CommPort::BeginReading();

    EXPECT_EQ(link.answer, "the last words");
    EXPECT_EQ(link.interval.Interval(), std::chrono::milliseconds(7));
}

} // namespace
