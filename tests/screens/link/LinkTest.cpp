#include "LinkTest.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

namespace fs = std::filesystem;

void LinkTest::LinkPort(int number, const fs::path& device) {
    const auto ports = platform.places.ConfigurationFolder() / "ports";
    fs::create_directories(ports);
    UnlinkPort(number);
    fs::create_symlink(device, ports / ("com" + std::to_string(number)));
}

void LinkTest::UnlinkPort(int number) {
    fs::remove(platform.places.ConfigurationFolder() / "ports" / ("com" + std::to_string(number)));
}

void LinkTest::StartProgram(std::int32_t bitRate) {
    platform.userStore.values["CommPort/Startup/BitRate"] = std::to_string(bitRate);
    form = std::make_unique<frmPortSettings>();
    CommPort::fncInitializeComPort();
}

void LinkTest::ShortenTimeout(std::chrono::milliseconds time) {
    auto& timer = The<QTimer>("tmrTimeout");
    ASSERT_TRUE(timer.isActive());
    timer.start(time);
}

bool LinkTest::WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds time) {
    const QDeadlineTimer deadline(time);
    QTimer look; // for conditions that no event of this program announces
    look.start(std::chrono::milliseconds(5));
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

bool LinkTest::Transfer() {
    CommPort::TransferOnce();
    return WaitForEnd() && CommPort::State() == LinkState::answered;
}

void LinkTest::ExpectBadFrameMessage() {
    platform.dialogs.ExpectMessage(std::string("Data transmission uncompleted: ") + moment,
                                   boxStyle);
}
