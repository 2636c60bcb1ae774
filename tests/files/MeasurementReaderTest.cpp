#include "files/MeasurementReader.h"

#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "files/MeasurementLines.h"
#include "files/MeasuringRun.h"
#include "files/SetUpRun.h"
#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using FileOpr::MeasurementReader;
using FileOpr::MeasurementRecord;
using mWinInit::Calibration;
using mWinInit::ChannelSetup;

std::string Padded(std::string text) {
    text.resize(12, ' ');
    return text;
}

std::vector<MeasurementRecord> RecordsOf(std::string_view text) {
    MeasurementReader reader(text);
    std::vector<MeasurementRecord> records;
    for (MeasurementRecord record; reader.Next(record);)
        records.push_back(record);
    return records;
}

TEST(MeasurementReader, The_header_is_taken_apart) {
    fake::Platform platform;
    FileOpr::MeasuringRun run;
    SetUpRun();
    const auto file = platform.folder.Path() / "run.4ch";
    run.CreateHeadLines(file);
    const auto header = FileOpr::ReadMeasurementFile(file).header;
    EXPECT_EQ(header.projectName, "Well 7");
    EXPECT_EQ(header.analyst, "A. Nalyst");
    EXPECT_EQ(header.createdAt, "14:05:33  07.Mar.2003");
    EXPECT_EQ(header.channelCount, 4);
    EXPECT_TRUE(header.hasCalibration);
    EXPECT_EQ(header.channels[1].electrode, "Ca");
    EXPECT_EQ(header.channels[1].tempSensor, "2");
    EXPECT_EQ(header.channels[1].calibrationTime, "10:12:40");
    EXPECT_EQ(header.channels[1].stdUnit, "mol/L");
    EXPECT_EQ(header.channels[1].standard[2], "0.01");
    EXPECT_EQ(header.channels[1].caliData[0], "-55.3");
    EXPECT_EQ(header.channels[1].slope[1], "28.9");
    EXPECT_EQ(header.channels[3].slope[1], "N/A");
}

TEST(MeasurementReader, The_row_of_channels_alone_tells_how_many_there_are) {
    MeasurementReader reader("Channel :      \tChan 1      \tChan 2      \r\n");
    EXPECT_EQ(reader.Header().channelCount, 2);
    EXPECT_FALSE(reader.Header().hasElectrodes);
}

TEST(MeasurementReader, Text_that_looks_like_a_record_is_only_text) {
    const std::string text = "Project Name: Record 5\tAnalyst: ----\tReport created at: mV\r\n"
                             "Record 1\tAt\tt1\r\nComment:\tRecord 2\r\nmV\t1\t2\r\n" +
                             Separator() +
                             "Record 2\tAt\tt2\r\nComment:\tComment:\tppm\r\nmV\t3\t4\r\n" +
                             Separator() + "Record keeping\r\n";
    MeasurementReader reader(text);
    EXPECT_EQ(reader.Header().projectName, "Record 5");
    EXPECT_EQ(reader.Header().analyst, "----");
    const auto records = RecordsOf(text);
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].comment, "Record 2");
    EXPECT_EQ(records[0].cells[1][Quantity::mV], Padded("2"));
    EXPECT_EQ(records[1].number, 2);
    EXPECT_EQ(records[1].comment, "Comment:\tppm");
    EXPECT_EQ(records[1].cells[0][Quantity::ppm], Padded(""));
}

TEST(MeasurementReader, A_comment_of_dashes_ends_no_record) {
    const auto records = RecordsOf("Record 1\tAt\tt\r\nComment:\t------------\r\nmV\t1\r\n");
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].comment, "------------");
    EXPECT_EQ(records[0].cells[0][Quantity::mV], Padded("1"));
}

TEST(MeasurementReader, LF_ends_lines_as_CR_LF_does) {
    const auto records =
        RecordsOf("Record 12\tAt\tnow\nComment:\thi\nmV\t1\n------\nRecord 13\nComment:\n");
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].timeStamp, "now");
    EXPECT_EQ(records[0].comment, "hi");
    EXPECT_EQ(records[1].number, 13);
}

