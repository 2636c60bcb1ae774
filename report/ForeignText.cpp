#include "report/ForeignText.h"

#include "base/Utf8.h"

namespace ForeignText {

bool IsUtf8(std::string_view sample, bool cut) {
    if (sample.starts_with(Utf8::byteOrderMark))
        return true;
    bool beyondAscii = false;
    while (!sample.empty()) {
        const Utf8::Character character = Utf8::First(sample);
        if (character.length == 0)
            return beyondAscii && cut && Utf8::LengthOf(sample.front()) > sample.size();
        beyondAscii = beyondAscii || character.length > 1;
        sample.remove_prefix(character.length);
    }
    return beyondAscii;
}

} // namespace ForeignText
