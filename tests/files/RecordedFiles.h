#pragma once

#include "files/MeasurementReader.h"
#include "files/MeasuringRun.h"
#include "files/SetUpRun.h"
#include "support/FakePlatform.h"
#include "support/FilesIn.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

/// A set-up run, and a look at the files that recording it leaves.
class RecordedFiles : public testing::Test {
protected:
    using Numbers = std::vector<std::int32_t>;

    RecordedFiles() : target(platform.folder.Path() / "run.4ch") { SetUpRun(); }

    void TakeTempFile() {
        run.currentMeasurementPath = run.GetTempFile();
        temporary = run.currentMeasurementPath;
    }

    void Record(std::int32_t number) {
        run.SaveMeasure(run.currentMeasurementPath, number, "", DisplayedRun());
    }

    static Numbers NumbersIn(const std::filesystem::path& file) {
        Numbers numbers;
        for (const auto& record : FileOpr::ReadMeasurementFile(file).records)
            numbers.push_back(record.number);
        return numbers;
    }

    std::size_t FilesInTemporaryFolder() const {
        return FilesIn(platform.places.TemporaryFolder());
    }

    fake::Platform platform;
    FileOpr::MeasuringRun run;
    std::filesystem::path target;
    std::filesystem::path temporary;
};
