#include "LinkTest.h"
#include "PtyPeer.h"

#include "base/RunTimeError.h"
#include "platform/SerialDevice.h"
#include "platform/qt/QtSerialControl.h"

#include <QFile>

#include <fstream>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace {

class QtSerialControlTest : public LinkTest {
protected:
    void SetUp() override {
        LinkPort(1, peer.Device());
        control.SetCommPort(1);
    }

    /// What opening COM1 is refused with.
    std::string Refusal() {
        try {
            control.SetPortOpen(true);
        } catch (const RunTimeError& error) {
            EXPECT_FALSE(control.PortOpen());
            return error.what();
        }
        return "opened";
    }

    PtyPeer peer;
    platform::QtSerialControl control;
};

/// As the system names this process; its name there has at most 15 characters.
std::string ThisProgram() {
    std::ifstream file("/proc/self/comm");
    std::string name;
    std::getline(file, name);
    return name + " (process " + std::to_string(::getpid()) + ")";
}

TEST_F(QtSerialControlTest, Every_offered_bit_rate_is_set_on_the_line) {
    const std::vector<std::pair<int, speed_t>> rates = {
        {300, B300},   {1200, B1200},   {2400, B2400},   {4800, B4800},
        {9600, B9600}, {19200, B19200}, {57600, B57600}, {115200, B115200}};
    for (const auto& [rate, constant] : rates) {
        control.SetSettings(std::to_string(rate) + ",N,8,1");
        control.SetPortOpen(true);
        EXPECT_EQ(peer.Speed(), constant) << rate;
        control.SetPortOpen(false);
    }
}

TEST_F(QtSerialControlTest, Bit_rates_outside_the_list_can_be_set_too) {
    for (const auto* settings : {"38400,N,8,1", "12345,N,8,1"}) {
        control.SetSettings(settings);
        EXPECT_NO_THROW(control.SetPortOpen(true)) << settings;
        control.SetPortOpen(false);
    }
}

TEST_F(QtSerialControlTest, An_impossible_line_format_is_refused) {
    for (const auto* settings : {"0,N,8,1", "-300,N,8,1", "9600", "9600,X,8,1", ""}) {
        control.SetSettings(settings);
        EXPECT_EQ(Refusal(),
                  std::string("Opening COM1: the line format ") + settings + " is not possible");
    }
}

TEST_F(QtSerialControlTest, A_device_that_is_not_there_is_named) {
    LinkPort(2, "/dev/no such device");
    control.SetCommPort(2);
    const auto link = platform.places.ConfigurationFolder() / "ports" / "com2";

    EXPECT_EQ(Refusal(), "Opening COM2: " + link.string() + " is not connected");
}

TEST_F(QtSerialControlTest, A_port_number_outside_1_to_16_is_refused) {
    for (const int number : {0, 17}) {
        control.SetCommPort(number);
        EXPECT_EQ(Refusal(), "Opening COM" + std::to_string(number) + ": there is no such port");
    }
}

TEST_F(QtSerialControlTest, A_file_that_is_no_serial_device_is_refused) {
    const auto file = platform.folder.Path() / "file";
    WriteBytes(file, "no device");
    LinkPort(1, file);

    EXPECT_EQ(Refusal(), "Opening COM1: " + file.string() + " is not a serial device");
}

TEST_F(QtSerialControlTest, A_port_that_another_control_holds_is_in_use) {
    platform::QtSerialControl holder;
    holder.SetCommPort(1);
    holder.SetPortOpen(true);

    EXPECT_EQ(Refusal(),
              "Opening COM1: " + peer.Device() + " is in use by another program: " + ThisProgram());

    holder.SetPortOpen(false);
    EXPECT_EQ(Refusal(), "opened");
}

TEST_F(QtSerialControlTest, A_port_that_another_program_has_locked_is_in_use) {
    const int holder = ::open(peer.Device().c_str(), O_RDWR | O_NOCTTY);
    ASSERT_GE(holder, 0);
    ASSERT_EQ(::flock(holder, LOCK_EX), 0);

    EXPECT_EQ(Refusal(),
              "Opening COM1: " + peer.Device() + " is in use by another program: " + ThisProgram());

    ::close(holder);
    EXPECT_EQ(Refusal(), "opened");
}

