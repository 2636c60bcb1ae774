#include "TransferFixture.h"

#include "link/Link.h"

#include <optional>

namespace {

/// One question to an open port, whatever lies on the line.
class ProbeTest : public TransferFixture {
protected:
    void Ask() {
        CommPort::TheLink().probe.Start(std::chrono::seconds(3), [this](const Probe::Answer& told) {
            ++answers;
            answer = told;
        });
    }

    bool HasAnswered() const { return answers == 1 && answer && (*answer)[0] == frameReadings[0]; }

    int answers = 0;
    Probe::Answer answer;
};

TEST_F(ProbeTest, A_frame_from_before_the_question_is_no_answer) {
    link.serial.OnArrival = nullptr;
    link.serial.Arrive(frame);

    Ask();

    EXPECT_EQ(answers, 0);
    EXPECT_TRUE(link.probe.Enabled());
}

TEST_F(ProbeTest, An_answer_that_lies_in_the_input_when_the_request_is_out_counts) {
    const auto arrival = link.serial.OnArrival;
    link.serial.onOutput = [this, &arrival] {
        link.serial.OnArrival = nullptr;
        link.serial.Arrive(frame);
        link.serial.OnArrival = arrival;
    };

    Ask();

    EXPECT_TRUE(HasAnswered());
    EXPECT_FALSE(link.probe.Enabled());
}

TEST_F(ProbeTest, A_closed_port_is_asked_nothing) {
    link.serial.SetPortOpen(false);
    Ask();
    EXPECT_FALSE(link.probe.Enabled());
    EXPECT_EQ(link.Requests(), 0U);
}

TEST_F(ProbeTest, What_came_behind_one_answer_is_no_part_of_the_next) {
    Ask();
    link.serial.Arrive(Glued({frame, {'+', '0', '1'}}));
    ASSERT_TRUE(HasAnswered());

    answers = 0;
    Ask();
    link.serial.Arrive(frame);

    EXPECT_TRUE(HasAnswered());
}

TEST_F(ProbeTest, A_question_asked_anew_begins_with_a_clean_line) {
    Ask();
    link.serial.Arrive(Bytes{'+', '0', '1'});

    Ask();
    link.serial.Arrive(frame);

    EXPECT_TRUE(HasAnswered());
}

TEST_F(ProbeTest, A_late_tick_without_a_question_takes_nothing_from_a_transfer) {
    CommPort::TransferOnce();
    link.serial.OnArrival = nullptr;
    link.serial.Arrive(frame);

    CommPort::tmrProbe_Timer();
    CommPort::ReceiveFrame();

    EXPECT_EQ(CommPort::Readings(), frameReadings);
}

} // namespace
