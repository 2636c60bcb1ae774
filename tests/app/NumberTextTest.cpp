#include "app/NumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <fstream>
#include <sstream>

namespace {

TEST(NumberText, Every_recorded_value_has_its_recorded_text_in_every_pattern) {
    std::ifstream file(VANTREL_TEST_DATA "/format.tsv");
    std::string line;
    int cases = 0;
    while (std::getline(file, line)) {
        if (line.empty() || line.front() == '#')
            continue;
        std::istringstream columns(line);
        std::string bits, shown, one, scientific, two, frame, percent, plain;
        columns >> bits >> shown >> one >> scientific >> two >> frame >> percent >> plain;
        const auto value =
            std::bit_cast<float>(static_cast<std::uint32_t>(std::stoul(bits, nullptr, 16)));
        using NumberText::Pattern;
        EXPECT_EQ(NumberText::Format(value, Pattern::oneDecimal), one) << shown;
        EXPECT_EQ(NumberText::Format(value, Pattern::scientific), scientific) << shown;
        EXPECT_EQ(NumberText::Format(value, Pattern::twoDecimals), two) << shown;
        EXPECT_EQ(NumberText::Format(value, Pattern::frame), frame) << shown;
        EXPECT_EQ(NumberText::Format(value, Pattern::percent), percent) << shown;
        EXPECT_EQ(NumberText::Plain(value), plain) << shown;
        ++cases;
    }
    EXPECT_GT(cases, 1600);
}

} // namespace
