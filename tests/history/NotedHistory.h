#pragma once

#include "history/Histories.h"
#include "history/Log.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

/// A history's log in a folder of its own, and what it told of its troubles.
class NotedHistory : public testing::Test {
protected:
    History::Log::Tell Telling() {
        return [this](const std::string& message) { told.push_back(message); };
    }
    static History::Entry Saying(const std::string& text) {
        History::Entry entry;
        entry.kind = History::Kind::setting;
        entry.text = text;
        return entry;
    }
    std::vector<std::string> Kept() const { return TextsOf(*History::OpenStore(file)); }

    /// The files beside the history whose names begin with its own and hold this.
    std::vector<std::filesystem::path> Beside(const std::string& part) const {
        std::vector<std::filesystem::path> found;
        for (const auto& entry : std::filesystem::directory_iterator(file.parent_path()))
            if (entry.path().filename().string().find(part) != std::string::npos)
                found.push_back(entry.path());
        return found;
    }

    fake::Platform platform;
    const std::filesystem::path file = History::UsualFile();
    std::vector<std::string> told;
};
