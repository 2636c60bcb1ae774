#include "NullPlatform.h"

#include "platform/posix/ProfileText.h"

#include <algorithm>

// Changing a key in a settings file of any content: the value is read back, a second change to
// the same value changes nothing, and every byte before and behind the changed line stays.

namespace {

/// Without the bytes that are the same at both ends.
std::size_t ChangedBytes(const std::string& before, const std::string& after) {
    const auto front = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const auto back = std::mismatch(before.rbegin(), std::make_reverse_iterator(front.first),
                                    after.rbegin(), std::make_reverse_iterator(front.second));
    return static_cast<std::size_t>(back.second.base() - front.second);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using platform::posix::ProfileText;
    ProfileText text(fuzz::Text(data, size));
    const std::string before = text.Bytes();
    (void)text.Value("Hardware", "Port Number");
    text.Set("Hardware", "Port Number", "7");
    fuzz::Require(text.Value("hardware", "port number") == "7");
    fuzz::Require(!text.Set("Hardware", "Port Number", "7"));
    const std::string after = text.Bytes();
    // A new section with its key, in two bytes a character.
    constexpr std::size_t longestChange =
        2 * std::string_view("\r\n[Hardware]\r\nPort Number=7\r\n").size();
    fuzz::Require(ChangedBytes(before, after) <= longestChange);
    fuzz::Require(ProfileText(after).Value("Hardware", "Port Number") == "7");
    text.Remove("Hardware", "Port Number");
    text.RemoveSection("Hardware");
    text.RemoveSection("");
    (void)text.Bytes();
    return 0;
}
