#include "link/Probe.h"

#include "app/Mcommon.h"
#include "base/RunTimeError.h"
#include "link/Commands.h"

#include <utility>

void Probe::Start(std::chrono::milliseconds wait, std::function<void(const Answer&)> tell) {
    Stop();
    if (!timer_ || !port_.IsOpen())
        return;
    tell_ = std::move(tell);
    timer_->SetInterval(wait);
    timer_->SetEnabled(true);
    Commands commands;
    try {
        port_.Control().ClearInBuffer();
        port_.Control().Output(commands.BytesOf(Commands::requestFrame));
    } catch (const RunTimeError&) {
        End(std::nullopt); // the port has gone: nobody answers there
        return;
    }
    OnArrival();
}

void Probe::Stop() {
    tell_ = nullptr;
    stream_.Restart();
    if (timer_)
        timer_->SetEnabled(false);
}

void Probe::OnArrival() {
    if (IsRunning() && port_.IsOpen())
        TakeArrived();
}

void Probe::TakeArrived() {
    auto& control = port_.Control();
    stream_.Feed(control.Input(control.InBufferCount()));
    for (auto event = stream_.Next(); event != FrameStream::Event::nothing;
         event = stream_.Next()) {
        // Strictly: at a wrong bit rate anything may come, an EOT in its place as well.
        if (Frame::IsTail(stream_.LastFrame())) {
            End(Frame::Decode(stream_.LastFrame()));
            return;
        }
    }
}

void Probe::OnTimer() {
    OnArrival(); // where both meet the frame counts
    if (IsRunning())
        End(std::nullopt);
}

/// Whom it tells may start it again.
void Probe::End(const Answer& answer) {
    const auto tell = std::exchange(tell_, nullptr);
    Stop();
    tell(answer);
}

std::string TextOf(const Probe::Answer& answer) {
    if (!answer)
        return "No answer in 3 s: check cable, power and bit rate.";
    std::string text = "The instrument answered:";
    for (std::size_t slot = 0; slot < answer->size(); ++slot) {
        const bool electrode = slot % 2 == 0;
        text += slot == 0 ? " " : ", ";
        text += (electrode ? "E" : "T") + std::to_string(slot / 2 + 1) + " ";
        text += Mcommon::FormatReading((*answer)[slot]) + (electrode ? " mV" : "");
    }
    return text;
}
