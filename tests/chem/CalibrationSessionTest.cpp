#include "chem/CalibrationSession.h"
#include "chem/Measure.h"

#include <gtest/gtest.h>

#include <functional>

using Action = CalibrationSession::Action;
using Recorded = CalibrationSession::Recorded;

namespace {

CalibrationSession SessionOf(std::vector<std::size_t> channels, bool isPH = false) {
    CalibrationSession session;
    session.Start(isPH, StandardUnit::ppm);
    session.SetChannels(std::move(channels));
    return session;
}

/// Reads and records the current point of every channel at the same mV.
Recorded RecordPoint(CalibrationSession& session, float standard, float potential_mV) {
    session.SetStandard(session.CurrentPoint(), standard);
    session.BeginReading();
    for (const std::size_t channel : session.Channels())
        session.SetLive(channel, potential_mV);
    return session.Record();
}

CalibrationRecord StoredRecord() {
    CalibrationRecord record;
    record.CalibrationDate = "10:12 07.Mar.2003";
    record.PointCount = 3;
    record.StdUnit = 1;
    record.Standard = {0.001F, 0.01F, 0.1F};
    record.CaliData = {-55.34F, 2.1F, 60};
    return record;
}

} // namespace

TEST(CalibrationSession, A_new_one_reads_the_first_of_two_points) {
    const auto session = SessionOf({2});
    EXPECT_EQ(session.PointCount(), 2);
    EXPECT_EQ(session.CurrentPoint(), 0);
    EXPECT_EQ(session.MainAction(), Action::read);
    EXPECT_FALSE(session.IsComplete());
    EXPECT_FALSE(session.IsFinished());
}

TEST(CalibrationSession, Recording_before_a_reading_has_arrived_does_nothing) {
    auto session = SessionOf({0});
    session.SetStandard(0, 10);
    session.BeginReading();
    EXPECT_EQ(session.MainAction(), Action::record);
    EXPECT_EQ(session.Record(), Recorded::nothing);
    EXPECT_TRUE(session.IsReading());
    EXPECT_FALSE(session.IsRecorded(0));
}

TEST(CalibrationSession, The_second_of_two_points_ends_the_entry) {
    auto session = SessionOf({0});
    EXPECT_EQ(RecordPoint(session, 1, 100), Recorded::nextPoint);
    EXPECT_EQ(session.CurrentPoint(), 1);
    EXPECT_EQ(session.MainAction(), Action::read);
    EXPECT_EQ(RecordPoint(session, 10, 159), Recorded::allPoints);
    EXPECT_TRUE(session.IsComplete());
    EXPECT_EQ(session.MainAction(), Action::showSummary);
}

TEST(CalibrationSession, A_point_is_recorded_from_its_own_reading_never_from_the_last_points) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    session.BeginReading();
    EXPECT_FALSE(session.HasLive());
    EXPECT_EQ(session.Record(), Recorded::nothing);
    EXPECT_FALSE(session.IsRecorded(1));
}

TEST(CalibrationSession, Reading_that_was_stopped_shows_no_value_any_more) {
    auto session = SessionOf({0});
    session.BeginReading();
    session.SetLive(0, 100);
    session.StopReading();
    EXPECT_FALSE(session.Live(0));
}

TEST(CalibrationSession, The_summary_waits_for_the_points_that_are_missing) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    session.SetCurrentPoint(0);
    EXPECT_EQ(session.MainAction(), Action::read);
}

TEST(CalibrationSession, Without_a_channel_nothing_is_recorded) {
    auto session = SessionOf({});
    EXPECT_FALSE(session.IsRecorded(0));
    EXPECT_FALSE(session.HasLive());
}

TEST(CalibrationSession, A_point_is_not_recorded_here_for_a_channel_that_came_later) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    ASSERT_TRUE(session.IsRecordedHere(0));
    session.SetChannels({0, 1});
    EXPECT_FALSE(session.IsRecordedHere(0));
}

TEST(CalibrationSession, What_is_recorded_is_the_displayed_value) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, -55.34F);
    EXPECT_EQ(session.Reading(0, 0), -55.3F);
}

TEST(CalibrationSession, A_point_left_out_is_taken_up_after_the_last) {
    auto session = SessionOf({0});
    session.SetPointCount(3);
    session.SetCurrentPoint(1);
    EXPECT_EQ(RecordPoint(session, 10, 50), Recorded::nextPoint);
    EXPECT_EQ(RecordPoint(session, 100, 80), Recorded::nextPoint);
    EXPECT_EQ(session.CurrentPoint(), 0);
    EXPECT_EQ(session.MainAction(), Action::read);
}

