#include "report/HistorySeal.h"

#include "files/NotedRecording.h"
#include "files/Recovery.h"
#include "files/TargetSeal.h"
#include "platform/System.h"

namespace {

namespace fs = std::filesystem;
using FileOpr::Recording;
using Mode = Recording::Mode;

class HistorySeal : public NotedRecording {
protected:
    void Record(int records = 1, Mode mode = Mode::manual) {
        if (run.targetFile.empty())
            platform.dialogs.ExpectFileDialog(
                [this](const platform::FileDialogRequest&) { return target; });
        for (int i = 0; i < records; ++i)
            recording.Record(mode, "1", Taking());
    }
    std::vector<Mreport::SealPoint> Points() const {
        const auto seal = Mreport::SealFromHistory(target);
        return seal ? seal->points : std::vector<Mreport::SealPoint>{};
    }
    std::string Verdict() const {
        const auto seal = Mreport::SealFromHistory(target);
        if (!seal)
            return "unknown";
        Mreport::FileSource source(target);
        Mreport::SealCheck check(source, *seal);
        while (check.Step(1000))
            continue;
        return check.Text();
    }
    std::string SumOfTarget() const {
        const auto digest = platform::MakeSha256();
        digest->Add(ReadBytes(target));
        return digest->Hex();
    }
};

} // namespace

TEST_F(HistorySeal, Each_flush_adds_the_length_the_record_and_the_sum_of_the_whole_file) {
    Record(2);
    run.FlushTempFile();
    const auto first = fs::file_size(target);
    EXPECT_EQ(Points(), (std::vector<Mreport::SealPoint>{{first, 2, SumOfTarget()}}));
    Record(3);
    run.FlushTempFile();
    const auto points = Points();
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[1], (Mreport::SealPoint{fs::file_size(target), 5, SumOfTarget()}));
    EXPECT_EQ(Verdict(), "unchanged since 07.Mar.2003 14:05:33");
}

TEST_F(HistorySeal, A_file_that_grew_or_was_changed_behind_the_programs_back_is_told) {
    Record(2);
    run.FlushTempFile();
    Record(1);
    run.FlushTempFile();
    const std::string whole = ReadBytes(target);
    WriteBytes(target, whole + "more");
    EXPECT_EQ(Verdict(), "grown since 07.Mar.2003 14:05:33; what was sealed is unchanged");
    std::string changed = whole;
    changed.back() = ' ';
    WriteBytes(target, changed);
    EXPECT_EQ(Verdict().find("changed since 07.Mar.2003 14:05:33: byte "), 0U) << Verdict();
    EXPECT_NE(Verdict().find("behind record 2, or later"), std::string::npos) << Verdict();
    WriteBytes(target, whole.substr(0, whole.size() - 1));
    EXPECT_EQ(Verdict().find("changed since 07.Mar.2003 14:05:33: it ends"), 0U) << Verdict();
}

TEST_F(HistorySeal, The_sum_goes_on_with_what_the_program_wrote_whatever_happened_to_the_file) {
    Record(2);
    run.FlushTempFile();
    std::string bytes = ReadBytes(target);
    const auto place = bytes.find("59.0");
    bytes[place] = '6';
    WriteBytes(target, bytes);
    Record(1);
    run.FlushTempFile();
    EXPECT_EQ(Verdict().find("changed since"), 0U) << Verdict();
}

TEST_F(HistorySeal, A_new_file_of_the_same_name_has_nothing_to_do_with_the_old_one) {
    Record(2);
    run.FlushTempFile();
    recording.Leave();
    run.targetFile.clear();
    Record(5);
    run.FlushTempFile();
    EXPECT_EQ(Points().size(), 1U);
    EXPECT_EQ(Verdict(), "unchanged since 07.Mar.2003 14:05:33");
}

TEST_F(HistorySeal,
       While_records_go_straight_into_the_file_it_is_sealed_each_minute_and_at_the_end) {
    Record(1, Mode::automatic);
    recording.ReportOpened(); // flushes
    EXPECT_EQ(Points().size(), 1U);
    RunFor(59);
    EXPECT_EQ(Points().size(), 1U);
    RunFor(5);
    EXPECT_EQ(Points().size(), 2U);
    recording.Stop();
    EXPECT_EQ(Points().size(), 3U);
    EXPECT_EQ(Points().back().record, 65);
    EXPECT_EQ(Verdict(), "unchanged since 07.Mar.2003 14:05:33");
}

TEST_F(HistorySeal, Recovered_records_are_sealed_with_the_file) {
    Record(2);
    run.ReleaseTempFile();
    auto unfinished = FileOpr::FindUnfinishedRecordings();
    ASSERT_EQ(unfinished.size(), 1U);
    FileOpr::Recover(unfinished[0]);
    EXPECT_EQ(Points(),
              (std::vector<Mreport::SealPoint>{{fs::file_size(target), 2, SumOfTarget()}}));
    EXPECT_EQ(Verdict(), "unchanged since 07.Mar.2003 14:05:33");
}

TEST_F(HistorySeal, Of_a_file_that_was_not_recorded_here_nothing_is_known) {
    WriteBytes(target, "a text");
    EXPECT_EQ(Verdict(), "unknown");
}

TEST_F(HistorySeal, Events_run_while_a_long_file_is_summed_after_a_recovery) {
    constexpr std::size_t length = std::size_t{4} * 1024 * 1024;
    WriteBytes(target, std::string(length, 'x') + "\r\nRecord 7\r\n");
    platform.clock.step = std::chrono::milliseconds(1);
    platform.desktop.eventPasses = 0;
    FileOpr::NoteRecovered(target, "1 record");
    EXPECT_GE(platform.desktop.eventPasses, 16) << "one for each 256 KiB";
    EXPECT_EQ(Points(),
              (std::vector<Mreport::SealPoint>{{fs::file_size(target), 7, SumOfTarget()}}));
}
