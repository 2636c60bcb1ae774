#include "report/RecordScan.h"

#include "report/support/MeasurementText.h"
#include "report/support/PlainRun.h"
#include "report/support/RandomRun.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Mreport::FoundRecord;

std::vector<FoundRecord> Scan(const std::string& text, const Mreport::ScanWish& wish,
                              Mreport::Stretch stretch, std::vector<std::string>* comments) {
    Mreport::MemorySource source(text);
    Mreport::RecordScan scan(source, stretch, wish);
    std::vector<FoundRecord> records;
    FoundRecord record;
    while (scan.Next(record)) {
        if (comments != nullptr)
            comments->emplace_back(record.comment);
        record.comment = {}; // lives no longer
        records.push_back(record);
    }
    return records;
}

std::vector<FoundRecord> Scan(const std::string& text, const Mreport::ScanWish& wish,
                              std::vector<std::string>* comments = nullptr) {
    return Scan(text, wish, {0, text.size()}, comments);
}

bool Same(double value, std::optional<double> plain) {
    return plain ? value == *plain : std::isnan(value);
}

void ExpectAsPlain(const std::string& text, Quantity quantity) {
    const auto plain = ReadPlainly(text);
    std::vector<std::string> comments;
    const auto found = Scan(text, {quantity, false}, &comments);
    ASSERT_EQ(found.size(), plain.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        ASSERT_EQ(found[i].offset, plain[i].offset) << "record " << i;
        ASSERT_EQ(found[i].number, MeasurementLines::RecordNumber(plain[i].firstLine));
        ASSERT_EQ(comments[i], plain[i].comment);
        for (std::size_t column = 0; column < maxChannels; ++column)
            ASSERT_TRUE(
                Same(found[i].values[column], plain[i].Value(Quantities::Label(quantity), column)))
                << "record " << i << " at " << plain[i].offset << ", column " << column << ": "
                << found[i].values[column];
    }
}

} // namespace

TEST(RecordScan, Every_record_is_given_with_number_time_comment_and_values) {
    MeasurementText text;
    text.comment = [](int number) { return number == 2 ? "shaken" : ""; };
    std::vector<std::string> comments;
    const auto found = Scan(text.File(3), {Quantity::mV, false}, &comments);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[2].number, 3);
    EXPECT_EQ(found[2].values[1], 3.1);
    EXPECT_TRUE(std::isnan(found[2].values[4])) << "a column that the file does not have";
    EXPECT_EQ(comments, (std::vector<std::string>{"", "shaken", ""}));
    using namespace std::chrono_literals;
    const std::chrono::local_days day(2003y / 3 / 7);
    EXPECT_EQ(found[0].time, day + 14h + 5min + 33s);
}

TEST(RecordScan, A_scan_without_a_quantity_gives_records_without_values) {
    const auto found = Scan(MeasurementText().File(3), {});
    ASSERT_EQ(found.size(), 3U);
    EXPECT_TRUE(std::isnan(found[2].values[0]));
}

TEST(RecordScan, A_record_that_the_next_one_cuts_off_is_given_with_what_it_has) {
    MeasurementText text;
    const std::string whole = text.Record(1);
    const std::string cut = whole.substr(0, whole.find("ppm"));
    const std::string file = text.Header() + whole + cut + text.Record(2);
    const auto found = Scan(file, {Quantity::mV, false});
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[1].values[1], 1.1);
    EXPECT_TRUE(found[1].ended);
    EXPECT_EQ(found[1].end, found[2].offset);
    EXPECT_EQ(found[2].number, 2);
}

TEST(RecordScan, A_record_in_which_the_stretch_ends_is_given_as_not_ended) {
    MeasurementText text;
    const std::string file = text.File(2);
    const auto found = Scan(file.substr(0, file.rfind("ppm")), {Quantity::mV, false});
    ASSERT_EQ(found.size(), 2U);
    EXPECT_TRUE(found[0].ended);
    EXPECT_FALSE(found[1].ended);
    EXPECT_EQ(found[1].values[1], 2.1);
}

TEST(RecordScan, No_byte_behind_the_stretch_is_looked_at) {
    MeasurementText text;
    const std::string first = text.File(1);
    const auto found =
        Scan(first + text.Record(2), {Quantity::mV, false}, {0, first.size()}, nullptr);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].end, first.size());
}

TEST(RecordScan, A_comment_that_looks_like_a_record_is_a_comment) {
    MeasurementText text;
    text.comment = [](int) { return "Record 7\tmV\t------\t1.0"; };
    ExpectAsPlain(text.File(20), Quantity::mV);
}

TEST(RecordScan, A_comment_longer_than_a_block_does_not_stop_the_scan) {
    MeasurementText text;
    text.comment = [](int number) { return std::string(number == 3 ? 600'000 : 0, 'x'); };
    const auto found = Scan(text.File(5), {Quantity::mV, false});
    ASSERT_EQ(found.size(), 5U);
    EXPECT_EQ(found[4].values[0], 5.0);
}

TEST(RecordScan, The_degree_sign_of_a_UTF8_file_is_known) {
    MeasurementText text;
    std::string file = text.File(4);
    for (auto at = file.find('\xB0'); at != std::string::npos; at = file.find('\xB0', at + 2))
        file.insert(at, 1, '\xC2');
    const auto found = Scan(file, {Quantity::celsius, true});
    ASSERT_EQ(found.size(), 4U);
    EXPECT_EQ(found[3].values[2], 2.5);
}

TEST(RecordScan, Random_files_give_what_a_plain_reader_finds) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomRun random(seed);
        std::string text = random.Text(1 + random.Below(60));
        ExpectAsPlain(text, Quantity::mV);
        random.Damage(text, 1 + random.Below(20));
        for (const auto& row : Quantities::table)
            ExpectAsPlain(text, row.quantity);
    }
}

TEST(RecordScan, Files_of_many_blocks_give_what_a_plain_reader_finds) {
    RandomRun random(7);
    std::string text = random.Text(2500); // 1.4 MB
    random.Damage(text, 15);
    ExpectAsPlain(text, Quantity::ppm);
}
