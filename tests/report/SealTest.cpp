#include "report/Seal.h"

#include "report/support/MeasurementText.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using Mreport::Seal;
using Mreport::SealCheck;

Seal SealOf(const std::string& text, std::int64_t records, std::uint64_t slice = 1000) {
    Mreport::MemorySource source(text);
    Mreport::Sealing sealing(source, text.size(), records);
    while (sealing.Step(slice)) {
    }
    return {"21.Nov.2026 14:30:07", sealing.Points()};
}

struct Checked {
    SealCheck::State state;
    std::string text;
};

Checked Check(const std::string& text, const Seal& seal, std::uint64_t slice = 700) {
    Mreport::MemorySource source(text);
    SealCheck check(source, seal);
    while (check.Step(slice)) {
    }
    return {check.Result(), check.Text()};
}

const std::string run = MeasurementText().File(60);

} // namespace

TEST(Seal, A_file_as_it_was_sealed_is_unchanged) {
    const auto checked = Check(run, SealOf(run, 60));
    EXPECT_EQ(checked.state, SealCheck::State::unchanged);
    EXPECT_EQ(checked.text, "unchanged since 21.Nov.2026 14:30:07");
}

TEST(Seal, Its_points_are_the_ends_of_the_header_and_of_records) {
    const Seal seal = SealOf(run, 60);
    ASSERT_EQ(seal.points.size(), 61u);
    EXPECT_EQ(seal.points[0].length, run.find("Record 1\t"));
    EXPECT_EQ(seal.points[0].record, 0);
    EXPECT_EQ(seal.points[1].length, run.find("Record 2\t"));
    EXPECT_EQ(seal.points[1].record, 1);
    EXPECT_EQ(seal.points[60].length, run.size());
    EXPECT_EQ(seal.points[60].record, 60);
    const std::string longer = MeasurementText().File(1000);
    EXPECT_EQ(SealOf(longer, 1000).points.size(), 1u + 250u); // every fourth record
}

TEST(Seal, Records_behind_the_sealed_ones_are_growth) {
    const Seal seal = SealOf(run, 60);
    const auto checked = Check(run + MeasurementText().Record(61), seal);
    EXPECT_EQ(checked.state, SealCheck::State::grown);
    EXPECT_EQ(checked.text, "grown since 21.Nov.2026 14:30:07; what was sealed is unchanged");
}

TEST(Seal, A_changed_byte_is_found_with_the_record_that_it_follows) {
    const Seal seal = SealOf(run, 60);
    std::string changed = run;
    const auto record = changed.find("Record 40\t");
    ++changed[changed.find(".2", record)];
    const auto checked = Check(changed, seal);
    EXPECT_EQ(checked.state, SealCheck::State::changed);
    std::string byte = std::to_string(record + 1);
    byte.insert(byte.size() - 3, ",");
    EXPECT_EQ(checked.text,
              "changed since 21.Nov.2026 14:30:07: byte " + byte + ", behind record 39, or later");
    changed = run;
    ++changed[200];
    EXPECT_EQ(Check(changed, seal).text,
              "changed since 21.Nov.2026 14:30:07: byte 1, in the header, or later");
}

TEST(Seal, A_file_that_was_cut_off_is_changed) {
    const auto checked = Check(run.substr(0, 1000), SealOf(run, 60));
    EXPECT_EQ(checked.state, SealCheck::State::changed);
    EXPECT_TRUE(checked.text.starts_with("changed since 21.Nov.2026 14:30:07: ")) << checked.text;
    const Seal header = {"then", {SealOf(run, 60).points.back()}};
    EXPECT_EQ(Check(run.substr(0, 1234), header).text,
              "changed since then: it ends behind byte 1,234");
}

TEST(Seal, Any_byte_of_a_file_that_changes_is_found) {
    constexpr std::uint32_t seed = 11;
    std::mt19937 chance(seed);
    const Seal seal = SealOf(run, 60);
    for (int i = 0; i < 100; ++i) {
        std::string changed = run;
        char& byte = changed[chance() % changed.size()];
        byte = static_cast<char>(byte ^ (1 << chance() % 8));
        EXPECT_EQ(Check(changed, seal).state, SealCheck::State::changed);
    }
}

TEST(Seal, The_slices_change_nothing) {
    EXPECT_EQ(SealOf(run, 60, 1).points, SealOf(run, 60, run.size()).points);
    EXPECT_EQ(Check(run, SealOf(run, 60), 1).state, SealCheck::State::unchanged);
}

TEST(Seal, An_empty_file_has_a_seal_too) {
    const Seal seal = SealOf("", 0);
    ASSERT_EQ(seal.points.size(), 1u);
    EXPECT_EQ(Check("", seal).state, SealCheck::State::unchanged);
    EXPECT_EQ(Check("x", seal).state, SealCheck::State::grown);
}

TEST(Seal, The_text_is_read_back_as_it_was_written) {
    const Seal seal = SealOf(run, 60);
    const std::string text = SealText(seal, "run.4ch");
    EXPECT_TRUE(text.starts_with("Vantrel seal of run.4ch\nSealed: 21.Nov.2026 14:30:07\n"));
    const auto read = Mreport::ReadSeal(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->sealedAt, seal.sealedAt);
    EXPECT_EQ(read->points, seal.points);
}

TEST(Seal, A_text_that_is_no_seal_is_refused) {
    const std::string text = SealText(SealOf(run, 2), "run.4ch");
    std::string swapped = text;
    swapped += text.substr(text.rfind('\n', text.size() - 2) + 1); // the last point once more
    for (const std::string& other :
         {std::string(), std::string("Dear all,\n"), text.substr(0, 60), text + "x\n", swapped,
          text.substr(0, text.size() - 3), std::string(5000, '9')})
        EXPECT_FALSE(Mreport::ReadSeal(other)) << other.substr(0, 80);
}
