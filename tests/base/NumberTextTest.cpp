#include "base/NumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <fstream>
#include <limits>
#include <locale>
#include <sstream>

namespace {

using NumberText::Format;
using NumberText::Pattern;

/// Checks every row of the recorded texts; returns how many there were.
int CheckRecordedTexts() {
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
        EXPECT_EQ(Format(value, Pattern::oneDecimal), one) << shown;
        EXPECT_EQ(Format(value, Pattern::scientific), scientific) << shown;
        EXPECT_EQ(Format(value, Pattern::twoDecimals), two) << shown;
        EXPECT_EQ(Format(value, Pattern::frame), frame) << shown;
        EXPECT_EQ(Format(value, Pattern::percent), percent) << shown;
        EXPECT_EQ(NumberText::Plain(value), plain) << shown;
        ++cases;
    }
    return cases;
}

/// Makes the comma the decimal separator of the whole process while it lives.
class CommaLocale {
public:
    CommaLocale() {
        std::locale::global(std::locale(std::locale::classic(), new Comma));
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "German"})
            if (std::setlocale(LC_ALL, name) != nullptr)
                break;
    }
    ~CommaLocale() {
        std::locale::global(std::locale::classic());
        std::setlocale(LC_ALL, "C");
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

private:
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
};

TEST(NumberText, Every_recorded_value_has_its_recorded_text_in_every_pattern) {
    EXPECT_GT(CheckRecordedTexts(), 1600);
}

TEST(NumberText, A_locale_with_a_decimal_comma_changes_nothing) {
    const CommaLocale comma;
    std::ostringstream shown;
    shown << 1234.5;
    ASSERT_EQ(shown.str(), "1.234,5"); // the locale is in force
    EXPECT_GT(CheckRecordedTexts(), 1600);
    EXPECT_EQ(NumberText::Leading("58.44"), 58.44);
    EXPECT_EQ(NumberText::StrictSingle("0.5"), 0.5F);
    EXPECT_FALSE(NumberText::StrictSingle("0,5"));
}

TEST(NumberText, A_half_rounds_away_from_zero_on_the_decimal_text) {
    EXPECT_EQ(Format(0.25F, Pattern::oneDecimal), "0.3");
    EXPECT_EQ(Format(0.35F, Pattern::oneDecimal), "0.4"); // the single lies below 0.35
    EXPECT_EQ(Format(0.45F, Pattern::oneDecimal), "0.5");
    EXPECT_EQ(Format(-0.25F, Pattern::oneDecimal), "-0.3");
    EXPECT_EQ(Format(1.005F, Pattern::twoDecimals), "1.01");
}

TEST(NumberText, The_sign_stays_where_no_digit_does) {
    EXPECT_EQ(Format(-0.04F, Pattern::oneDecimal), "-0.0");
    EXPECT_EQ(Format(-0.0F, Pattern::oneDecimal), "0.0");
    EXPECT_EQ(NumberText::Plain(-0.0F), "0");
}

TEST(NumberText, The_frame_pattern_has_at_least_three_digits_before_the_point) {
    EXPECT_EQ(Format(0, Pattern::frame), "000.0");
    EXPECT_EQ(Format(12.34F, Pattern::frame), "012.3");
    EXPECT_EQ(Format(-5, Pattern::frame), "-005.0");
    EXPECT_EQ(Format(1234.5F, Pattern::frame), "1234.5");
}

TEST(NumberText, A_plain_number_has_up_to_seven_digits_and_no_trailing_zeros) {
    EXPECT_EQ(NumberText::Plain(0.5F), "0.5");
    EXPECT_EQ(NumberText::Plain(58.44F), "58.44");
    EXPECT_EQ(NumberText::Plain(-123.4F), "-123.4");
    EXPECT_EQ(NumberText::Plain(0.0001F), "0.0001");
    EXPECT_EQ(NumberText::Plain(1e-5F), "1E-05");
    EXPECT_EQ(NumberText::Plain(1e10F), "1E+10");
    EXPECT_EQ(NumberText::Plain(9999999.0F), "9999999");
    EXPECT_EQ(NumberText::Plain(1e7F), "1E+07");
    EXPECT_EQ(NumberText::Plain(std::int32_t{-42}), "-42");
}

TEST(NumberText, The_largest_single_has_its_text_in_every_pattern) {
    const float largest = std::numeric_limits<float>::max();
    EXPECT_EQ(Format(largest, Pattern::scientific), "3.40E+38");
    EXPECT_EQ(Format(largest, Pattern::oneDecimal), "3402823" + std::string(32, '0') + ".0");
    EXPECT_EQ(NumberText::Plain(largest), "3.402823E+38");
}

TEST(NumberText, What_is_no_finite_number_is_named_in_every_pattern) {
    const float infinite = std::numeric_limits<float>::infinity();
    for (const auto pattern : {Pattern::oneDecimal, Pattern::scientific, Pattern::twoDecimals,
                               Pattern::frame, Pattern::percent}) {
        EXPECT_EQ(Format(infinite, pattern), "INF");
        EXPECT_EQ(Format(-infinite, pattern), "-INF");
        EXPECT_EQ(Format(std::nanf(""), pattern), "NAN");
    }
    EXPECT_EQ(NumberText::Plain(-infinite), "-INF");
}

