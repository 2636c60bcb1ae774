#include "report/CsvExport.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "report/support/LoadedReport.h"

namespace {

class Csv : public LoadedReport {
protected:
    std::filesystem::path Target() const { return platform.folder.Path() / "out.csv"; }
    std::string Export() {
        Mreport::ExportCsv(viewed, Target(), Mreport::CsvReader::any, [] { return false; });
        return ReadBytes(Target());
    }
};

} // namespace

TEST_F(Csv, Each_record_is_a_row_under_a_heading_with_units) {
    MeasurementText text;
    text.electrodes = {"Ca", "H (pH)"};
    text.sensors = {"1", "N/A"};
    text.cell = [](int record, const std::string& row, int channel) -> std::string {
        if (row == "mV")
            return std::to_string(record) + "." + std::to_string(channel);
        return row == "pH" && channel == 1 ? "7.01" : "NA";
    };
    text.comment = [](int record) { return record == 2 ? "a \"b\", \xB0" : ""; };
    View(text.File(2));
    EXPECT_EQ(Export(), "Record,Time,Comment,Chan 1 Ca (mV),Chan 2 H (pH) (mV),Chan 1 Ca (pH),"
                        "Chan 2 H (pH) (pH),Chan 1 Ca (ppm),Chan 2 H (pH) (ppm),Chan 1 Ca (mol/l),"
                        "Chan 2 H (pH) (mol/l),Chan 1 Ca (\xC2\xB0"
                        "C),Chan 2 H (pH) (\xC2\xB0"
                        "C)\r\n"
                        "1,2003-03-07T14:05:33,,1.0,1.1,,7.01,,,,,,\r\n"
                        "2,2003-03-07T14:05:33,\"a \"\"b\"\", \xC2\xB0\",2.0,2.1,,7.01,,,,,,\r\n");
}

TEST_F(Csv, Rows_that_no_record_has_are_left_out) {
    View("Record 1\tAt\tnow\r\nComment:\t\r\nmV\t3\r\n");
    EXPECT_EQ(Export(), "Record,Time,Comment,Chan 1 (mV)\r\n1,now,,3\r\n");
}

TEST_F(Csv, All_pages_are_exported) {
    View(MeasurementText().File(4200));
    ASSERT_EQ(viewed.pages.Count(), 2);
    EXPECT_EQ(Mreport::ExportCsv(viewed, Target(), Mreport::CsvReader::any, [] { return false; }),
              4200);
    const std::string csv = ReadBytes(Target());
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 4201);
}

TEST_F(Csv, The_records_of_a_span_are_exported_alone) {
    View(MeasurementText().File(4200));
    Mreport::CsvWish wish;
    wish.span = Mreport::RecordSpan{4080, 4090}; // over the end of the first page
    EXPECT_EQ(Mreport::ExportCsv(viewed, Target(), wish, [] { return false; }), 10);
    const std::string csv = ReadBytes(Target());
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 11);
    EXPECT_NE(csv.find("\r\n4081,"), std::string::npos);
    EXPECT_NE(csv.find("\r\n4090,"), std::string::npos);
}

TEST_F(Csv, A_stopped_export_leaves_no_file) {
    View(MeasurementText().File(4200));
    int asked = 0;
    EXPECT_EQ(Mreport::ExportCsv(viewed, Target(), Mreport::CsvReader::any,
                                 [&asked] { return ++asked == 90; }),
              0);
    EXPECT_EQ(asked, 90);
    EXPECT_FALSE(std::filesystem::exists(Target()));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(platform.folder.Path()), {}), 5)
        << "the platform's four folders and the measurement file";
}

TEST_F(Csv, A_folder_that_cannot_be_written_is_said) {
    View(MeasurementText().File(1));
    try {
        Mreport::ExportCsv(viewed, platform.folder.Path() / "no" / "out.csv",
                           Mreport::CsvReader::any, [] { return false; });
        ADD_FAILURE() << "nothing was thrown";
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(std::string(error.what()).ends_with("out.csv: Path not found")) << error.what();
    }
}

TEST_F(Csv, A_spreadsheet_is_told_the_coding_by_the_byte_order_mark) {
    View(MeasurementText().File(1));
    const std::string plain = Export();
    Mreport::ExportCsv(viewed, Target(), Mreport::CsvReader::spreadsheet, [] { return false; });
    EXPECT_EQ(ReadBytes(Target()), "\xEF\xBB\xBF" + plain);
}

TEST_F(Csv, An_idle_channel_has_the_temperature_that_another_gives_for_its_sensor) {
    MeasurementText text;
    text.electrodes = {"Ca", "Cl", "None"};
    text.sensors = {"1", "1", "1"};
    text.cell = [](int, const std::string& row, int channel) -> std::string {
        return row == "\xB0"
                      "C" &&
                       channel == 1
                   ? "21.5"
                   : "NA";
    };
    View(text.File(1));
    EXPECT_NE(Export().find(",21.5,21.5,\r\n"), std::string::npos) << Export();
}

TEST_F(Csv, A_file_coded_in_UTF_8_gives_what_the_same_file_gives_as_it_was_recorded) {
    MeasurementText text;
    text.comment = [](int record) { return record == 2 ? "30 \xB0, warm" : ""; };
    View(text.File(30));
    const std::string csv = Export();
    EXPECT_NE(csv.find("2,2003-03-07T14:05:33,\"30 \xC2\xB0, warm\","), std::string::npos) << csv;
    View(CodePage::ToUtf8(text.File(30)));
    EXPECT_EQ(Export(), csv);
}

TEST_F(Csv, A_cell_that_a_record_lacks_is_not_taken_from_the_record_before) {
    std::string text = MeasurementText().File(4);
    const auto row = text.find("\r\npH", text.find("Record 3")) + 2;
    const auto end = text.find("\r\n", row);
    std::string line = text.substr(row, end - row);
    const auto tab = line.rfind('\t');
    line[tab] = ' '; // as long as before, with a cell less
    text.replace(row, line.size(), line);
    View(text);
    const std::string csv = Export();
    const auto third = csv.find("\r\n3,");
    const auto fourth = csv.find("\r\n4,");
    EXPECT_LT(csv.find("3.5,,0.5,", third), fourth) << csv;
    EXPECT_NE(csv.find("2.5,3.5,0.5,", fourth), std::string::npos) << csv;
}
