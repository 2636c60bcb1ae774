#include "report/CsvExport.h"

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

TEST(CsvText, A_field_with_a_comma_quote_or_line_break_is_quoted) {
    EXPECT_EQ(Mreport::CsvField("12.3"), "12.3");
    EXPECT_EQ(Mreport::CsvField("a,b"), "\"a,b\"");
    EXPECT_EQ(Mreport::CsvField("say \"on\""), "\"say \"\"on\"\"\"");
    EXPECT_EQ(Mreport::CsvField("a\nb"), "\"a\nb\"");
}

} // namespace
