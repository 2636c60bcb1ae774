#include "files/MeasurementReader.h"
#include "program/SystemServices.h"
#include "program/theMain.h"
#include "settings/mWinInit.h"
#include "tour/Analyst.h"
#include "tour/Stage.h"
#include "tour/TourSystem.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <fstream>

namespace {

constexpr int recordsByHand = 10;

/// Ten records, or ten minutes of one record a second.
int RecordsByClock() {
    return qEnvironmentVariable("VANTREL_TOUR_LENGTH") == "long" ? 600 : 10;
}

void CheckSlopes() {
    // Two percent of the slopes that the electrodes were plugged in with.
    const auto& calibration = mWinInit::Calibration;
    for (std::size_t segment = 0; segment < 2; ++segment) {
        EXPECT_NEAR(calibration[0].Slope[segment], -57.98, 0.02 * 57.98);
        EXPECT_NEAR(calibration[1].Slope[segment], 0.97 * 29.58, 0.02 * 29.58);
        EXPECT_NEAR(calibration[2].Slope[segment], 0.95 * 29.58, 0.02 * 29.58);
    }
}

void CheckMeasurementFile(const std::filesystem::path& file, int records) {
    const auto run = FileOpr::ReadMeasurementFile(file);
    ASSERT_EQ(run.records.size(), static_cast<std::size_t>(records));
    EXPECT_EQ(run.records[2].comment, "stirrer on");
    EXPECT_TRUE(run.records[recordsByHand].comment.starts_with("no readings from "))
        << run.records[recordsByHand].comment;
    for (std::size_t i = 0; i < run.records.size(); ++i)
        EXPECT_EQ(run.records[i].number, static_cast<std::int32_t>(i) + 1);
}

/// A heading and a row for each record.
void CheckExport(const std::filesystem::path& file, int records) {
    std::ifstream stream(file);
    std::string line;
    int lines = 0;
    while (std::getline(stream, line))
        ++lines;
    EXPECT_EQ(lines, records + 1);
}

QString TextOfPdf(const std::filesystem::path& pdf) {
    QProcess pdftotext;
    pdftotext.start("pdftotext", {"-layout", QString::fromStdString(pdf.string()), "-"});
    EXPECT_TRUE(pdftotext.waitForFinished() && pdftotext.exitCode() == 0) << pdf;
    return QString::fromUtf8(pdftotext.readAllStandardOutput());
}

void CheckPrints(const Analyst& analyst, int records) {
    const QString table = TextOfPdf(analyst.PrintedTable());
    EXPECT_TRUE(table.contains("4-Channel Vantrel - Spring water survey Report: Table"));
    EXPECT_TRUE(table.contains("Page 2"));
    EXPECT_TRUE(table.contains(QString("Record %1").arg(records)));
    EXPECT_TRUE(table.contains("stirrer on"));
    const QString graph = TextOfPdf(analyst.PrintedGraph());
    EXPECT_TRUE(graph.contains("4-Channel Vantrel - Spring water survey Report: Graphic"));
    EXPECT_TRUE(graph.contains("Temp. 2"));
}

TEST(Tour, An_analyst_sets_up_calibrates_measures_views_and_prints) {
    TourPlaces places;
    const TourInstrument instrument(places);
    instrument.Command("electrode 1 H (pH) slope 98 offset 4");
    instrument.Command("electrode 2 Ca slope 97 offset 12");
    instrument.Command("electrode 3 Ca slope 95 offset -7");
    const theMain::SystemServices services(places);
    DialogAnswers answers;
    Analyst analyst(instrument, answers);
    for (const auto& file : {analyst.MeasurementFile(), analyst.ExportedFile(),
                             analyst.PrintedTable(), analyst.PrintedGraph()})
        std::filesystem::remove(file);
    TourInstrument::ChoosePort();
    theMain::Program program;
    program.Main();

    QWidget& splash = stage::Window("frmSplash");
    stage::Picture(splash, "splash");
    stage::Click(splash, "cmdCommand1");
    EXPECT_FALSE(splash.isVisible());
    analyst.SetUpProject();
    analyst.LookAtPort();
    analyst.CalibratePH();
    analyst.CalibrateCalcium();
    CheckSlopes();
    analyst.BeginMeasuring();
    analyst.SetLimits();
    analyst.RecordByHand(recordsByHand);
    analyst.WaitForInstrument();
    analyst.RecordWhenSteady(recordsByHand + 1);
    analyst.RecordByClock(RecordsByClock(), 1);
    const int records = recordsByHand + 1 + RecordsByClock();
    CheckMeasurementFile(analyst.MeasurementFile(), records);
    analyst.ReplaceElectrode();
    analyst.ViewReport();
    CheckExport(analyst.ExportedFile(), records);
    if (printDialogIsOurs)
        CheckPrints(analyst, records);
    analyst.ShowHistory();
    analyst.Exit();
}

} // namespace
