#include "base/NumberInterval.h"

#include "base/NumberText.h"

#include <gtest/gtest.h>

#include <random>

using NumberText::MeantBy;

TEST(NumberInterval, A_text_means_all_that_rounds_to_it) {
    const auto meant = MeantBy("188.5");
    ASSERT_TRUE(meant);
    EXPECT_TRUE(meant->Holds(188.45));
    EXPECT_TRUE(meant->Holds(188.55));
    EXPECT_FALSE(meant->Holds(188.449));
    EXPECT_FALSE(meant->Holds(188.551));
}

TEST(NumberInterval, An_exponent_counts_for_the_last_digit) {
    const auto meant = MeantBy("1.23E-03");
    ASSERT_TRUE(meant);
    EXPECT_NEAR(meant->low, 0.001225, 1e-9);
    EXPECT_NEAR(meant->high, 0.001235, 1e-9);
    EXPECT_NEAR(MeantBy("-2.50E+04")->low, -25050, 0.1);
    EXPECT_NEAR(MeantBy("12")->high, 12.5, 1e-4);
}

TEST(NumberInterval, What_is_no_number_as_a_whole_means_nothing) {
    for (const char* text : {"", "-", ".", "NA", "Error", "12,5", "1.2.3", "12 ", "1E", "1E+",
                             "5E999", "+1", "1234567890123456789", "1.5E+-3"})
        EXPECT_FALSE(MeantBy(text)) << text;
}

TEST(NumberInterval, Every_displayed_text_means_the_number_behind_it) {
    constexpr std::uint32_t seed = 7;
    std::mt19937 chance(seed);
    std::uniform_real_distribution<float> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-12, 12);
    for (int i = 0; i < 20000; ++i) {
        const float value =
            mantissa(chance) * std::pow(10.0F, static_cast<float>(exponent(chance)));
        for (const auto pattern :
             {NumberText::Pattern::oneDecimal, NumberText::Pattern::twoDecimals,
              NumberText::Pattern::scientific}) {
            const std::string text = NumberText::Format(value, pattern);
            const auto meant = MeantBy(text);
            if (text.size() < 18) {
                ASSERT_TRUE(meant) << text;
                EXPECT_TRUE(meant->Holds(value)) << text;
            }
        }
        EXPECT_TRUE(
            NumberText::AroundPlain(NumberText::Leading(NumberText::Plain(value))).Holds(value));
    }
}
