#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Mreport {

/// Takes the text of a CSV file, block by block.
using CsvSink = std::function<void(std::string_view)>;

/// A CSV field, quoted where it must be.
std::string CsvField(std::string_view utf8);

/// Puts the lines of a CSV file together, field by field, and hands them on in blocks: each is
/// small, and there are many.
class CsvLines {
public:
    /// The sink must outlive it.
    explicit CsvLines(const CsvSink& sink) : sink_(sink) {}

    /// The next field, as Windows-1252.
    void Add(std::string_view field);

    /// What stands behind the fields so far as it is to stand in the file.
    void AddReady(std::string_view utf8);

    void EndLine();
    void Flush();

private:
    char* Room(std::size_t length);

    const CsvSink& sink_;
    std::vector<char> buffer_;
    std::size_t used_ = 0;
    bool lineBegun_ = false;
};

} // namespace Mreport
