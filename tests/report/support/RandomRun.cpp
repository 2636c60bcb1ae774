#include "report/support/RandomRun.h"

#include "report/support/MeasurementText.h"

#include <array>

std::string RandomRun::Cell() {
    constexpr std::array<const char*, 9> odd = {"NA",  "N/A",   "",   "Error",   "12.5 x",
                                                "1E5", "+3.25", "-0", "1.5E+400"};
    if (Below(12) == 0)
        return odd[Below(odd.size())];
    const std::string sign = Below(3) == 0 ? "-" : "";
    const std::string number = sign + std::to_string(Below(5000)) + "." + std::to_string(Below(10));
    return Below(5) == 0 ? number + "E-0" + std::to_string(Below(10)) : number;
}

std::string RandomRun::Text(int records) {
    MeasurementText text;
    text.lineEnd = Below(4) == 0 ? "\n" : "\r\n";
    text.cell = [this](int, const std::string&, int) { return Cell(); };
    text.comment = [this](int number) {
        return Below(6) == 0 ? "taken by hand " + std::to_string(number) : std::string();
    };
    return text.File(records);
}

void RandomRun::Damage(std::string& text, int places) {
    constexpr std::array<const char*, 8> pieces = {"\n",  "\r\n",       "\t", "Record 7\tAt\n",
                                                   "mV ", "\n------\n", "-",  "Comment:\n"};
    for (int i = 0; i < places && !text.empty(); ++i) {
        const std::size_t at = Below(text.size());
        switch (Below(3)) {
        case 0:
            text.erase(at, Below(std::size_t{300}));
            break;
        case 1:
            text.insert(at, pieces[Below(pieces.size())]);
            break;
        default:
            text[at] = static_cast<char>(Below(128));
        }
    }
}
