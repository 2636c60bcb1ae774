#pragma once

#include "files/MeasuringRun.h"
#include "report/ReportLoader.h"
#include "report/support/MeasurementText.h"
#include "report/support/RecordingView.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

/// A viewer over files of the test's own folder. The clock moves 1 ms at each look, so that events
/// run wherever they may.
class LoadedReport : public testing::Test {
protected:
    fake::Platform platform;
    FileOpr::MeasuringRun run;
    Mreport::ViewedFile viewed;
    Mreport::ShownGraph shown;
    RecordingView view{viewed, shown};
    Mreport::ReportLoader loader{run, viewed, shown, view};

    LoadedReport() { platform.clock.step = std::chrono::milliseconds(1); }

    std::filesystem::path File() const { return platform.folder.Path() / "run.4ch"; }

    void View(const std::string& text) {
        WriteBytes(File(), text);
        loader.ViewFile(File());
    }

    void Append(const std::string& text) {
        std::ofstream stream(File(), std::ios::binary | std::ios::app);
        stream << text;
        ASSERT_TRUE(stream.flush());
    }

    Mreport::PageRange Range() const { return Mreport::GraphRange(viewed, shown); }

    bool StatusShown(const std::string& text) const {
        return std::find(view.statuses.begin(), view.statuses.end(), text) != view.statuses.end();
    }

    std::string LastStatus() const { return view.statuses.empty() ? "" : view.statuses.back(); }
};
