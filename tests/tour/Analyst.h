#pragma once

#include "tour/DialogAnswers.h"
#include "tour/TourSystem.h"

#include <QWidget>

#include <filesystem>
#include <vector>

/// Works with the program as a person at the bench does: reads the screens, presses the buttons,
/// changes the solutions of the simulated instrument.
class Analyst {
public:
    Analyst(const TourInstrument& instrument, DialogAnswers& answers)
        : instrument_(instrument), answers_(answers) {}

    void SetUpProject();

    /// The port is tested, and the simulated instrument used for a while.
    void LookAtPort();

    /// Buffers 4.01, 7.00 and 10.01 in channel 1.
    void CalibratePH();

    /// Standards of 1, 10 and 100 ppm, channels 2 and 3 in one vessel.
    void CalibrateCalcium();

    void BeginMeasuring();

    /// Limits that a reading passes at once: the alarm comes and is acknowledged.
    void SetLimits();
    void RecordByHand(int records);

    /// The instrument is silent for a while and waited for.
    void WaitForInstrument();

    /// One press, and the record when all readings are steady.
    void RecordWhenSteady(int record);

    /// While the report follows the records as they arrive.
    void RecordByClock(int records, int period_s);

    /// From the setup page: another electrode, so that the file's header is no longer true; the
    /// notice says so and begins a new file.
    void ReplaceElectrode();

    /// Through all quantities, to a record, a verification, into a CSV file and onto paper.
    void ViewReport();

    /// The calibrations of an electrode, and all that has happened.
    void ShowHistory();

    void Exit();

    std::filesystem::path MeasurementFile() const;
    std::filesystem::path ExportedFile() const;
    std::filesystem::path PrintedTable() const;
    std::filesystem::path PrintedGraph() const;

private:
    static void WaitForAnswer(const QWidget& port, const std::string& status);
    static void UseSimulatedInstrument(const QWidget& port);
    QWidget& Main() const;
    QString Status() const;
    void ChooseElectrode(std::size_t channel, const QString& electrode, const QString& serialNo,
                         int tempSensor);
    void WaitForRecords(int count, int period_s);
    void SelectQuantity(QWidget& report, std::size_t unit, const QString& pictureName);
    void FindRecord(QWidget& report, int record);
    void VerifyFile(QWidget& report);
    void Print(QWidget& report, std::size_t option, const std::filesystem::path& pdf,
               const QString& pictureName);

    const TourInstrument& instrument_;
    DialogAnswers& answers_;
};
