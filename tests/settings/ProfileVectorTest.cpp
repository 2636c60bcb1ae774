#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <vector>

// Recorded cases of the private-profile calls: bytes before, call, result. Bytes are in hex.

namespace {

constexpr std::size_t bufferSize = 130;

std::vector<std::string> Columns(const std::string& line) {
    std::vector<std::string> columns(1);
    for (const char c : line) {
        if (c == '\t')
            columns.emplace_back();
        else
            columns.back() += c;
    }
    return columns;
}

std::string Bytes(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
}

std::optional<std::string> BytesOrNull(const std::string& hex) {
    return hex == "NULL" ? std::nullopt : std::optional(Bytes(hex));
}

std::vector<std::vector<std::string>> Rows(const std::string& name) {
    std::ifstream file(std::string(VANTREL_TEST_DATA "/") + name);
    std::vector<std::vector<std::string>> rows;
    std::string line;
    while (std::getline(file, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!line.empty() && line.front() != '#')
            rows.push_back(Columns(line));
    }
    return rows;
}

class ProfileVectors : public testing::Test {
protected:
    /// The file as it stands before the call; "-" for no file.
    void Prepare(const std::string& hex) {
        std::filesystem::remove(platform.SettingsFile());
        if (hex != "-")
            WriteBytes(platform.SettingsFile(), Bytes(hex));
    }

    std::string FileNow() {
        return std::filesystem::exists(platform.SettingsFile()) ? ReadBytes(platform.SettingsFile())
                                                                : "-";
    }

    fake::Platform platform;
};

TEST_F(ProfileVectors, Every_recorded_read_gives_the_recorded_text_and_integer) {
    const auto rows = Rows("ini_read.tsv");
    EXPECT_GT(rows.size(), 60U);
    for (const auto& row : rows) {
        ASSERT_EQ(row.size(), 10U);
        SCOPED_TRACE(row[0] + " " + row[1]);
        Prepare(row[2]);
        const std::string text =
            platform.profile->GetString(Bytes(row[3]), Bytes(row[4]), Bytes(row[5]), bufferSize);
        EXPECT_EQ(text, Bytes(row[7]));
        EXPECT_EQ(text.size(), std::stoul(row[8]));
        EXPECT_EQ(platform.profile->GetInt(Bytes(row[3]), Bytes(row[4]), std::stoi(row[6])),
                  std::stoi(row[9]));
    }
}

TEST_F(ProfileVectors, Every_recorded_write_leaves_the_recorded_bytes) {
    const auto rows = Rows("ini_write.tsv");
    EXPECT_GT(rows.size(), 20U);
    for (const auto& row : rows) {
        ASSERT_EQ(row.size(), 8U);
        SCOPED_TRACE(row[0] + " " + row[1]);
        Prepare(row[2]);
        const bool written =
            platform.profile->Write(Bytes(row[3]), BytesOrNull(row[4]), BytesOrNull(row[5]));
        EXPECT_EQ(written, row[7] == "1");
        EXPECT_EQ(FileNow(), row[6] == "-" ? "-" : Bytes(row[6]));
    }
}

} // namespace
