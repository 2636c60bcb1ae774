#include "report/Verify.h"

#include "base/Letters.h"
#include "files/MeasurementFormat.h"
#include "files/MeasurementLines.h"
#include "report/ViewedFile.h"

#include <algorithm>
#include <tuple>

namespace Mreport {

namespace {

/// A week has some ten thousand different potentials a channel; a file of chance has no more kept.
constexpr std::size_t mostExpectations = std::size_t{1} << 16;

constexpr std::array<Quantity, 3> computed = {Quantity::pH, Quantity::ppm, Quantity::mol_l};
constexpr std::string_view errorText = "Error";
constexpr std::string_view noHeader = "the file has no header";
constexpr std::string_view noValueText = "no value";
constexpr std::string_view unreadable = "the potential cannot be read";

bool IsRead(Quantity quantity) {
    return quantity == Quantity::mV || std::ranges::find(computed, quantity) != computed.end();
}

std::string_view Trimmed(std::string_view cell) {
    return Letters::WithoutLeading(MeasurementLines::WithoutPadding(cell),
                                   [](char letter) { return letter == ' '; });
}

/// The rows that the program writes for these electrodes.
PerQuantity<bool> RowsDue(const FileOpr::MeasurementHeader& header) {
    std::array<mWinInit::ChannelSetupRecord, maxChannels> channels;
    const auto count = header.hasElectrodes ? header.channelCount : std::size_t{0};
    for (std::size_t i = 0; i < count; ++i)
        channels[i].Electrode = header.channels[i].electrode;
    const auto rows = MeasurementFormat::RowsOf(std::span(channels).first(count));
    PerQuantity<bool> due{};
    due[Quantity::pH] = rows.pH;
    due[Quantity::ppm] = due[Quantity::mol_l] = rows.ion;
    return due;
}

bool IsReproduced(std::string_view cell, const ExpectedCell& expected) {
    if (cell == errorText)
        return expected.error;
    const auto meant = NumberText::MeantBy(cell);
    return meant && std::ranges::any_of(expected.values, [&](const NumberInterval& values) {
               return values.Meets(*meant);
           });
}

std::uint64_t EndOf(const ReportPages& pages) {
    return pages.Bytes(pages.Last()).end;
}

} // namespace

Verification::Verification(TextSource& source, std::uint64_t end,
                           const FileOpr::MeasurementHeader& header)
    : reader_(source, 0, end), end_(end), hasHeader_(header.hasElectrodes),
      channelCount_(hasHeader_ ? header.channelCount : maxChannels), due_(RowsDue(header)) {
    for (std::size_t i = 0; i < channelCount_; ++i) {
        channels_[i].rules = ChannelOf(header, i);
        channels_[i].otherUnit = channels_[i].rules.OtherUnit();
        if (!hasHeader_)
            channels_[i].rules.whyNot = noHeader;
    }
}

Verification::Verification(const ViewedFile& file)
    : Verification(file.pages.Source(), EndOf(file.pages), file.header) {}

bool Verification::Step(std::uint64_t bytes) {
    const std::uint64_t begin = std::min(end_, reader_.NextOffset());
    const std::uint64_t stop = begin + std::min(bytes, end_ - begin);
    auto found = RunReader::Found::line;
    while (found != RunReader::Found::end && reader_.NextOffset() < stop) {
        found = reader_.Next();
        if (found == RunReader::Found::record)
            TakeRecord();
        else if (found == RunReader::Found::line)
            TakeLine();
    }
    if (reader_.NextOffset() < end_ && reader_.NextOffset() >= stop)
        return true;
    EndRecord(false);
    return false;
}

double Verification::Share() const {
    return end_ == 0 ? 1
                     : std::min(1.0, static_cast<double>(reader_.NextOffset()) /
                                         static_cast<double>(end_));
}

void Verification::TakeRecord() {
    BeginRecord(reader_.Record().offset);
    for (const RowCells& row : reader_.Rows())
        TakeRow(row.quantity, row.cells);
    EndRecord(true);
}

void Verification::TakeLine() {
    const ScannedLine& line = reader_.Line();
    switch (reader_.Step()) {
    case RecordWalk::Step::begins:
        EndRecord(false);
        BeginRecord(lastLine_);
        break;
    case RecordWalk::Step::row:
        if (const auto quantity = MeasurementLines::QuantityOf(line.text);
            quantity && IsRead(*quantity)) {
            lines_[*quantity] = line.text;
            TakeRow(*quantity, MeasurementLines::SplitCells(lines_[*quantity]));
        }
        break;
    case RecordWalk::Step::ends:
        EndRecord(true);
        break;
    case RecordWalk::Step::other:
    case RecordWalk::Step::separator:
        break;
    }
    lastLine_ = line.offset;
}

void Verification::TakeRow(Quantity quantity, const MeasurementLines::Cells& cells) {
    rows_[quantity] = cells;
    taken_[quantity] = true;
}

void Verification::BeginRecord(std::uint64_t offset) {
    open_ = true;
    taken_ = {};
    record_.offset = offset;
    record_.place = result_.records;
    record_.number = reader_.Walk().Number();
    ++result_.records;
}

/// A record that was cut off owes no rows.
void Verification::EndRecord(bool whole) {
    if (!open_)
        return;
    open_ = false;
    for (std::size_t channel = 0; channel < channelCount_; ++channel)
        JudgeChannel(channel, CellsOf(channel), whole);
}

Verification::Cells Verification::CellsOf(std::size_t channel) const {
    Cells cells;
    for (const Quantity quantity : {Quantity::mV, Quantity::pH, Quantity::ppm, Quantity::mol_l}) {
        const auto& found = rows_[quantity];
        if (!taken_[quantity] || channel >= found.count)
            continue;
        const auto cell = Trimmed(found.cell[channel]);
        if (!MeasurementLines::IsMissing(cell))
            cells[quantity] = cell;
    }
    return cells;
}

void Verification::JudgeChannel(std::size_t channel, const Cells& cells, bool whole) {
    Channel& of = channels_[channel];
    RecordedCell cell = record_;
    cell.channel = channel;
    cell.potential = cells[Quantity::mV];
    const bool idle = cell.potential.empty();
    const auto* expected =
        idle || !of.rules.whyNot.empty() ? nullptr : ExpectationsOf(of, cell.potential);
    for (const Quantity quantity : computed) {
        cell.quantity = quantity;
        cell.text = cells[quantity];
        if (!taken_[quantity] && !(whole && due_[quantity]))
            continue;
        if (expected != nullptr)
            Judge(cell, *expected);
        else if (!cell.text.empty())
            JudgeAlone(cell, of.rules);
    }
}

/// A value beside which nothing is expected.
void Verification::JudgeAlone(const RecordedCell& cell, const HeaderChannel& rules) {
    if (!rules.whyNot.empty())
        result_.AddNotComputed(cell.channel, cell.quantity, rules.whyNot);
    else
        result_.AddDiverged({cell, std::string(cell.potential.empty() ? noValueText : unreadable)});
}

void Verification::Judge(const RecordedCell& cell, const PerQuantity<ExpectedCell>& all) {
    Channel& of = channels_[cell.channel];
    const ExpectedCell& expected = all[cell.quantity];
    if (cell.text.empty() && expected.blank)
        return;
    if (of.otherUnit == cell.quantity) {
        const Quantity own = of.otherUnit == Quantity::ppm ? Quantity::mol_l : Quantity::ppm;
        of.other.Take(cell, of.rules, {expected, all[own]});
    } else if (IsReproduced(cell.text, expected)) {
        ++result_.reproduced;
    } else {
        result_.AddDiverged({cell, ExpectedText(expected, cell.quantity)});
    }
}

/// Null for a potential that is no number.
const PerQuantity<ExpectedCell>* Verification::ExpectationsOf(Channel& channel,
                                                              std::string_view potential) {
    const auto known = channel.expectations.find(potential);
    if (known != channel.expectations.end())
        return &known->second;
    const auto meant = NumberText::MeantBy(potential);
    if (!meant)
        return nullptr;
    if (channel.expectations.size() >= mostExpectations)
        channel.expectations.clear();
    return &channel.expectations
                .emplace(std::string(potential), ExpectedCells(channel.rules, *meant))
                .first->second;
}

VerifyResult Verification::Result() const {
    VerifyResult result = result_;
    for (std::size_t i = 0; i < channelCount_; ++i)
        if (channels_[i].otherUnit)
            channels_[i].other.Finish(i, channels_[i].rules, result);
    const auto place = [](const Divergence& found) {
        return std::tuple(found.offset, found.channel, found.quantity);
    };
    std::ranges::stable_sort(result.divergences, {}, place);
    if (result.divergences.size() > VerifyResult::mostListed)
        result.divergences.erase(result.divergences.begin() + VerifyResult::mostListed,
                                 result.divergences.end());
    return result;
}

} // namespace Mreport
