#include "link/InstrumentSearch.h"

#include "base/NumberText.h"
#include "base/RunTimeError.h"

#include <utility>

namespace {

std::vector<std::int32_t> BitRates(std::int32_t likely) {
    std::vector<std::int32_t> rates = {likely};
    for (const auto text : offeredBitRates) {
        const auto rate = static_cast<std::int32_t>(NumberText::Leading(text));
        if (rate != likely)
            rates.push_back(rate);
    }
    return rates;
}

} // namespace

std::chrono::milliseconds InstrumentSearch::WaitAt(std::int32_t bitRate) {
    constexpr int bitsPerByte = 10; // with start and stop bit
    constexpr int bytes = 1 + static_cast<int>(Frame::length);
    constexpr std::chrono::milliseconds thinking{500};
    return thinking + std::chrono::milliseconds(1000 * bytes * bitsPerByte / bitRate);
}

void InstrumentSearch::Start(std::int32_t likelyBitRate) {
    Stop();
    toTry_.clear();
    for (std::int16_t number = 1; number <= maxPortNumber; ++number) {
        if (!port_.IsAvailable(number))
            continue;
        for (const auto rate : BitRates(likelyBitRate))
            toTry_.push_back({rate, number});
    }
    next_ = 0;
    running_ = true;
    TryNext();
}

void InstrumentSearch::Stop() {
    if (!std::exchange(running_, false))
        return;
    probe_.Stop();
    port_.Close();
}

void InstrumentSearch::TryNext() {
    while (next_ < toTry_.size()) {
        const auto choice = toTry_[next_++];
        TellStep("Trying " + PortName::Of(choice.PortNumber) + " at " +
                 NumberText::Plain(choice.BitRate) + " bit/s...");
        if (!Open(choice))
            continue;
        probe_.Start(WaitAt(choice.BitRate),
                     [this, choice](const Probe::Answer& answer) { Answered(choice, answer); });
        return;
    }
    End(std::nullopt);
}

bool InstrumentSearch::Open(const PortChoice& choice) {
    try {
        port_.OpenWithTimeouts(choice);
        return true;
    } catch (const RunTimeError&) {
        return false; // whoever holds it, or it has gone since the scan
    }
}

void InstrumentSearch::Answered(const PortChoice& choice, const Probe::Answer& answer) {
    if (answer)
        End(Found{choice, *answer});
    else
        TryNext();
}

void InstrumentSearch::End(const std::optional<Found>& found) {
    running_ = false;
    if (!found)
        port_.Close();
    TellEnd(found);
}