TEST(CalibrationSession, A_stopped_reading_leaves_the_recorded_points) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    session.SetStandard(1, 10);
    session.BeginReading();
    session.SetLive(0, 140);
    session.StopReading();
    EXPECT_EQ(session.MainAction(), Action::read);
    EXPECT_EQ(session.CurrentPoint(), 1);
    EXPECT_EQ(session.Reading(0, 0), 100.0F);
    EXPECT_FALSE(session.IsRecorded(1));
    session.BeginReading();
    EXPECT_FALSE(session.HasLive()) << "the value of the reading that was stopped must not count";
}

TEST(CalibrationSession, A_point_read_again_but_not_recorded_keeps_its_value) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    session.SetCurrentPoint(0);
    session.BeginReading();
    session.SetLive(0, 90);
    session.StopReading();
    EXPECT_EQ(session.Reading(0, 0), 100.0F);
}

TEST(CalibrationSession, The_current_point_stays_while_it_is_read) {
    auto session = SessionOf({0});
    session.BeginReading();
    session.SetCurrentPoint(1);
    EXPECT_EQ(session.CurrentPoint(), 0);
}

TEST(CalibrationSession, A_cleared_point_is_read_again) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    RecordPoint(session, 10, 159);
    session.SetFinished();
    session.SetCurrentPoint(0);
    session.ClearPoint(0);
    EXPECT_FALSE(session.IsFinished());
    EXPECT_EQ(session.MainAction(), Action::read);
    EXPECT_EQ(RecordPoint(session, 1, 101), Recorded::nextPoint);
    EXPECT_EQ(session.MainAction(), Action::showSummary);
}

TEST(CalibrationSession, Every_change_after_the_summary_takes_its_end_back) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    RecordPoint(session, 10, 159);
    const std::vector<std::function<void()>> changes = {
        [&] { session.SetUnit(StandardUnit::mol_per_litre); },
        [&] { session.SetPointCount(3); },
        [&] { session.SetStandard(0, 2); },
        [&] { session.Touch(); },
        [&] {
            session.SetChannels({0, 1});
        },
        [&] { RecordPoint(session, 100, 200); },
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        session.SetFinished();
        changes[i]();
        EXPECT_FALSE(session.IsFinished()) << "change " << i;
    }
    session.SetFinished();
    session.SetStandard(0, 2);
    EXPECT_TRUE(session.IsFinished()) << "the same standard is no change";
}

TEST(CalibrationSession, The_number_of_points_stays_between_2_and_6) {
    auto session = SessionOf({0});
    session.SetPointCount(7);
    EXPECT_EQ(session.PointCount(), 6);
    session.SetCurrentPoint(5);
    session.SetPointCount(1);
    EXPECT_EQ(session.PointCount(), 2);
    EXPECT_EQ(session.CurrentPoint(), 1);
}

TEST(CalibrationSession, Fewer_points_can_complete_it_and_more_bring_hidden_ones_back) {
    auto session = SessionOf({0});
    session.SetPointCount(3);
    RecordPoint(session, 1, 100);
    RecordPoint(session, 10, 159);
    EXPECT_FALSE(session.IsComplete());
    session.SetPointCount(2);
    EXPECT_TRUE(session.IsComplete());
    session.SetPointCount(6);
    EXPECT_EQ(session.Reading(0, 1), 159.0F);
}

TEST(CalibrationSession, Stored_points_are_loaded_whole_but_offered_for_reading_anew) {
    auto session = SessionOf({3});
    session.Load(3, StoredRecord());
    EXPECT_EQ(session.PointCount(), 3);
    EXPECT_EQ(session.Standard(1), 0.01F);
    EXPECT_EQ(session.Reading(3, 0), -55.34F) << "a stored value is kept as it is";
    EXPECT_TRUE(session.IsComplete());
    EXPECT_EQ(session.MainAction(), Action::read);
}

TEST(CalibrationSession, A_record_that_is_no_calibration_loads_nothing) {
    auto session = SessionOf({0});
    CalibrationRecord record = StoredRecord();
    record.PointCount = 1;
    session.Load(0, record);
    EXPECT_EQ(session.PointCount(), 2);
    EXPECT_FALSE(session.IsRecorded(0));
    record.PointCount = 9;
    session.Load(0, record);
    EXPECT_EQ(session.PointCount(), 6);
}

