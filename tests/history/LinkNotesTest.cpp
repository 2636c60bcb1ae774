#include "history/LinkNotes.h"

#include "history/Notes.h"
#include "link/TransferFixture.h"
#include "support/NotedEntries.h"

#include <optional>

namespace {

using Texts = std::vector<std::string>;

class HistoryOfLink : public TransferFixture {
protected:
    void SetUp() override {
        TransferFixture::SetUp();
        noted.emplace();
        History::KnowSettings();
        watch.emplace();
    }

    std::optional<NotedEntries> noted;
    std::optional<History::LinkNotes> watch;
};

constexpr const char* failure = "Link failed: COM1, 9600 bit/s: the instrument does not answer";

} // namespace

TEST_F(HistoryOfLink, A_failure_is_noted_once_and_so_is_the_answer_behind_it) {
    CommPort::BeginReading();
    link.TimeoutTicks();
    CommPort::ShowPresentStatus();
    CommPort::EndReading();
    CommPort::BeginReading();
    link.serial.Arrive(frame);
    link.serial.Arrive(frame);
    EXPECT_EQ(
        noted->Texts(),
        (Texts{failure, "Link answers again: COM1, 9600 bit/s: the instrument answers again"}));
}

TEST_F(HistoryOfLink, Each_failure_of_its_own_reading_is_noted) {
    for (int i = 0; i < 2; ++i) {
        CommPort::BeginReading();
        link.TimeoutTicks();
        CommPort::EndReading();
    }
    EXPECT_EQ(noted->Texts(), (Texts{failure, failure}));
}

TEST_F(HistoryOfLink, A_link_that_answers_is_no_event) {
    CommPort::BeginReading();
    link.serial.Arrive(frame);
    CommPort::EndReading();
    EXPECT_TRUE(noted->Texts().empty());
}

TEST_F(HistoryOfLink, Another_port_is_a_changed_setting) {
    CommPort::TestPort(19200, 3);
    EXPECT_EQ(noted->Texts(), (Texts{R"(Setting changed: Port: "COM3", was "COM1")",
                                     R"(Setting changed: Bit rate: "19200", was "9600")"}));
}