TEST(MeasurementReader, A_record_cut_off_before_its_separator_is_given_and_marked) {
    const std::string text = "Record 1\tAt\tt\r\nComment:\t\r\nmV\t1\r\n" + Separator() +
                             "Record 2\tAt\tt\r\nComment:\t\r\nmV\t7";
    MeasurementReader reader(text);
    MeasurementRecord record;
    ASSERT_TRUE(reader.Next(record));
    EXPECT_TRUE(reader.LastWasComplete());
    ASSERT_TRUE(reader.Next(record));
    EXPECT_FALSE(reader.LastWasComplete());
    EXPECT_EQ(record.number, 2);
    EXPECT_EQ(record.cells[0][Quantity::mV], Padded("7"));
    EXPECT_FALSE(reader.Next(record));
}

TEST(MeasurementReader, A_cut_record_does_not_swallow_the_next) {
    const std::string next = "\r\nRecord 2\tAt\tt\r\nComment:\tx\r\nmV\t1\r\n------\r\n";
    const auto cutInARow = RecordsOf("Record 1\tAt\tt\r\nComment:\t\r\nmV\t7" + next);
    ASSERT_EQ(cutInARow.size(), 2U);
    EXPECT_EQ(cutInARow[0].comment, "");
    EXPECT_EQ(cutInARow[0].cells[0][Quantity::mV], Padded("7"));
    EXPECT_EQ(cutInARow[1].comment, "x");
    const auto cutInTheComment = RecordsOf("Record 1\tAt\tt\r\nComm" + next);
    ASSERT_EQ(cutInTheComment.size(), 1U) << "without its comment line it is no record";
    EXPECT_EQ(cutInTheComment[0].number, 2);
    EXPECT_EQ(cutInTheComment[0].comment, "x");
}

TEST(MeasurementReader, A_record_that_the_next_one_cuts_off_is_marked) {
    MeasurementReader reader("Record 1\r\nComment:\r\nmV\t7\r\nRecord 2\r\nComment:\r\n------\r\n");
    MeasurementRecord record;
    ASSERT_TRUE(reader.Next(record));
    EXPECT_FALSE(reader.LastWasComplete());
    ASSERT_TRUE(reader.Next(record));
    EXPECT_EQ(record.number, 2);
    EXPECT_TRUE(reader.LastWasComplete());
}

TEST(MeasurementReader, A_header_row_tells_whether_it_is_there) {
    EXPECT_FALSE(MeasurementReader("Channel :\tChan 1\r\n").Header().hasElectrodes);
    const MeasurementReader reader("Electrode   :\t Ca \tNone\r\nStandard 7:\t1\r\n");
    EXPECT_TRUE(reader.Header().hasElectrodes);
    EXPECT_EQ(reader.Header().channelCount, 2);
    EXPECT_EQ(reader.Header().channels[0].electrode, "Ca");
}

TEST(MeasurementReader, Cells_beyond_eight_and_unknown_rows_are_passed_over) {
    const auto records = RecordsOf(
        "Record 1\nComment:\t\nmV\t1\t2\t3\t4\t5\t6\t7\t8\t9\nvolts\t1\nNot even a row\n");
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].cells[7][Quantity::mV], Padded("8"));
}

TEST(MeasurementReader, A_number_beyond_32_bits_is_zero) {
    EXPECT_EQ(MeasurementLines::RecordNumber("Record 2147483647\t"), 2147483647);
    EXPECT_EQ(MeasurementLines::RecordNumber("Record 2147483648\t"), 0);
    EXPECT_EQ(MeasurementLines::RecordNumber("Record x"), 0);
    EXPECT_EQ(MeasurementLines::RecordNumber("Record 7:"), 7);
    EXPECT_EQ(MeasurementLines::RecordNumber("Record 7/"), 7);
}