TEST(CalibrationSession, Several_channels_record_one_point_together) {
    auto session = SessionOf({0, 2});
    session.SetStandard(0, 1);
    session.BeginReading();
    session.SetLive(0, 10);
    EXPECT_FALSE(session.HasLive());
    EXPECT_EQ(session.Record(), Recorded::nothing);
    session.SetLive(2, 20);
    EXPECT_EQ(session.Record(), Recorded::nextPoint);
    EXPECT_EQ(session.Reading(0, 0), 10.0F);
    EXPECT_EQ(session.Reading(2, 0), 20.0F);
    EXPECT_FALSE(session.Reading(1, 0));
}

TEST(CalibrationSession, A_channel_that_joins_must_read_every_point_too) {
    auto session = SessionOf({0, 1});
    RecordPoint(session, 1, 100);
    session.SetChannels({0, 1, 3});
    EXPECT_FALSE(session.IsRecorded(0));
    EXPECT_EQ(session.Reading(0, 0), 100.0F);
    session.SetChannels({0, 1});
    EXPECT_TRUE(session.IsRecorded(0));
}

TEST(CalibrationSession, Without_channels_nothing_is_complete) {
    auto session = SessionOf({});
    EXPECT_EQ(RecordPoint(session, 1, 1), Recorded::nothing);
    EXPECT_FALSE(session.IsComplete());
}

TEST(CalibrationSession, The_outcome_of_pH_buffers_has_the_displayed_slope) {
    auto session = SessionOf({1}, true);
    RecordPoint(session, 4, 177.5F);
    RecordPoint(session, 7, 0);
    const auto outcome = session.OutcomeOf(1, CalibrationRecord());
    EXPECT_TRUE(outcome.usable);
    EXPECT_EQ(outcome.record.PointCount, 2);
    EXPECT_EQ(outcome.record.Standard[0], 4.0F);
    EXPECT_EQ(outcome.record.CaliData[0], 177.5F);
    EXPECT_EQ(outcome.record.Slope[0], -59.2F);
    EXPECT_TRUE(Measure::IsPHMode);
}

TEST(CalibrationSession, The_outcome_of_concentrations_is_per_decade_in_either_unit) {
    for (const auto unit : {StandardUnit::ppm, StandardUnit::mol_per_litre}) {
        auto session = SessionOf({0});
        session.SetUnit(unit);
        RecordPoint(session, 1, 100);
        RecordPoint(session, 10, 159);
        const auto outcome = session.OutcomeOf(0, CalibrationRecord());
        EXPECT_TRUE(outcome.usable);
        EXPECT_EQ(outcome.record.Slope[0], 59.0F);
        EXPECT_EQ(outcome.record.StdUnit, static_cast<float>(unit));
        EXPECT_FALSE(Measure::IsPHMode);
    }
}

TEST(CalibrationSession, Equal_standards_and_a_standard_of_0_give_no_usable_outcome) {
    auto equal = SessionOf({0});
    RecordPoint(equal, 10, 100);
    RecordPoint(equal, 10, 159);
    EXPECT_FALSE(equal.OutcomeOf(0, CalibrationRecord()).usable);
    auto zero = SessionOf({0});
    RecordPoint(zero, 0, 100);
    RecordPoint(zero, 10, 159);
    EXPECT_FALSE(zero.OutcomeOf(0, CalibrationRecord()).usable);
}

TEST(CalibrationSession, The_slopes_before_bad_data_stay) {
    auto session = SessionOf({0});
    session.SetPointCount(3);
    RecordPoint(session, 1, 100);
    RecordPoint(session, 10, 159);
    RecordPoint(session, 10, 160);
    const auto outcome = session.OutcomeOf(0, CalibrationRecord());
    EXPECT_FALSE(outcome.usable);
    EXPECT_EQ(outcome.record.Slope[0], 59.0F);
    EXPECT_EQ(outcome.record.Slope[1], 0.0F);
}

TEST(CalibrationSession, An_unfinished_one_has_no_usable_outcome) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    const auto outcome = session.OutcomeOf(0, CalibrationRecord());
    EXPECT_FALSE(outcome.usable);
    EXPECT_EQ(outcome.record.Standard[1], 0.0F);
    EXPECT_EQ(outcome.record.CaliData[1], 0.0F);
}

TEST(CalibrationSession, What_it_does_not_write_stays_as_stored) {
    for (const bool isPH : {false, true}) {
        CalibrationSession session = SessionOf({0}, isPH);
        RecordPoint(session, 4, 177.5F);
        RecordPoint(session, 7, 0);
        CalibrationRecord stored = StoredRecord();
        stored.Slope = {57, 58};
        const CalibrationRecord record = session.OutcomeOf(0, stored).record;
        EXPECT_EQ(record.PointCount, 2);
        EXPECT_EQ(record.Standard[1], 7.0F);
        EXPECT_EQ(record.Standard[2], 0.1F);
        EXPECT_EQ(record.CaliData[2], 60.0F);
        EXPECT_EQ(record.Slope[1], 58.0F);
        EXPECT_EQ(record.StdUnit, isPH ? 1.0F : 0.0F) << "a pH electrode has no unit";
    }
}

