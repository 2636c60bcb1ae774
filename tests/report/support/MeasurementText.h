#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Writes the text of measurement files for the tests, independent of the program's own writer.
struct MeasurementText {
    std::vector<std::string> electrodes = {"Ca", "H (pH)", "Redox", "None"};
    std::vector<std::string> sensors = {"1", "2", "N/A", "N/A"};
    std::string project = "River";
    std::string lineEnd = "\r\n";
    /// The cell of a channel (from 0) in a row.
    std::function<std::string(int record, const std::string& row, int channel)> cell =
        [](int record, const std::string& row, int channel) {
            return row == "mV" ? std::to_string(record) + "." + std::to_string(channel)
                               : std::to_string(channel) + ".5";
        };
    std::function<std::string(int record)> comment = [](int) { return std::string(); };

    std::string Header() const;
    /// Rows mV, pH, ppm, mol/l, °C: with first line, comment and separator 8 lines.
    std::string Record(int number) const;
    std::string File(int records, int first = 1) const;

    static constexpr int headerLines = 12;
    static constexpr int recordLines = 8;
};