TEST(LeadingNumber, The_longest_number_in_front_counts_and_the_rest_is_ignored) {
    EXPECT_EQ(NumberText::Leading("  -12.5 mV"), -12.5);
    EXPECT_EQ(NumberText::Leading("1.5.3"), 1.5);
    EXPECT_EQ(NumberText::Leading("1e3x"), 1000);
    EXPECT_EQ(NumberText::Leading("1E-05"), 1e-5);
    EXPECT_EQ(NumberText::Leading("2e"), 2);
    EXPECT_EQ(NumberText::Leading("2e+"), 2);
    EXPECT_EQ(NumberText::Leading(".5"), 0.5);
    EXPECT_EQ(NumberText::Leading("+5."), 5);
    EXPECT_EQ(NumberText::Leading("0,5"), 0);
    EXPECT_EQ(NumberText::Leading("10;-55.3"), 10);
}

TEST(LeadingNumber, A_text_without_a_number_in_front_is_0) {
    for (const char* text :
         {"", " ", "x5", "-", "+.", ".", "e5", "--5", "- 5", "N/A", "inf", "nan"})
        EXPECT_EQ(NumberText::Leading(text), 0) << text;
}

TEST(LeadingNumber, A_number_beyond_the_type_is_its_largest_one_or_0) {
    EXPECT_EQ(NumberText::Leading("1E999"), std::numeric_limits<double>::max());
    EXPECT_EQ(NumberText::Leading("-1E999"), std::numeric_limits<double>::lowest());
    EXPECT_EQ(NumberText::Leading("-1E-999"), 0);
    EXPECT_EQ(NumberText::Leading("1E-99999999999999999999"), 0);
    EXPECT_EQ(NumberText::Leading("0E999"), 0);
    EXPECT_EQ(NumberText::Leading("0." + std::string(1000, '0') + "1E400"), 0);
    EXPECT_EQ(NumberText::Leading("1" + std::string(1000, '0')),
              std::numeric_limits<double>::max());
    EXPECT_EQ(NumberText::LeadingSingle("1E300"), std::numeric_limits<float>::max());
    EXPECT_EQ(NumberText::LeadingSingle("-1E300"), std::numeric_limits<float>::lowest());
}

TEST(LeadingInteger, Ties_round_to_the_even_neighbour) {
    EXPECT_EQ(NumberText::LeadingInteger("0.5"), 0);
    EXPECT_EQ(NumberText::LeadingInteger("1.5"), 2);
    EXPECT_EQ(NumberText::LeadingInteger("2.5"), 2);
    EXPECT_EQ(NumberText::LeadingInteger("-1.5"), -2);
    EXPECT_EQ(NumberText::LeadingInteger("-2.5"), -2);
    EXPECT_EQ(NumberText::LeadingInteger("2.6"), 3);
    EXPECT_EQ(NumberText::LeadingInteger("2.4"), 2);
}

TEST(LeadingInteger, A_number_beyond_16_bits_stops_at_the_limit) {
    EXPECT_EQ(NumberText::LeadingInteger("99999999999"), 32767);
    EXPECT_EQ(NumberText::LeadingInteger("-1E300"), -32768);
}

TEST(StrictNumber, The_whole_trimmed_text_must_be_the_number) {
    EXPECT_EQ(NumberText::StrictSingle(" 12.5\t"), 12.5F);
    EXPECT_EQ(NumberText::StrictSingle("-1E-05"), -1e-5F);
    EXPECT_EQ(NumberText::StrictSingle("+.5"), 0.5F);
    for (const char* text : {"", " ", "0,5", "5 x", "1 2", "1e", "0x10", "inf", "nan", "--1", "."})
        EXPECT_FALSE(NumberText::StrictSingle(text)) << text;
}

TEST(StrictNumber, A_number_that_no_single_can_hold_is_refused) {
    EXPECT_FALSE(NumberText::StrictSingle("1E39"));
    EXPECT_FALSE(NumberText::StrictSingle("-1E999"));
    EXPECT_EQ(NumberText::StrictSingle("1E-999"), 0.0F);
}

TEST(StrictNumber, An_integer_is_rounded_to_even_and_refused_beyond_16_bits) {
    EXPECT_EQ(NumberText::StrictInteger("2.5"), 2);
    EXPECT_EQ(NumberText::StrictInteger("3.5"), 4);
    EXPECT_EQ(NumberText::StrictInteger("32767"), 32767);
    EXPECT_EQ(NumberText::StrictInteger("-32768"), -32768);
    EXPECT_FALSE(NumberText::StrictInteger("32768"));
    EXPECT_FALSE(NumberText::StrictInteger("-32769"));
    EXPECT_FALSE(NumberText::StrictInteger("ten"));
}

} // namespace
