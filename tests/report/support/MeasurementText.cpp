#include "report/support/MeasurementText.h"

namespace {

std::string Padded(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

std::string Row(const std::string& label, const std::vector<std::string>& cells) {
    std::string row = Padded(label, 15);
    for (const auto& cell : cells)
        row += "\t" + Padded(cell, 12);
    return row;
}

const std::string separator(150, '-');

} // namespace

std::string MeasurementText::Header() const {
    const std::vector<std::string> names = {"Chan 1", "Chan 2", "Chan 3", "Chan 4",
                                            "Chan 5", "Chan 6", "Chan 7", "Chan 8"};
    const std::vector<std::string> blank(electrodes.size(), "");
    const std::vector<std::string> lines = {
        separator,
        "Project Name: " + project + "\tAnalyst: Ann\tReport created at: 14:05:33  07.Mar.2003",
        separator,
        Row("Channel :", {names.begin(), names.begin() + std::ssize(electrodes)}),
        Row("Electrode   :", electrodes),
        Row("Serial No.  :", blank),
        Row("Ref. Type   :", blank),
        Row("Ref. S/N    :", blank),
        Row("Temp. Sens. :", sensors),
        separator,
        "Slopes Info.:\tN/A\tN/A\tN/A\tN/A\tN/A\tN/A\tN/A\tN/A",
        separator};
    std::string text;
    for (const auto& line : lines)
        text += line + lineEnd;
    return text;
}

std::string MeasurementText::Record(int number) const {
    std::string text = "Record " + std::to_string(number) + "\tAt\t14:05:33 07.Mar.2003" + lineEnd +
                       "Comment:\t" + comment(number) + lineEnd;
    for (const std::string row : {"mV", "pH", "ppm", "mol/l",
                                  "\xB0"
                                  "C"}) {
        std::vector<std::string> cells;
        for (int channel = 0; channel < std::ssize(electrodes); ++channel)
            cells.push_back(cell(number, row, channel));
        text += Row(row, cells) + lineEnd;
    }
    return text + separator + lineEnd;
}

std::string MeasurementText::File(int records, int first) const {
    std::string text = Header();
    for (int number = first; number < first + records; ++number)
        text += Record(number);
    return text;
}
