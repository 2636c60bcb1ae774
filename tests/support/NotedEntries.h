#pragma once

#include "history/Log.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A history in the user's data folder while a test runs, and what it has taken down.
class NotedEntries {
public:
    NotedEntries()
        : log_(History::UsualFile(),
               [this](const std::string& message) { EXPECT_TRUE(mayFail) << message; }) {}

    bool mayFail = false; ///< to be written

    /// All but the history's own beginning.
    std::vector<History::Entry> All() {
        std::vector<History::Entry> entries;
        History::Wish wish;
        wish.after = 1;
        for (const auto& numbered : log_.Entries(wish))
            entries.push_back(numbered.entry);
        return entries;
    }

    /// Kinds and texts, "Calibration: of Ca".
    std::vector<std::string> Texts() {
        std::vector<std::string> texts;
        for (const History::Entry& entry : All())
            texts.push_back(std::string(History::NameOf(entry.kind)) + ": " + entry.text);
        return texts;
    }

private:
    History::Log log_; // last: it may tell at once
};
