#pragma once

#include "base/Channels.h"
#include "report/ExpectedCells.h"
#include "report/OtherUnit.h"
#include "report/RunReader.h"
#include "report/VerifyResult.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Mreport {

struct ViewedFile;

/// Computes each pH, ppm and mol/l of a run anew, from the header's calibration and the record's
/// potential, and holds what was recorded against it. A potential stands for all that its text may
/// have been rounded from, and a recorded value for all that its own text may; they must meet.
/// Works in slices, so that it can be stopped.
///
/// The header holds no molar mass. A unit that needs one is computed with the built-in mass; where
/// another mass explains more of its values, they are not to be computed and that mass is named.
class Verification {
public:
    /// The source, from its first byte to before `end`, must outlive the verification.
    Verification(TextSource& source, std::uint64_t end, const FileOpr::MeasurementHeader& header);

    /// The whole lines of a viewed file, which must outlive the verification.
    explicit Verification(const ViewedFile& file);

    Verification(const Verification&) = delete; // its parts refer to one another
    Verification& operator=(const Verification&) = delete;

    /// Verifies on, about so many bytes. False when the end has been reached.
    bool Step(std::uint64_t bytes);

    double Share() const; ///< of the bytes, 0..1

    /// What was found, complete once Step has returned false.
    VerifyResult Result() const;

private:
    /// Compares the texts without making a string of one that is looked up.
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };
    using Expectations =
        std::unordered_map<std::string, PerQuantity<ExpectedCell>, TextHash, std::equal_to<>>;

    struct Channel {
        HeaderChannel rules;
        std::optional<Quantity> otherUnit;
        Expectations expectations; ///< by the text of the potential
        OtherUnit other;
    };
    using Cells = PerQuantity<std::string_view>; ///< of a channel, without blanks around them

    void TakeRecord();
    void TakeLine();
    void BeginRecord(std::uint64_t offset);
    void TakeRow(Quantity quantity, const MeasurementLines::Cells& cells);
    void EndRecord(bool whole);
    Cells CellsOf(std::size_t channel) const;
    void JudgeChannel(std::size_t channel, const Cells& cells, bool whole);
    void Judge(const RecordedCell& cell, const PerQuantity<ExpectedCell>& all);
    void JudgeAlone(const RecordedCell& cell, const HeaderChannel& rules);
    const PerQuantity<ExpectedCell>* ExpectationsOf(Channel& channel, std::string_view potential);

    RunReader reader_;
    std::uint64_t end_;
    bool hasHeader_;
    std::array<Channel, maxChannels> channels_;
    std::size_t channelCount_;
    PerQuantity<bool> due_{}; ///< rows that a whole record has
    PerQuantity<MeasurementLines::Cells> rows_;
    PerQuantity<std::string> lines_; ///< behind rows_, of a record taken line by line
    PerQuantity<bool> taken_{};      ///< rows that the record at hand has
    bool open_ = false;
    std::uint64_t lastLine_ = 0; ///< offset
    RecordedCell record_;        ///< tells offset, place and number of the record at hand
    VerifyResult result_;        ///< but for the other units
};

} // namespace Mreport
