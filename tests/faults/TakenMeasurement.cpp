#include "faults/TakenMeasurement.h"

#include "base/RunTimeError.h"
#include "files/MeasurementReader.h"
#include "files/Recovery.h"
#include "files/SetUpRun.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace fs = std::filesystem;

template <class Step>
bool TakenMeasurement::Try(const Step& step) {
    try {
        step();
        return true;
    } catch (const RunTimeError& error) {
        if (std::string(error.what()).empty())
            ++told_.wordless;
        return false;
    }
}

void TakenMeasurement::Take() {
    Try([&] { run_.currentMeasurementPath = run_.GetTempFile(); });
    Begin(0);
    Save(3);
    Try([&] { run_.FlushTempFile(); });
    Save(1);
    Try([&] { run_.FollowTarget(true); });
    Save(2);
    Try([&] { run_.FollowTarget(false); });
    Save(1);
    Begin(1);
    Save(2);
    Try([&] { run_.FlushTempFile(); });
}

/// Chooses a target; the analyst tries once more where that fails.
void TakenMeasurement::Begin(int target) {
    const fs::path& file = targets_[static_cast<std::size_t>(target)];
    for (int tries = 0; tries < 2; ++tries) {
        if (Try([&] { run_.BeginTarget(file); })) {
            target_ = target;
            number_ = 1;
            return;
        }
        if (target == 1 && (!fs::exists(file) || fs::file_size(file) == 0))
            told_.oldKept = false;
    }
}

void TakenMeasurement::Save(int count) {
    for (int i = 0; i < count && !run_.targetFile.empty(); ++i)
        if (Try([&] {
                run_.SaveMeasure(run_.currentMeasurementPath, number_, "", DisplayedRun());
            }))
            told_.saved.at(told_.count++) = {target_, number_++};
}

void RecoverAll() {
    for (auto& recording : FileOpr::FindUnfinishedRecordings()) {
        try {
            FileOpr::Recover(recording);
        } catch (const RunTimeError&) {
            continue;
        }
    }
}

/// The numbers of a target's records, those that a recovery has put beside it behind.
std::vector<std::int32_t> Remains::NumbersOf(int target) const {
    std::vector<std::int32_t> numbers;
    const std::string stem = target == 0 ? "first" : "second";
    for (const std::string& name : {stem + ".4ch", stem + " (2).4ch"}) {
        if (!fs::exists(folder_ / name))
            continue;
        const auto bytes = ReadBytes(folder_ / name);
        if (bytes == oldMeasurement)
            continue;
        for (const auto& record : FileOpr::ReadMeasurementFile(folder_ / name).records)
            numbers.push_back(record.number);
    }
    return numbers;
}

void Remains::ExpectAllOf(const Told& told) const {
    EXPECT_EQ(told.wordless, 0U);
    EXPECT_TRUE(told.oldKept) << "a target that was refused has lost what it held";
    for (int target = 0; target < 2; ++target) {
        const auto found = NumbersOf(target);
        EXPECT_TRUE(std::ranges::is_sorted(found));
        EXPECT_EQ(std::ranges::adjacent_find(found), found.end()) << "a record twice";
        for (std::size_t i = 0; i < told.count; ++i) {
            if (told.saved[i].target != target)
                continue;
            EXPECT_EQ(std::ranges::count(found, told.saved[i].number), 1)
                << "record " << told.saved[i].number << " of target " << target;
        }
    }
    EXPECT_EQ(FileOpr::FindUnfinishedRecordings().size(), 0U) << "recovered, yet offered again";
}
