#include "report/support/PlainRun.h"

#include "base/NumberText.h"

#include <algorithm>
#include <cctype>

namespace {

std::string Trimmed(std::string text) {
    const auto isText = [](unsigned char letter) { return letter > ' '; };
    text.erase(std::find_if(text.rbegin(), text.rend(), isText).base(), text.end());
    text.erase(text.begin(), std::find_if(text.begin(), text.end(), isText));
    return text;
}

std::vector<std::string> SplitAtTabs(const std::string& line) {
    std::vector<std::string> parts(1);
    for (const char letter : line) {
        if (letter == '\t')
            parts.emplace_back();
        else
            parts.back() += letter;
    }
    return parts;
}

bool BeginsRecord(const std::string& line) {
    return line.starts_with("Record ") && line.size() > 7 && line[7] >= '0' && line[7] <= '9';
}

bool OnlyDashes(const std::string& line) {
    return line.size() >= 6 && line.find_first_not_of('-') == std::string::npos;
}

struct Line {
    std::string text;
    std::size_t offset = 0;
    std::size_t end = 0;
};

std::vector<Line> LinesOf(const std::string& bytes) {
    std::vector<Line> lines;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto feed = bytes.find('\n', at);
        const std::size_t end = feed == std::string::npos ? bytes.size() : feed + 1;
        std::string text = bytes.substr(at, std::min(feed, bytes.size()) - at);
        if (text.ends_with('\r'))
            text.pop_back();
        lines.push_back({text, at, end});
        at = end;
    }
    return lines;
}

} // namespace

std::optional<double> PlainRecord::Value(std::string_view label, std::size_t column) const {
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        if (row->front() != label || row->size() < 2)
            continue;
        if (column + 1 >= row->size())
            return std::nullopt;
        const std::string cell = Trimmed((*row)[column + 1]);
        if (cell.empty() || cell == "NA" || cell == "N/A")
            return std::nullopt;
        return NumberText::Leading(cell);
    }
    return std::nullopt;
}

std::vector<PlainRecord> ReadPlainly(const std::string& bytes) {
    std::vector<PlainRecord> records;
    const std::vector<Line> lines = LinesOf(bytes);
    bool open = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        const bool begins = BeginsRecord(line.text) && i + 1 < lines.size() &&
                            lines[i + 1].text.starts_with("Comment:");
        if (begins) {
            PlainRecord record;
            record.firstLine = line.text;
            record.comment = lines[i + 1].text.substr(8);
            if (record.comment.starts_with('\t'))
                record.comment.erase(0, 1);
            record.offset = line.offset;
            record.end = lines[i + 1].end;
            records.push_back(record);
            open = true;
            ++i;
            continue;
        }
        if (!open)
            continue;
        if (OnlyDashes(line.text)) {
            open = false;
        } else if (!BeginsRecord(line.text)) {
            auto row = SplitAtTabs(line.text);
            row.front().erase(row.front().find_last_not_of(' ') + 1);
            records.back().rows.push_back(row);
        }
        records.back().end = line.end;
    }
    return records;
}

std::vector<Mreport::RunPiece> PiecesOf(const std::vector<PlainRecord>& records,
                                        std::size_t recordsPerPiece) {
    std::vector<Mreport::RunPiece> pieces;
    for (std::size_t i = 0; i < records.size(); i += recordsPerPiece) {
        const std::size_t end = std::min(i + recordsPerPiece, records.size());
        const std::size_t begin = pieces.empty() ? 0 : pieces.back().bytes.end;
        pieces.push_back({{begin, records[end - 1].end}, static_cast<std::int64_t>(end - i)});
    }
    return pieces;
}
