#include "report/CsvLines.h"
#include "report/IsoTime.h"

#include <gtest/gtest.h>

namespace {

TEST(CsvText, A_records_time_is_written_as_ISO_8601) {
    EXPECT_EQ(Mreport::IsoTime("14:05:33 07.Mar.2026"), "2026-03-07T14:05:33");
    EXPECT_EQ(Mreport::IsoTime("00:00:00 31.Dec.1999"), "1999-12-31T00:00:00");
}

TEST(CsvText, A_time_in_another_form_stays_as_it_is) {
    for (const char* text :
         {"", "14:05:33 07.Mrz.2026", "14:05 07.Mar.2026", "x4:05:33 07.Mar.2026"})
        EXPECT_EQ(Mreport::IsoTime(text), text);
}

TEST(CsvText, One_time_after_another_is_written_as_each_alone) {
    Mreport::IsoTimes times;
    for (const char* text : {"14:05:33 07.Mar.2026", "14:05:34 07.Mar.2026", "23:59:59 07.Mar.2026",
                             "00:00:00 08.Mar.2026", "14:05 08.Mar.2026", "14:05:3x 08.Mar.2026",
                             "14:05:36 08.Mar.2026", "14:05:36 08.TTT.2026", "14:05:37 08.TTT.2026",
                             "08.Mar.2026", "", "14:05:38 08.Mar.2026"})
        EXPECT_EQ(times.Of(text), Mreport::IsoTime(text));
}

TEST(CsvText, A_field_with_a_comma_quote_or_line_break_is_quoted) {
    EXPECT_EQ(Mreport::CsvField("12.3"), "12.3");
    EXPECT_EQ(Mreport::CsvField("a,b"), "\"a,b\"");
    EXPECT_EQ(Mreport::CsvField("say \"on\""), "\"say \"\"on\"\"\"");
    EXPECT_EQ(Mreport::CsvField("a\nb"), "\"a\nb\"");
}

TEST(CsvText, Lines_are_handed_on_in_blocks_of_whole_lines) {
    std::string text;
    int blocks = 0;
    const Mreport::CsvSink sink = [&](std::string_view block) {
        ++blocks;
        text += block;
        EXPECT_TRUE(text.ends_with("\r\n"));
    };
    Mreport::CsvLines lines(sink);
    const std::string letters(40'000, 'x');
    for (const auto& field : {letters, std::string("\xB0"), std::string("a,b"), std::string()}) {
        lines.Add(field);
        lines.Add("7");
        lines.EndLine();
    }
    lines.Add(letters);
    lines.Add(letters);
    lines.Add(letters + letters + letters + letters);
    lines.EndLine();
    lines.Add("last");
    lines.EndLine();
    lines.Flush();
    EXPECT_EQ(blocks, 2);
    EXPECT_EQ(text, letters + ",7\r\n\xC2\xB0,7\r\n\"a,b\",7\r\n,7\r\n" + letters + "," + letters +
                        "," + letters + letters + letters + letters + "\r\nlast\r\n");
}

} // namespace
