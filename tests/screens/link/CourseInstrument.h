#pragma once

#include "PtyPeer.h"
#include "support/Search.h"

#include <QObject>

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <random>
#include <span>
#include <vector>

/// An instrument on a pseudo-terminal that answers well or badly, comes and goes, by a random
/// course that its seed repeats. The eight values of a frame are one number, in tenths, that no
/// earlier frame of the last ten thousand has carried.
class CourseInstrument {
public:
    /// How it behaves when it is asked.
    enum class Manner { good, inPieces, bad, half, silent, noisy };
    static constexpr std::size_t manners = 6;

    /// The port's link leads to it while it is plugged in, and nowhere else meanwhile.
    explicit CourseInstrument(std::filesystem::path link);
    ~CourseInstrument();
    CourseInstrument(const CourseInstrument&) = delete;
    CourseInstrument& operator=(const CourseInstrument&) = delete;

    void Plug();
    void Unplug();
    bool IsPlugged() const { return peer_ != nullptr; }

    /// A frame that nobody has asked for.
    void SendByItself();

    Manner manner = Manner::good;

    /// A whole good frame has carried this value since the last Forget.
    bool HasCarried(int tenths) const;

    /// The same since the beginning.
    bool HasEverCarried(int tenths) const;
    void Forget() { carried_.fill(false); }

    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

    const unsigned long seed = search::Seed();

private:
    using Bytes = std::vector<std::uint8_t>;
    void Answer();
    Bytes NextFrame();
    void Carry();
    void SendWhole();
    void SendInPieces(const Bytes& bytes);
    void Send(std::span<const std::uint8_t> bytes);
    void LeadTo(const std::filesystem::path& device);

    std::filesystem::path link_;
    std::mt19937 random_{static_cast<std::mt19937::result_type>(seed)};
    std::unique_ptr<PtyPeer> peer_;
    QObject later_; ///< of the rest of a frame in pieces
    Bytes waiting_; ///< that rest, and what comes behind it
    int number_ = 0;
    std::array<bool, 10000> carried_{};
    std::array<bool, 10000> everCarried_{};
};
