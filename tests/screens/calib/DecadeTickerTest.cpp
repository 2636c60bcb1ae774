#include "screens/calibration/DecadeTicker.h"

#include <gtest/gtest.h>

namespace {

/// The labels of an axis from one number to another.
QVector<QString> Labels(double lowest, double highest) {
    DecadeTicker ticker;
    QVector<double> ticks;
    QVector<QString> labels;
    const QCPRange range(std::log10(lowest), std::log10(highest));
    static_cast<QCPAxisTicker&>(ticker).generate(range, QLocale::c(), 'g', 6, ticks, nullptr,
                                                 &labels);
    return labels;
}

} // namespace

TEST(DecadeTicker, Whole_decades_are_labelled_with_their_numbers) {
    EXPECT_EQ(Labels(0.8, 120), (QVector<QString>{"1", "10", "100"}));
    EXPECT_EQ(Labels(8E-6, 0.02), (QVector<QString>{"1E-05", "0.0001", "0.001", "0.01"}));
}

TEST(DecadeTicker, A_decade_at_the_very_end_of_the_range_counts) {
    EXPECT_EQ(DecadeTicks(0, 2), (std::vector<double>{0, 1, 2}));
}

TEST(DecadeTicker, Less_than_two_decades_show_1_2_and_5_too) {
    EXPECT_EQ(Labels(1.5, 12), (QVector<QString>{"2", "5", "10"}));
    EXPECT_EQ(Labels(15, 90), (QVector<QString>{"20", "50"}));
}

TEST(DecadeTicker, Standards_below_1_have_their_ticks_too) {
    EXPECT_EQ(Labels(0.004, 0.03), (QVector<QString>{"0.005", "0.01", "0.02"}));
}
