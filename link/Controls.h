#pragma once

#include "platform/SerialControl.h"
#include "platform/Timer.h"

#include <functional>
#include <string>
#include <vector>

namespace CommPort {

/// The controls of the port screen, as far as the link uses them. The serial control and the
/// timers must outlive the attachment; a function that is left empty is not called.
struct Controls {
    platform::SerialControl* MSComm1 = nullptr;
    platform::Timer* tmrTimeout = nullptr;
    platform::Timer* tmrTransferInterval = nullptr;
    platform::Timer* tmrProbe = nullptr; ///< of the port test's question; without it none is asked
    std::function<void(const std::string&)> SetStatusText;            ///< txtStatus
    std::function<void(const std::string&)> SetAnswerText;            ///< lblAnswer
    std::function<void(bool)> SetSearching;                           ///< the search runs or not
    std::function<void(const std::vector<std::string>&)> SetPortList; ///< entries of cboPort
    std::function<void(int)> SelectPort;                              ///< entry of cboPort
    std::function<void(int)> SelectBitRate;                           ///< entry of cboBitRate
    std::function<int()> IntervalValue;                               ///< 1 where empty
    std::function<std::string()> IntervalUnit;                        ///< "seconds" where empty
};

} // namespace CommPort
