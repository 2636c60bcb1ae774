#pragma once

#include "report/TextSource.h"

#include <cstdint>
#include <string>

/// A measurement file of any number of records at one a second, longer than a disk may be: its text
/// is made where it is read. Independent of the program's own writer. Four channels, no comments;
/// channel 1 has the record number's last four digits as its tenths of a millivolt.
class LongRun : public Mreport::TextSource {
public:
    explicit LongRun(std::int64_t records);

    std::uint64_t Size() override { return OffsetOf(records_ + 1); }
    std::size_t Read(std::uint64_t offset, std::span<char> buffer) override;

    /// Of a record's first line; of one behind the last for the file's end. Records are numbered
    /// from 1.
    std::uint64_t OffsetOf(std::int64_t number) const;

    /// "hh:mm:ss dd.mmm.yyyy"; record 1 is the second after midnight of 1 March 2003.
    std::string TimeOf(std::int64_t number) const;

    /// In a record's first line before its number, and behind it.
    static constexpr std::string_view beforeNumber = "Record ";
    static constexpr std::size_t behindNumber = 26; ///< bytes, with the line end

private:
    std::int64_t RecordAt(std::uint64_t offset) const;
    const std::string& Record(std::int64_t number);

    std::int64_t records_;
    std::string header_;
    std::string rest_;      ///< of a record, from its comment line on
    std::size_t value_ = 0; ///< at which the first cell stands in it
    std::string record_;
    mutable std::int64_t day_ = -1; ///< of date_
    mutable std::string date_;
};
