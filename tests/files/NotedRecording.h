#pragma once

#include "files/MeasuringRun.h"
#include "files/Recording.h"
#include "files/SetUpRun.h"
#include "support/NotedEntries.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>

/// A recording while a history takes down what becomes of it.
class NotedRecording : public testing::Test {
protected:
    NotedRecording() {
        SetUpRun();
        run.currentMeasurementPath = run.GetTempFile();
    }

    static FileOpr::Recording::TakeEntry Taking() {
        return [] { return std::optional(FileOpr::Recording::Entry{"", DisplayedRun()}); };
    }
    void RunFor(int seconds) {
        for (int i = 0; i < seconds; ++i) {
            platform.clock.monotonic += std::chrono::seconds(1);
            recording.Tick(Taking());
        }
    }

    fake::Platform platform;
    const std::filesystem::path target = platform.folder.Path() / "run.4ch";
    NotedEntries noted;
    FileOpr::MeasuringRun run;
    FileOpr::Recording recording{run};
};
