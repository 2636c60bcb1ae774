#include "TransferFixture.h"

#include "link/Link.h"

namespace {

class Command : public TransferFixture {};

TEST_F(Command, Command_2_writes_STX) {
    CommPort::SendCommand("2");

    EXPECT_EQ(link.serial.written, (std::vector<Bytes>{{0x02}}));
}

TEST_F(Command, Command_24_writes_CAN) {
    CommPort::SendCommand("24");

    EXPECT_EQ(link.serial.written, (std::vector<Bytes>{{0x18}}));
}

TEST_F(Command, The_select_command_writes_SOH_address_STX_in_one_write) {
    CommPort::TheLink().transfer.commands.InstrumentAddress = {12, 255};

    CommPort::SendCommand("1122552");

    EXPECT_EQ(link.serial.written, (std::vector<Bytes>{{0x01, 12, 255, 0x02}}));
}

TEST_F(Command, Another_command_writes_the_previous_one_again) {
    CommPort::SendCommand("24");
    CommPort::SendCommand("no command");

    EXPECT_EQ(link.serial.written, (std::vector<Bytes>{{0x18}, {0x18}}));
}

TEST_F(Command, Another_address_than_the_instruments_selects_nothing) {
    CommPort::TheLink().transfer.commands.InstrumentAddress = {1, 2};
    CommPort::SendCommand("2");
    CommPort::SendCommand("1132");

    EXPECT_EQ(link.serial.written, (std::vector<Bytes>{{0x02}, {0x02}}));
}

TEST_F(Command, An_unknown_command_before_any_other_writes_nothing) {
    CommPort::SendCommand("x");

    EXPECT_TRUE(link.serial.written.empty());
}

} // namespace