TEST(CalibrationSession, A_new_start_forgets_what_was_recorded_before) {
    auto session = SessionOf({0});
    session.SetPointCount(3);
    RecordPoint(session, 1, 100);
    session.Start(false, StandardUnit::mol_per_litre);
    EXPECT_EQ(session.PointCount(), 2);
    EXPECT_EQ(session.CurrentPoint(), 0);
    EXPECT_EQ(session.Reading(0, 0), std::nullopt);
    session.SetChannels({0});
    RecordPoint(session, 0.1F, 100);
    RecordPoint(session, 1, 159);
    EXPECT_EQ(session.OutcomeOf(0, {}).record.StdUnit,
              static_cast<float>(StandardUnit::mol_per_litre));
}

TEST(CalibrationSession, A_cleared_point_has_no_value) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    RecordPoint(session, 10, 159);
    session.ClearPoint(0);
    EXPECT_EQ(session.Reading(0, 0), std::nullopt);
    EXPECT_FALSE(session.IsRecorded(0));
    EXPECT_FALSE(session.IsRecordedHere(0));
    EXPECT_FALSE(session.IsComplete());
    EXPECT_EQ(session.Reading(0, 1), 159.0F);
}

TEST(CalibrationSession, A_cleared_point_that_is_loaded_again_is_not_recorded_here) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    session.ClearPoint(0);
    session.Load(0, StoredRecord());
    EXPECT_TRUE(session.IsRecorded(0));
    EXPECT_FALSE(session.IsRecordedHere(0));
}

TEST(CalibrationSession, A_point_behind_the_last_is_not_chosen) {
    auto session = SessionOf({0});
    session.SetCurrentPoint(2);
    EXPECT_EQ(session.CurrentPoint(), 0);
    session.SetCurrentPoint(1);
    EXPECT_EQ(session.CurrentPoint(), 1);
}

TEST(CalibrationSession, The_point_that_is_read_shows_what_arrives_and_another_what_was_recorded) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    session.SetStandard(1, 10);
    session.BeginReading();
    session.SetLive(0, 140);
    EXPECT_EQ(session.Shown(0, 0), 100.0F);
    EXPECT_EQ(session.Shown(0, 1), 140.0F);
    session.StopReading();
    EXPECT_EQ(session.Shown(0, 1), std::nullopt);
}

TEST(CalibrationSession, A_calibration_of_two_points_is_loaded_whole_and_no_third_one_with_it) {
    auto session = SessionOf({0});
    CalibrationRecord record = StoredRecord();
    record.PointCount = 2;
    session.Load(0, record);
    EXPECT_EQ(session.Reading(0, 1), 2.1F);
    EXPECT_EQ(session.Standard(1), 0.01F);
    EXPECT_EQ(session.Reading(0, 2), std::nullopt);
    EXPECT_EQ(session.Standard(2), std::nullopt);
}

TEST(CalibrationSession, What_arrives_while_nothing_is_read_is_not_recorded) {
    auto session = SessionOf({0});
    session.SetStandard(0, 1);
    session.BeginReading();
    session.SetLive(0, 100);
    EXPECT_EQ(session.Record(), Recorded::nextPoint);
    EXPECT_EQ(session.Record(), Recorded::nothing) << "the next point is not read yet";
    EXPECT_EQ(session.CurrentPoint(), 1);
    EXPECT_EQ(session.Reading(0, 1), std::nullopt);
}

TEST(CalibrationSession, A_recorded_point_without_its_standard_is_not_complete) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    session.BeginReading();
    session.SetLive(0, 159);
    EXPECT_EQ(session.Record(), Recorded::nextPoint);
    EXPECT_EQ(session.CurrentPoint(), 1) << "no point is left to go to";
    EXPECT_FALSE(session.IsComplete());
    const auto outcome = session.OutcomeOf(0, {});
    EXPECT_FALSE(outcome.usable);
    EXPECT_EQ(outcome.record.Standard[1], 0.0F);
}

TEST(CalibrationSession, A_point_recorded_once_more_takes_the_end_back) {
    auto session = SessionOf({0});
    RecordPoint(session, 1, 100);
    RecordPoint(session, 10, 159);
    session.SetFinished();
    session.SetCurrentPoint(0);
    RecordPoint(session, 1, 100);
    EXPECT_FALSE(session.IsFinished());
}