TEST(MeasurementReader, A_file_tells_whether_its_last_record_is_whole) {
    fake::Platform platform;
    const auto file = platform.folder.Path() / "run.4ch";
    const std::string whole = "Record 1\tAt\tt\r\nComment:\t\r\nmV\t1\r\n" + Separator();
    WriteBytes(file, whole);
    EXPECT_TRUE(FileOpr::ReadMeasurementFile(file).complete);
    WriteBytes(file, whole + "Record 2\tAt\tt\r\nComment:\t\r\nmV\t7");
    EXPECT_FALSE(FileOpr::ReadMeasurementFile(file).complete);
}

TEST(MeasurementReader, A_file_that_is_missing_is_named) {
    fake::Platform platform;
    const auto file = platform.folder.Path() / "none.4ch";
    try {
        FileOpr::ReadMeasurementFile(file);
        FAIL() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.what(), "Reading " + file.string() + ": Path not found");
    }
}

TEST(MeasurementReader, A_missing_file_and_a_folder_are_run_time_errors) {
    fake::Platform platform;
    EXPECT_THROW(FileOpr::ReadMeasurementFile(platform.folder.Path() / "none.4ch"), RunTimeError);
    EXPECT_THROW(FileOpr::ReadMeasurementFile(platform.folder.Path()), RunTimeError);
}

TEST(MeasurementReader, An_empty_file_has_no_records) {
    EXPECT_TRUE(RecordsOf("").empty());
    EXPECT_EQ(MeasurementReader("").Header().channelCount, 0);
}

/// Runs that a generator makes up: what the reader finds must be what went into the writer.
class GeneratedRun : public testing::TestWithParam<unsigned> {
protected:
    int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

    /// Any characters of the code page; line breaks and tabs are the writer's own business.
    std::string Text(int longest) {
        std::string text;
        for (int n = Pick(0, longest); n > 0; --n) {
            const char letter = static_cast<char>(Pick(1, 255));
            text += letter == '\r' || letter == '\n' || letter == '\t' ? '?' : letter;
        }
        return text;
    }

    void MakeUpRun() {
        mWinInit::Reset(Pick(0, 1) == 0 ? 4 : 8);
        mWinInit::ProjectInfo.ProjectName = Text(60);
        mWinInit::ProjectInfo.Experimentator = Text(60);
        const std::array<std::string, 6> electrodes{"H (pH)", "Redox",        "None",
                                                    "Ca",     "Ca sea water", "ClO4"};
        for (std::size_t i = 0; i < maxChannels; ++i) {
            auto& channel = ChannelSetup[i];
            channel.Electrode = electrodes[static_cast<std::size_t>(Pick(0, 5))];
            channel.SerialNo = Text(20);
            channel.RefType = Text(12);
            channel.TempSensor = static_cast<std::int16_t>(Pick(-1, 4));
            auto& record = Calibration[i];
            record.PointCount = static_cast<std::int16_t>(Pick(0, 6));
            record.StdUnit = static_cast<float>(Pick(0, 1));
            record.CalibrationDate = "10:12:40 07.Mar.2003";
            for (auto& value : record.Standard)
                value = static_cast<float>(Pick(-99999, 99999)) / 1000;
            for (auto& value : record.CaliData)
                value = static_cast<float>(Pick(-99999, 99999)) / 100;
            for (auto& value : record.Slope)
                value = static_cast<float>(Pick(-999, 999)) / 10;
        }
    }

    FileOpr::DisplayedChannels MakeUpReading() {
        FileOpr::DisplayedChannels displayed;
        for (auto& channel : displayed)
            for (auto& cell : channel)
                cell = Text(14);
        for (auto& channel : displayed)
            if (Pick(0, 3) == 0)
                channel[Quantity::mV] = std::string(static_cast<std::size_t>(Pick(0, 3)), ' ');
        return displayed;
    }

    static std::string Cell(const std::string& text) { return Padded(text.substr(0, 12)); }

    static std::string Trimmed(const std::string& text) {
        const auto first = text.find_first_not_of(' ');
        return first == std::string::npos
                   ? ""
                   : text.substr(first, text.find_last_not_of(' ') - first + 1);
    }

