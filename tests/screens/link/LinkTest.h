#pragma once

#include "link/CommPort.h"
#include "screens/frmPortSettings/frmPortSettings.h"
#include "support/FakeLink.h"
#include "support/FakePlatform.h"

#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

/// The real port screen with its serial control, on ports that the test makes.
class LinkTest : public testing::Test {
protected:
    using Bytes = std::vector<std::uint8_t>;
    using LinkState = CommPort::LinkState;

    static constexpr const char* moment = "07.Mar.2003 14:05:33";
    static constexpr int boxStyle = platform::style::okOnly + platform::style::exclamation;

    /// Makes COM `number` lead to a device.
    void LinkPort(int number, const std::filesystem::path& device);
    void UnlinkPort(int number);

    /// The port screen, and the program's start-up of the link.
    void StartProgram(std::int32_t bitRate = 9600);

    /// A control of the port screen.
    template <class Control>
    Control& The(const char* name) {
        auto* control = form->findChild<Control*>(name);
        if (!control)
            throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }

    /// Lets the time-out that is running end now instead of after 3 s.
    void ShortenTimeout(std::chrono::milliseconds time = std::chrono::milliseconds(150));

    /// Runs the event loop until the condition holds or the time is over, sleeping in between.
    static bool WaitFor(const std::function<bool()>& condition,
                        std::chrono::milliseconds time = std::chrono::seconds(5));

    static bool WaitForEnd() {
        return WaitFor([] { return !CommPort::Busy(); });
    }

    /// One whole transfer; true when it was answered.
    static bool Transfer();

    void ExpectBadFrameMessage();

    fake::Platform platform;
    std::unique_ptr<frmPortSettings> form;
};
