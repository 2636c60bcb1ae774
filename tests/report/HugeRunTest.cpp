#include "report/RecordSearch.h"
#include "report/RecordTable.h"
#include "report/RunOverview.h"
#include "report/WholeRun.h"
#include "report/support/LoadedReport.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::uint64_t fiveGigabytes = std::uint64_t{5} << 30;
constexpr int firstNumber = 31'000'000;
constexpr int records = 9000; // more than two list pages

/// A file of five gigabytes that nobody holds: one line of that length, and a run of records behind
/// it.
class HugeSource : public Mreport::TextSource {
public:
    HugeSource() : run_("\r\n" + MeasurementText().File(records, firstNumber)) {}

    std::uint64_t Size() override { return fiveGigabytes + run_.size(); }
    std::size_t Read(std::uint64_t offset, std::span<char> buffer) override {
        if (offset >= Size())
            return 0;
        const std::size_t wanted = std::min<std::uint64_t>(buffer.size(), Size() - offset);
        const std::size_t filled =
            offset < fiveGigabytes ? std::min<std::uint64_t>(wanted, fiveGigabytes - offset) : 0;
        std::memset(buffer.data(), 'x', filled);
        if (wanted > filled)
            std::memcpy(buffer.data() + filled, run_.data() + (offset + filled - fiveGigabytes),
                        wanted - filled);
        return wanted;
    }

private:
    std::string run_;
};

class HugeRun : public LoadedReport {
protected:
    HugeRun() { loader.ViewSource(File(), std::make_unique<HugeSource>()); }
};

} // namespace

TEST_F(HugeRun, Behind_four_gigabytes_every_count_offset_and_number_holds) {
    ASSERT_EQ(Mreport::WholeRun::Records(viewed.pages), records);
    EXPECT_GT(viewed.pages.Bytes(viewed.LastPageIndex()).begin, fiveGigabytes);
    Mreport::RecordTable table(viewed);
    table.Reset();
    for (const std::int64_t row : {0, 4000, 8999}) {
        EXPECT_EQ(table.Text(row, 0), std::to_string(firstNumber + row));
        const auto place = table.PlaceOf(row);
        ASSERT_TRUE(place);
        EXPECT_EQ(table.RowOf(*place), row);
    }
    Mreport::RecordSearch search(viewed);
    EXPECT_TRUE(search.Find({firstNumber + 8500}));
    EXPECT_FALSE(search.Find({firstNumber + records}));

    Mreport::RunOverview overview;
    overview.Start(viewed.pages.Source(), Mreport::WholeRun::Pieces(viewed.pages),
                   {{Quantity::mV, false}, {{0}}, {0, records}, false, 0});
    std::uint64_t lastOffset = 0;
    std::int32_t lastNumber = 0;
    overview.Observe([&](std::int64_t, const Mreport::FoundRecord& record) {
        lastOffset = std::max(lastOffset, record.offset);
        lastNumber = std::max(lastNumber, record.number);
    });
    overview.Step(std::uint64_t{1} << 40);
    EXPECT_TRUE(overview.Complete());
    EXPECT_EQ(lastNumber, firstNumber + records - 1);
    EXPECT_GT(lastOffset, fiveGigabytes);
}
