#include "report/LoadProgress.h"

#include "base/NumberText.h"

#include <algorithm>

namespace Mreport {

namespace {

std::string TextOf(std::uint64_t read, std::uint64_t fileLength) {
    const float fraction =
        fileLength == 0 ? 1.0F : static_cast<float>(read) / static_cast<float>(fileLength);
    return "Loading data, " +
           NumberText::Format(std::min(fraction, 1.0F), NumberText::Pattern::percent) +
           " complete. [Press ESC to stop loading]";
}

} // namespace

void LoadProgress::Begin(std::uint64_t fileLength) {
    fileLength_ = fileLength;
    read_ = next_ = 0;
}

std::string LoadProgress::Changed() {
    constexpr std::uint64_t percent = 100;
    const std::uint64_t step = std::max<std::uint64_t>(fileLength_ / percent, 1);
    const std::uint64_t half = step / 2; // a percentage is rounded, it changes between two steps
    next_ = ((read_ + half) / step + 1) * step - half;
    return TextOf(read_, fileLength_);
}

std::string LoadProgress::Whole() const {
    return TextOf(fileLength_, fileLength_);
}

} // namespace Mreport
