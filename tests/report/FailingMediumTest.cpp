#include "base/RunTimeError.h"
#include "report/CsvExport.h"
#include "report/PrintJob.h"
#include "report/support/LoadedReport.h"

namespace {

/// Bytes of which those behind a place cannot be read, as on a disk that has gone bad.
class BadSource : public Mreport::MemorySource {
public:
    BadSource(const std::string& bytes, std::uint64_t goodUpTo)
        : MemorySource(bytes), goodUpTo_(goodUpTo) {}

    std::size_t Read(std::uint64_t offset, std::span<char> buffer) override {
        if (offset + buffer.size() > goodUpTo_ && offset < Size() && Size() > goodUpTo_)
            throw RunTimeError("Reading run.4ch: Input/output error");
        return MemorySource::Read(offset, buffer);
    }
    void GoBad(std::uint64_t goodUpTo) { goodUpTo_ = goodUpTo; }

private:
    std::uint64_t goodUpTo_;
};

class FailingMedium : public LoadedReport {
protected:
    static constexpr std::uint64_t allGood = ~std::uint64_t{0};
    const std::string text = MeasurementText().File(2000); // several blocks

    BadSource& ViewBad(std::uint64_t goodUpTo) {
        auto source = std::make_unique<BadSource>(text, goodUpTo);
        BadSource& bad = *source;
        loader.ViewSource(File(), std::move(source));
        return bad;
    }
};

} // namespace

TEST_F(FailingMedium, A_load_tells_it_and_keeps_what_was_read) {
    EXPECT_THROW(ViewBad(600'000), RunTimeError);
    EXPECT_GT(Range().recordsInPage, 400);
    EXPECT_LT(Range().recordsInPage, 2000);
    EXPECT_EQ(LastStatus(), "Ready");
    EXPECT_TRUE(loader.Idle());
    EXPECT_EQ(loader.NewBytes(), 0U) << "what follows the gap is not put behind it";
}

TEST_F(FailingMedium, A_line_that_cannot_be_read_back_is_shown_blank) {
    BadSource& source = ViewBad(allGood);
    EXPECT_FALSE(viewed.pages.Damaged());
    source.GoBad(0);
    EXPECT_EQ(viewed.pages.Shown(0, 100), "");
    EXPECT_TRUE(viewed.pages.Damaged());
}

TEST_F(FailingMedium, An_export_that_misses_records_leaves_the_older_file) {
    BadSource& source = ViewBad(allGood);
    const auto target = platform.folder.Path() / "out.csv";
    WriteBytes(target, "older\r\n");
    source.GoBad(0);
    EXPECT_THROW(Mreport::ExportCsv(viewed, target, Mreport::CsvReader::any, [] { return false; }),
                 RunTimeError);
    EXPECT_EQ(ReadBytes(target), "older\r\n");
}

TEST_F(FailingMedium, A_table_that_misses_records_is_not_printed) {
    BadSource& source = ViewBad(allGood);
    source.GoBad(0);
    EXPECT_THROW(Mreport::PrintPageTable(viewed, 0, {1, 2000}, {}, [](const auto&) {}),
                 RunTimeError);
}
