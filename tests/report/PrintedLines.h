#pragma once

#include "report/PageText.h"

#include <string>
#include <utility>
#include <vector>

/// A list page of lines written by hand.
class PrintedLines : public Mreport::PageText {
public:
    PrintedLines() = default;
    explicit PrintedLines(std::vector<std::string> lines) : lines_(std::move(lines)) {}

    void Add(std::string line) { lines_.push_back(std::move(line)); }

    /// A record of four channels: first line, comment, potentials, temperatures, separator.
    void AddRecord(int number, const std::string& comment = {}) {
        Add("Record " + std::to_string(number) + "\tAt\t14:05:33 07.Mar.2003");
        Add("Comment:\t" + comment);
        Add("mV             \t177.5       \t-12.3       \tNA          \t1.23E+04    ");
        Add("\xB0"
            "C             \t25.0        \t25.1        \tNA          \t            ");
        Add(std::string(200, '-'));
    }

    std::size_t LineCount() const override { return lines_.size(); }
    std::string Line(std::size_t index) const override { return lines_.at(index); }

private:
    std::vector<std::string> lines_;
};
