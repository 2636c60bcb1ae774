#include "report/RecordTable.h"

#include "report/support/LoadedReport.h"

#include <array>

namespace {

using Place = Mreport::LinePlace;

class RecordTable : public LoadedReport {
protected:
    Mreport::RecordTable table{viewed};

    void Show(const std::string& text) {
        View(text);
        table.Reset();
    }
    std::vector<std::string> Titles() const {
        std::vector<std::string> titles;
        for (const auto& column : table.Columns())
            titles.push_back(column.title);
        return titles;
    }
    std::vector<std::string> Row(std::int64_t row) {
        std::vector<std::string> cells;
        for (std::size_t column = 0; column < table.Columns().size(); ++column)
            cells.push_back(table.Text(row, column));
        return cells;
    }
};

} // namespace

TEST_F(RecordTable, Each_value_that_a_channel_or_sensor_can_have_is_a_column) {
    Show(MeasurementText().File(3));
    EXPECT_EQ(Titles(),
              (std::vector<std::string>{"Record", "Time", "Comment", "Ch. 1 Ca (mV)",
                                        "Ch. 2 H (pH) (mV)", "Ch. 3 Redox (mV)",
                                        "Ch. 2 H (pH) (pH)", "Ch. 1 Ca (ppm)", "Ch. 1 Ca (mol/l)",
                                        "Temp. 1 (\xB0"
                                        "C)",
                                        "Temp. 2 (\xB0"
                                        "C)"}));
}

TEST_F(RecordTable, A_record_is_one_row) {
    MeasurementText text;
    text.comment = [](int record) { return record == 2 ? "sample\tadded" : ""; };
    Show(text.File(3));
    EXPECT_EQ(table.Rows(), 3);
    EXPECT_EQ(Row(1), (std::vector<std::string>{"2", "14:05:33 07.Mar.2003", "sample added", "2.0",
                                                "2.1", "2.2", "1.5", "0.5", "0.5", "0.5", "1.5"}));
}

TEST_F(RecordTable, A_missing_value_is_an_empty_cell_and_another_text_stays) {
    MeasurementText text;
    text.cell = [](int, const std::string&, int channel) {
        return std::string(channel == 0 ? "NA" : channel == 1 ? "Error" : "1.5");
    };
    Show(text.File(1));
    EXPECT_EQ(table.Text(0, 3), "");
    EXPECT_EQ(table.Text(0, 4), "Error");
}

TEST_F(RecordTable, A_shared_sensor_is_told_by_its_first_channel_with_a_value) {
    MeasurementText text;
    text.sensors = {"1", "1", "N/A", "N/A"};
    text.cell = [](int, const std::string&, int channel) {
        return std::string(channel == 0 ? "NA" : "21.5");
    };
    Show(text.File(1));
    EXPECT_EQ(Titles().back(), "Temp. 1 (\xB0"
                               "C)");
    EXPECT_EQ(Row(0).back(), "21.5");
}

TEST_F(RecordTable, Rows_go_on_from_list_to_list) {
    Show(MeasurementText().File(9000));
    ASSERT_EQ(viewed.pages.Count(), 3);
    EXPECT_EQ(table.Rows(), 9000);
    for (const std::int64_t row : {0, 4085, 4086, 4087, 8172, 8173, 8999}) {
        EXPECT_EQ(table.Text(row, 0), std::to_string(row + 1));
        EXPECT_EQ(table.Text(row, 3), std::to_string(row + 1) + ".0");
    }
    EXPECT_EQ(table.PlaceOf(4086), (Place{1, 0}));
    EXPECT_EQ(table.PlaceOf(9000), std::nullopt);
    EXPECT_EQ(table.Text(9000, 0), "");
}

TEST_F(RecordTable, Every_line_of_a_record_leads_to_its_row) {
    Show(MeasurementText().File(9000));
    EXPECT_EQ(table.RowOf({0, MeasurementText::headerLines - 1}), std::nullopt) << "the header";
    for (const std::size_t line : {0U, 3U, 7U})
        EXPECT_EQ(table.RowOf({1, 8 + line}), 4087) << line;
    EXPECT_EQ(table.RowOf({7, 0}), std::nullopt) << "no such list";
}

TEST_F(RecordTable, Records_of_other_lengths_keep_their_rows) {
    MeasurementText text;
    std::string file = text.File(2);
    file += "Record 3\tAt\t14:05:33 07.Mar.2003\r\nComment:\tcut off\r\n";
    file += text.Record(4) + "a foreign line\r\n" + text.Record(5);
    Show(file);
    EXPECT_EQ(table.Rows(), 5);
    EXPECT_EQ(table.Text(2, 2), "cut off");
    EXPECT_EQ(table.Text(2, 3), "");
    EXPECT_EQ(table.Text(3, 3), "4.0");
    EXPECT_EQ(table.Text(4, 0), "5");
}

TEST_F(RecordTable, A_growing_file_gets_more_rows_and_completes_its_last_one) {
    run.measuring = true;
    run.targetFile = File();
    const std::string record = MeasurementText().Record(3);
    Show(MeasurementText().File(2) + record.substr(0, 60));
    ASSERT_EQ(table.Rows(), 3);
    EXPECT_EQ(table.Text(2, 4), "");
    Append(record.substr(60) + MeasurementText().Record(4));
    loader.LiveRecord();
    EXPECT_EQ(table.Update(), 4);
    EXPECT_EQ(table.Text(2, 4), "3.1");
    EXPECT_EQ(table.Text(3, 4), "4.1");
}

TEST_F(RecordTable, Copied_rows_stand_below_the_titles_of_their_columns) {
    Show(MeasurementText().File(5));
    constexpr std::array<std::size_t, 2> columns{0, 3};
    EXPECT_EQ(table.Copy(1, 3, columns), "Record\tCh. 1 Ca (mV)\n2\t2.0\n3\t3.0\n");
}

TEST_F(RecordTable, A_file_without_records_has_no_rows) {
    Show(MeasurementText().Header());
    EXPECT_EQ(table.Rows(), 0);
    EXPECT_EQ(table.RowOf({0, 5}), std::nullopt);
}
