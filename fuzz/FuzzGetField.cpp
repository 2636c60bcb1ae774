#include "NullPlatform.h"

#include "settings/Fields.h"

#include <vector>

// Any text falls apart into fields; the fields' texts, joined again, give the same fields.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::Text(data, size);
    constexpr int fields = 20;
    std::vector<std::string> wholes;
    for (int index = -1; index <= fields; ++index) {
        const std::string first = mWinInit::GetField(text, index, 1);
        const std::string second = mWinInit::GetField(text, index, 2);
        fuzz::Require(first.find('\x0F') == std::string::npos);
        fuzz::Require(first.find(';') == std::string::npos);
        fuzz::Require(index >= 1 || (first.empty() && second.empty()));
        if (index >= 1)
            wholes.push_back(first + ";" + second);
    }
    const std::string joined = mWinInit::JoinFields(wholes);
    for (int index = 1; index <= fields; ++index) {
        fuzz::Require(mWinInit::GetField(joined, index, 1) == mWinInit::GetField(text, index, 1));
        fuzz::Require(mWinInit::GetField(joined, index, 2) == mWinInit::GetField(text, index, 2));
    }
    return 0;
}