    static bool IsIdle(const std::string& potential) {
        return std::ranges::all_of(potential,
                                   [](char c) { return static_cast<unsigned char>(c) < 33; });
    }

    static void CheckRecord(const MeasurementRecord& record, const MeasurementFormat::RunRows& rows,
                            const FileOpr::DisplayedChannels& displayed) {
        const PerQuantity<bool> present{true, rows.pH, rows.ion, rows.ion, true};
        const std::size_t channels = mWinInit::ChannelsInUse();
        for (std::size_t i = 0; i < maxChannels; ++i)
            for (const auto& row : Quantities::table) {
                const Quantity q = row.quantity;
                std::string expected = Padded("");
                if (i < channels && present[q])
                    expected =
                        IsIdle(displayed[i][Quantity::mV]) ? Padded("NA") : Cell(displayed[i][q]);
                EXPECT_EQ(record.cells[i][q], expected) << "channel " << i << " row " << row.label;
            }
    }

    static void CheckHeader(const FileOpr::MeasurementHeader& header) {
        const std::size_t channels = mWinInit::ChannelsInUse();
        EXPECT_EQ(header.projectName, mWinInit::ProjectInfo.ProjectName);
        EXPECT_EQ(header.analyst, mWinInit::ProjectInfo.Experimentator);
        EXPECT_EQ(header.channelCount, channels);
        for (std::size_t i = 0; i < channels; ++i) {
            EXPECT_EQ(header.channels[i].electrode, ChannelSetup[i].Electrode);
            EXPECT_EQ(header.channels[i].serialNo, Trimmed(Cell(ChannelSetup[i].SerialNo)));
            if (header.hasCalibration)
                CheckCalibration(header.channels[i], Calibration[i]);
        }
    }

    static void CheckCalibration(const FileOpr::MeasurementHeader::Channel& channel,
                                 const CalibrationRecord& record) {
        const std::size_t points = record.Points();
        if (points == 0) {
            EXPECT_EQ(channel.pointCount, "N/A");
            return;
        }
        EXPECT_EQ(channel.pointCount, std::to_string(points));
        for (std::size_t k = 0; k < points; ++k) {
            EXPECT_EQ(NumberText::LeadingSingle(channel.standard[k]), record.Standard[k]);
            EXPECT_EQ(NumberText::LeadingSingle(channel.caliData[k]), record.CaliData[k]);
        }
        for (std::size_t k = 0; k + 1 < points; ++k)
            EXPECT_EQ(NumberText::LeadingSingle(channel.slope[k]), record.Slope[k]);
    }

    std::mt19937 random_{GetParam()};
};

TEST_P(GeneratedRun, What_was_written_is_read_back) {
    fake::Platform platform;
    FileOpr::MeasuringRun run;
    MakeUpRun();
    const auto file = platform.folder.Path() / "run";
    run.CreateHeadLines(file);
    std::vector<FileOpr::DisplayedChannels> readings;
    std::vector<std::string> comments;
    for (int n = Pick(0, 6); n > 0; --n) {
        readings.push_back(MakeUpReading());
        comments.push_back(Text(Pick(0, 5) == 0 ? 10000 : 80));
        run.SaveMeasure(file, static_cast<std::int32_t>(readings.size()), comments.back(),
                        readings.back());
    }

    const auto read = FileOpr::ReadMeasurementFile(file);
    CheckHeader(read.header);
    ASSERT_EQ(read.records.size(), readings.size());
    EXPECT_TRUE(read.complete);
    for (std::size_t n = 0; n < readings.size(); ++n) {
        EXPECT_EQ(read.records[n].number, static_cast<std::int32_t>(n + 1));
        EXPECT_EQ(read.records[n].timeStamp, "14:05:33 07.Mar.2003");
        EXPECT_EQ(read.records[n].comment, comments[n]);
        CheckRecord(read.records[n], run.Rows(), readings[n]);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, GeneratedRun, testing::Range(1U, 101U));

} // namespace
