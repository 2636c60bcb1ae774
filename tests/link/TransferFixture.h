#pragma once

#include "link/CommPort.h"
#include "support/FakeLink.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

inline constexpr const char* moment = "07.Mar.2003 14:05:33";

inline const Bytes frame = FrameOf({123, -456, 30, -40, 500, -600, 7000, -9999});
inline const std::array<float, cyclePositions> frameReadings = {12.3F, -45.6F, 3.0F,   -4.0F,
                                                                50.0F, -60.0F, 700.0F, -999.9F};
inline const std::array<float, cyclePositions> noReadings{};

/// The program's link after its start, on a port under the test's hand.
class TransferFixture : public testing::Test {
protected:
    using LinkState = CommPort::LinkState;

    void SetUp() override { CommPort::fncInitializeComPort(); }

    /// The script expects one message; a second one fails the test.
    void ExpectBadFrameMessage() {
        platform.dialogs.ExpectMessage(std::string("Data transmission uncompleted: ") + moment,
                                       platform::style::okOnly + platform::style::exclamation);
    }

    fake::Platform platform;
    fake::Link link;
};
