#pragma once

#include "files/MeasuringRun.h"
#include "screens/frmMain/frmMain.h"
#include "screens/support/ScreenTest.h"

#include <QLabel>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

/// The main screen over a project that is ready to measure: channel 1 Ca (31.62 ppm at 188.5 mV,
/// sensor 1), channel 2 pH (6.00 at 59.0 mV, sensor 2), channel 3 Redox, channel 4 None.
class MainScreenTest : public ScreenTest {
protected:
    MainScreenTest();

    /// Loads the form and shows it on its setup page.
    void Open();

    /// Opens the form and enters the measuring page.
    void OpenMeasuring();

    /// OpenMeasuring, and the first averages are on the page.
    void OpenReading();

    /// A frame arrives and the read timer ticks.
    void ReadFrame(const std::array<int, 8>& tenths);

    /// The save dialog will be answered with this file of the test's folder.
    std::filesystem::path AnswerSaveDialog(const std::string& name);

    /// Time goes on by whole ms, and the clock's timer ticks.
    void TimePasses(std::chrono::milliseconds time);

    QString CellText(std::size_t index) { return Element<QLabel>(*form, "lblEntry", index).text(); }
    QString RunButton() { return Element<QPushButton>(*form, "cmdPage", frmMain::run).text(); }

    /// E1 188.5 mV, T1 745.8 (25 °C), E2 59.0 mV, T2 799.6 (20 °C), E3 230.0 mV, E4 -12.3 mV.
    static constexpr std::array<int, 8> frame = {1885, 7458, 590, 7996, 2300, 9000, -123, 9000};

    std::optional<FileOpr::MeasuringRun> run; ///< made anew with each form, as with each program
    std::unique_ptr<frmMain> form;
};