TEST_F(QtSerialControlTest, A_port_that_another_program_holds_keeps_its_settings_and_its_bytes) {
    const int holder = ::open(peer.Device().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    ASSERT_EQ(::flock(holder, LOCK_EX), 0);
    termios settings{};
    ASSERT_EQ(::tcgetattr(holder, &settings), 0);
    ::cfmakeraw(&settings);
    ::cfsetspeed(&settings, B2400);
    ASSERT_EQ(::tcsetattr(holder, TCSANOW, &settings), 0);
    peer.Send(Bytes{1, 2, 3});
    control.SetSettings("9600,N,8,1");

    EXPECT_NE(Refusal(), "opened");

    EXPECT_EQ(peer.Speed(), B2400);
    Bytes left(8);
    EXPECT_EQ(::read(holder, left.data(), left.size()), 3);
    ::close(holder);
}

/// What a user without rights is told about the device.
std::string WhyNotForUser(const std::string& device) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        return "no pipe";
    const auto child = ::fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0))
            ::_exit(1);
        const auto reason = platform::WhyDeviceCannotOpen(device);
        const auto written = ::write(ends[1], reason.data(), reason.size());
        ::_exit(written == static_cast<ssize_t>(reason.size()) ? 0 : 1);
    }
    ::close(ends[1]);
    std::array<char, 1024> text{};
    const auto count = ::read(ends[0], text.data(), text.size());
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    return {text.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
}

TEST_F(QtSerialControlTest, Without_permission_the_group_to_join_is_named) {
    ASSERT_EQ(::chown(peer.Device().c_str(), static_cast<uid_t>(-1), ::getegid()), 0);
    ASSERT_EQ(::chmod(peer.Device().c_str(), S_IRGRP | S_IWGRP), 0);
    if (::geteuid() == 0) {
        // The superuser's own group would be no advice; that of terminals is.
        constexpr gid_t terminals = 5;
        ASSERT_EQ(::chown(peer.Device().c_str(), static_cast<uid_t>(-1), terminals), 0);
    }
    struct stat status {};
    ASSERT_EQ(::stat(peer.Device().c_str(), &status), 0);

    const auto reason = WhyNotForUser(peer.Device());

    EXPECT_TRUE(reason.starts_with("no permission to use " + peer.Device() + "; join the group \""))
        << reason;
    if (status.st_gid == 5) {
        EXPECT_NE(reason.find("\"tty\" (sudo usermod -aG tty <your user name>)"), std::string::npos)
            << reason;
    }
}

TEST_F(QtSerialControlTest, Without_permission_and_a_group_that_helps_the_administrator_is_named) {
    ASSERT_EQ(::chmod(peer.Device().c_str(), 0), 0);

    EXPECT_EQ(WhyNotForUser(peer.Device()),
              "no permission to use " + peer.Device() + "; ask the administrator for access to it");
}

TEST_F(QtSerialControlTest, A_device_that_can_be_opened_has_no_reason_against_it) {
    EXPECT_EQ(platform::WhyDeviceCannotOpen(peer.Device()), "");
}

TEST_F(QtSerialControlTest, The_receive_event_comes_at_the_threshold_and_not_below_it) {
    control.SetPortOpen(true);
    control.SetRThreshold(48);
    int arrivals = 0;
    int events = 0;
    control.OnArrival = [&] { ++arrivals; };
    control.OnComm = [&](auto) { ++events; };

    peer.Send(Bytes(47, '+'));
    ASSERT_TRUE(WaitFor([&] { return control.InBufferCount() == 47 && arrivals > 0; }));
    EXPECT_EQ(events, 0);
    peer.Send(Bytes(1, '+'));
    EXPECT_TRUE(WaitFor([&] { return events == 1; }));
}

TEST_F(QtSerialControlTest, Without_a_threshold_arrivals_are_told_but_no_receive_event_comes) {
    control.SetPortOpen(true);
    int arrivals = 0;
    int events = 0;
    control.OnArrival = [&] { ++arrivals; };
    control.OnComm = [&](auto) { ++events; };

    peer.Send(Bytes(100, '+'));

    ASSERT_TRUE(WaitFor([&] { return arrivals > 0; }));
    EXPECT_EQ(events, 0);
}

