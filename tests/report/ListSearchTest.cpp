#include "report/ListSearch.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

namespace {

using List = std::vector<std::string>;

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::string part;
    std::istringstream stream(text);
    while (std::getline(stream, part, separator))
        parts.push_back(part);
    return parts;
}

std::string FromHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes.push_back(static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16)));
    return bytes;
}

/// An empty item between commas stays an item; a list of no items has none.
List Items(const std::string& hexItems, int count) {
    List items;
    std::string rest = hexItems;
    for (int i = 0; i < count; ++i) {
        const auto comma = rest.find(',');
        items.push_back(FromHex(rest.substr(0, comma)));
        rest = comma == std::string::npos ? std::string() : rest.substr(comma + 1);
    }
    return items;
}

constexpr int notFound = -1;

/// As a list box searches: the first match behind the item `start`, going round to `start` itself;
/// a start that is no item searches from the top.
int Find(const List& items, const std::string& prefix, int start) {
    const int count = static_cast<int>(items.size());
    if (start < 0 || start >= count)
        start = -1;
    for (int step = 1; step <= count; ++step) {
        const int index = (start + step) % count;
        if (ListSearch::Matches(items[static_cast<std::size_t>(index)], prefix))
            return index;
    }
    return notFound;
}

} // namespace

TEST(ListSearch, Every_recorded_case_of_a_list_box_gives_the_same_item) {
    std::ifstream cases(VANTREL_TEST_DATA "/findstring.tsv");
    ASSERT_TRUE(cases);
    std::map<std::string, List> lists;
    int searches = 0;
    std::string line;
    while (std::getline(cases, line)) {
        if (line.starts_with('#'))
            continue;
        const auto fields = Split(line, '\t');
        if (fields[0] == "list") {
            lists[fields[1]] = Items(fields[2], std::stoi(fields[3]));
            continue;
        }
        ++searches;
        EXPECT_EQ(Find(lists.at(fields[1]), FromHex(fields[2]), std::stoi(fields[3])),
                  std::stoi(fields[4]))
            << line;
    }
    EXPECT_EQ(searches, 195);
}

TEST(ListSearch, The_search_goes_round_and_the_start_item_comes_last) {
    const List items = {"Record 1", "Record 2", "Record 1"};
    EXPECT_EQ(Find(items, "Record 1", -1), 0);
    EXPECT_EQ(Find(items, "Record 1", 0), 2);
    EXPECT_EQ(Find(items, "Record 1", 2), 0);
    EXPECT_EQ(Find(items, "Record 2", 1), 1);
}

TEST(ListSearch, Letters_match_in_either_case_but_only_ascii_ones) {
    EXPECT_TRUE(ListSearch::Matches("Record 1", "rECORD"));
    EXPECT_FALSE(ListSearch::Matches("\xC9", "\xE9"));
    EXPECT_FALSE(ListSearch::Matches("@", "`"));
    EXPECT_FALSE(ListSearch::Matches("[", "{"));
}

TEST(ListSearch, The_empty_prefix_finds_nothing) {
    EXPECT_EQ(Find({"", "a"}, "", -1), notFound);
}

TEST(ListSearch, An_item_in_brackets_matches_behind_them) {
    EXPECT_TRUE(ListSearch::Matches("[-c-]", "c"));
    EXPECT_TRUE(ListSearch::Matches("[folder]", "fold"));
    EXPECT_FALSE(ListSearch::Matches("-c", "c"));
    EXPECT_FALSE(ListSearch::Matches("[[c", "c"));
}