TEST_F(QtSerialControlTest, Input_takes_no_more_than_asked_for_and_keeps_the_rest) {
    control.SetPortOpen(true);
    peer.Send(Bytes{1, 2, 3, 4, 5});
    ASSERT_TRUE(WaitFor([&] { return control.InBufferCount() == 5; }));

    EXPECT_EQ(control.Input(3), (Bytes{1, 2, 3}));
    EXPECT_EQ(control.Input(48), (Bytes{4, 5}));
    EXPECT_EQ(control.Input(48), Bytes{});
}

TEST_F(QtSerialControlTest, Emptying_the_buffer_drops_what_the_system_holds_as_well) {
    control.SetPortOpen(true);
    peer.Send(Bytes{1, 2, 3});

    control.ClearInBuffer();
    QTest::qWait(20);

    EXPECT_EQ(control.InBufferCount(), 0U);
}

TEST_F(QtSerialControlTest, Emptying_the_buffer_just_as_bytes_arrive_loses_neither_port_nor_bytes) {
    control.SetPortOpen(true);
    int lost = 0;
    control.OnComm = [&](auto) { ++lost; };
    for (int i = 0; i < 200; ++i) {
        peer.Send(Bytes{1, 2, 3});
        // In the very pass of the event loop that has found the bytes, before or after they are
        // read.
        QTimer::singleShot(0, &control, [&] { control.ClearInBuffer(); });
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        control.ClearInBuffer();
        peer.Send(Bytes{4});
        ASSERT_TRUE(WaitFor([&] { return control.InBufferCount() == 1; })) << i;
        EXPECT_EQ(control.Input(1), Bytes{4});
    }
    EXPECT_EQ(lost, 0);
}

TEST_F(QtSerialControlTest, All_256_byte_values_pass_in_both_directions) {
    control.SetPortOpen(true);
    Bytes all(256);
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i] = static_cast<std::uint8_t>(i);

    control.Output(all);
    Bytes received;
    ASSERT_TRUE(WaitFor([&] {
        const auto more = peer.Received();
        received.insert(received.end(), more.begin(), more.end());
        return received.size() == all.size();
    }));
    EXPECT_EQ(received, all);
    peer.Send(all);
    ASSERT_TRUE(WaitFor([&] { return control.InBufferCount() == all.size(); }));
    EXPECT_EQ(control.Input(all.size()), all);
}

TEST_F(QtSerialControlTest, Nothing_is_delivered_after_the_port_was_closed) {
    control.SetPortOpen(true);
    int arrivals = 0;
    control.OnArrival = [&] { ++arrivals; };
    bool closed = false;
    QObject::connect(control.findChild<QSerialPort*>(), &QSerialPort::readyRead, &control, [&] {
        control.SetPortOpen(false); // the bytes have been read and are about to be told
        closed = true;
    });
    peer.Send(Bytes(48, '+'));
    ASSERT_TRUE(WaitFor([&] { return closed; }));

    control.SetPortOpen(true);
    QTest::qWait(50);

    EXPECT_EQ(arrivals, 0);
}

TEST_F(QtSerialControlTest, Writing_to_a_device_that_has_gone_throws) {
    control.SetPortOpen(true);
    peer.Unplug();

    EXPECT_THROW(control.Output(Bytes{0x02}), RunTimeError);
}

TEST_F(QtSerialControlTest, A_device_that_has_gone_is_told_once) {
    control.SetPortOpen(true);
    int lost = 0;
    control.OnComm = [&](platform::SerialControl::Event event) {
        if (event != platform::SerialControl::Event::portLost)
            return;
        ++lost;
        control.SetPortOpen(false);
    };
    peer.Unplug();

    ASSERT_TRUE(WaitFor([&] { return lost > 0; }));
    QTest::qWait(50);
    EXPECT_EQ(lost, 1);
}

TEST_F(QtSerialControlTest, A_line_that_takes_nothing_does_not_hold_up_closing) {
    control.SetPortOpen(true);
    for (int i = 0; i < 200; ++i)
        control.Output(Bytes(256, '+')); // nobody reads the other end
    const auto begin = std::chrono::steady_clock::now();

    control.SetPortOpen(false);

    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
}

} // namespace
