#include "tour/Analyst.h"

#include "link/CommPort.h"
#include "screens/Report/Report.h"
#include "screens/Report/ReportMenus.h"
#include "screens/SimultCalib/SimultCalib.h"
#include "screens/frmCalib/frmCalib.h"
#include "screens/frmCommon/frmCommon.h"
#include "screens/frmLimits/frmLimits.h"
#include "screens/frmMain/ChannelRows.h"
#include "screens/frmMain/ReadingsTable.h"
#include "screens/frmMain/SetupPage.h"
#include "screens/frmMain/frmMain.h"
#include "screens/frmPrint/frmPrint.h"
#include "screens/frmSimulated/frmSimulated.h"
#include "tour/Stage.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>

#include <gtest/gtest.h>

#include <string>

using namespace stage;

namespace {

QString Element(const char* array, std::size_t index) {
    return QString("%1_%2").arg(array).arg(index);
}

bool Shows(const QWidget& form, const QString& label, double value, double tolerance) {
    bool isNumber = false;
    const double shown = TextOf(form, label).toDouble(&isNumber);
    return isNumber && std::abs(shown - value) <= tolerance;
}

/// Readings are shown with one decimal, and the moving average runs over two frames.
constexpr double reading_mV = 0.11;

} // namespace

QWidget& Analyst::Main() const {
    return Window("frmMain");
}

QString Analyst::Status() const {
    return Find<QStatusBar>(Main(), "statusbar").currentMessage();
}

std::filesystem::path Analyst::MeasurementFile() const {
    return std::filesystem::path(Folder().toStdString()) / "tour.4ch";
}

std::filesystem::path Analyst::ExportedFile() const {
    return std::filesystem::path(Folder().toStdString()) / "tour.csv";
}

std::filesystem::path Analyst::PrintedTable() const {
    return std::filesystem::path(Folder().toStdString()) / "table.pdf";
}

std::filesystem::path Analyst::PrintedGraph() const {
    return std::filesystem::path(Folder().toStdString()) / "graph.pdf";
}

void Analyst::ChooseElectrode(std::size_t channel, const QString& electrode,
                              const QString& serialNo, int tempSensor) {
    Pick(Main(), Element("cboEntry", ChannelRows::electrode + channel), electrode);
    Type(Main(), Element("txtEntry", ChannelRows::serialNo + channel), serialNo);
    Pick(Main(), Element("cboEntry", ChannelRows::tempSensor + channel),
         QString::number(tempSensor));
}

void Analyst::SetUpProject() {
    Type(Main(), Element("txtEntry", SetupPage::project), "Spring water survey");
    Type(Main(), Element("txtEntry", SetupPage::analyst), "Analyst on duty");
    ChooseElectrode(0, "H (pH)", "PH-1001", 1);
    ChooseElectrode(1, "Ca", "CA-1002", 2);
    ChooseElectrode(2, "Ca", "CA-1003", 3);
    Picture(Main(), "setup");

    // An electrode that is not calibrated yet is refused.
    answers_.Message("The electrode in channel 1 has not been calibrated.", QMessageBox::Ok,
                     "not-calibrated");
    Click(Main(), Element("cmdPage", frmMain::switchPage));
    WaitFor("the refusal", [this] { return answers_.AllGiven(); });
}

void Analyst::LookAtPort() {
    Click(Main(), "cmdPort");
    QWidget& port = Window("frmPortSettings");
    Click(port, "cmdOK");
    WaitForAnswer(port,
                  "The test on Comm" + std::to_string(TourInstrument::port) + " is successful.");
    Picture(port, "port");
    if (systemHasSimulatedInstrument)
        UseSimulatedInstrument(port);
    EXPECT_EQ(CommPort::PortNumber(), TourInstrument::port);
    Click(port, "cmdCancel");
}

void Analyst::WaitForAnswer(const QWidget& port, const std::string& status) {
    WaitFor(status, [&] {
        return TextOf(port, "txtStatus").startsWith(QString::fromStdString(status)) &&
               TextOf(port, "lblAnswer").startsWith("The instrument answered: E1 ");
    });
}

void Analyst::UseSimulatedInstrument(const QWidget& port) {
    Click(port, "cmdSimulated"); // "Use the Simulated Instrument"
    WaitForAnswer(port, "The simulated instrument is COM");
    Click(port, "cmdSimulated"); // "Simulated Instrument..."
    QWidget& simulated = Window("frmSimulated");
    Picture(simulated, "simulated");
    Click(simulated, Element("cmdBtn", frmSimulated::endInstrument));
    WaitFor("the end of the simulated instrument",
            [&] { return TextOf(port, "txtStatus") == "The simulated instrument has ended."; });
}

void Analyst::CalibratePH() {
    constexpr double offset_mV = 4;
    constexpr double slope_mV_per_pH = 57.98; // 98 % of the ideal slope
    Click(Main(), Element("cmdCalib", 0));
    QWidget& calibration = Window("frmCalib");
    Pick(calibration, "cboCalibPtrs", "3");
    const std::vector<std::string> buffers = {"4.01", "7.00", "10.01"};
    for (std::size_t point = 0; point < buffers.size(); ++point) {
        const std::string& buffer = buffers[point];
        instrument_.Command("solution 1 pH " + buffer);
        Type(calibration, Element("txtEntry", point), QString::fromStdString(buffer));
        PressEnter(calibration, Element("txtEntry", point));
        const double expected =
            offset_mV + slope_mV_per_pH * (7 - QString::fromStdString(buffer).toDouble());
        WaitFor("the reading in buffer " + buffer, [&] {
            return Shows(calibration, Element("lblReading", point), expected, reading_mV);
        });
        if (point == 1)
            Picture(calibration, "calibration-pH");
        Click(calibration, Element("cmdSys", frmCalib::mainButton)); // "&Record"
    }
    WaitFor("the offer of the summary", [&] {
        return TextOf(calibration, Element("cmdSys", frmCalib::mainButton)) == "Continue";
    });
    Click(calibration, Element("cmdSys", frmCalib::mainButton));
    WaitFor("the summary",
            [&] { return TextOf(calibration, "lblTitle") == "Calibration Summary"; });
    Picture(calibration, "calibration-pH-summary");
    Click(calibration, Element("cmdSys", frmCalib::finishButton));
    WaitFor("the end of the calibration", [&] { return Main().isEnabled(); });
}

void Analyst::CalibrateCalcium() {
    Click(Main(), "cmdSimult");
    QWidget& calibration = Window("SimultCalib");
    Picture(calibration, "simultaneous-choice");
    for (const char* channel : {"chkSimult_1", "chkSimult_2"})
        if (!Find<QAbstractButton>(calibration, channel).isChecked())
            Click(calibration, channel);
    Click(calibration, Element("cmdSys", SimultCalib::nextButton)); // "&Next >"
    Pick(calibration, "cboCalibPtrs", "3");
    const std::vector<std::string> standards = {"1", "10", "100"};
    for (std::size_t point = 0; point < standards.size(); ++point) {
        const std::string& standard = standards[point];
        instrument_.Command("solution 2 Ca " + standard + " ppm");
        instrument_.Command("solution 3 Ca " + standard + " ppm");
        Type(calibration, Element("txtDat", point), QString::fromStdString(standard));
        PressEnter(calibration, Element("txtDat", point));
        // Two frames, one a second, fill the moving average with the new solution alone.
        WaitFor("the busy pointer to go",
                [&] { return QApplication::overrideCursor() == nullptr; });
        Watch(std::chrono::milliseconds(4500));
        if (point == 1)
            Picture(calibration, "simultaneous-reading");
        Click(calibration, Element("cmdSys", SimultCalib::mainButton)); // "&Record"
    }
    Watch(std::chrono::milliseconds(200));
    Picture(calibration, "simultaneous-summary");
    Click(calibration,
          Element("cmdSys", SimultCalib::nextButton)); // "&Next >": the second channel's
    Click(calibration, Element("cmdSys", SimultCalib::finishButton));
    WaitFor("the end of the calibration", [&] { return Main().isEnabled(); });
}

void Analyst::BeginMeasuring() {
    instrument_.Command("solution 1 pH 6.8");
    instrument_.Command("solution 2 Ca 42 ppm");
    instrument_.Command("solution 3 Ca 17 ppm");
    Click(Main(), Element("cmdPage", frmMain::switchPage));
    WaitFor("the measuring page",
            [this] { return Main().windowTitle() == "4-Channel Vantrel : Data Acquisition"; });
    WaitFor("pH 6.80",
            [this] { return Shows(Main(), Element("lblEntry", ReadingsTable::pH), 6.8, 0.011); });
    WaitFor("42 ppm",
            [this] { return Shows(Main(), Element("lblEntry", ReadingsTable::ppm + 1), 42, 1.0); });
    Picture(Main(), "measuring");
}

void Analyst::SetLimits() {
    constexpr std::size_t calcium = 1;
    answers_.Other("frmLimits", [](QWidget& dialog) {
        Pick(dialog, Element("cboLimit", calcium), "ppm");
        Type(dialog, Element("txtHigh", calcium), "40");
        Picture(dialog, "limits");
        Click(dialog, Element("cmdBtn", frmLimits::accept_));
    });
    Click(Main(), "cmdLimits");
    const auto& acknowledge = Find<QWidget>(Main(), "cmdAcknowledge");
    WaitFor("the alarm at 42 ppm", [&] { return acknowledge.isVisible(); });
    Picture(Main(), "alarm");
    Click(Main(), "cmdAcknowledge");
    WaitFor("the end of the alarm", [&] { return !acknowledge.isVisible(); });
}

void Analyst::ReplaceElectrode() {
    Type(Main(), Element("txtEntry", ChannelRows::serialNo + 2), "CA-1103");
    Click(Main(), Element("cmdPage", frmMain::switchPage));
    WaitFor("the notice", [this] { return Find<QWidget>(Main(), "lblNotice").isVisible(); });
    WaitFor("readings",
            [this] { return Shows(Main(), Element("lblEntry", ReadingsTable::pH), 6.8, 0.011); });
    Watch(std::chrono::seconds(15)); // until the readings are steady
    Picture(Main(), "notice");
    Click(Main(), "cmdNewFile");
    WaitFor("the end of the notice",
            [this] { return !Find<QWidget>(Main(), "lblNotice").isVisible(); });
    Click(Main(), Element("cmdPage", frmMain::switchPage));
}

void Analyst::WaitForRecords(int count, int period_s) {
    WaitFor(
        "record " + std::to_string(count),
        [&] { return TextOf(Main(), "lblRec") == QString::number(count); },
        std::chrono::seconds(10 + count * period_s));
}

void Analyst::RecordByHand(int records) {
    answers_.File("Save File As", QString::fromStdString(MeasurementFile().string()), "save");
    for (int record = 1; record <= records; ++record) {
        if (record == 3)
            Type(Main(), "txtComment", "stirrer on");
        Click(Main(), Element("cmdPage", frmMain::run)); // "&Record"
        WaitForRecords(record, 1);
    }
    Picture(Main(), "recorded-by-hand");
}

void Analyst::WaitForInstrument() {
    Click(Main(), "chkResume");
    instrument_.Command("fault silence");
    WaitFor("the loss of the link", [this] { return Status().startsWith("last reading "); });
    Picture(Main(), "lost");
    instrument_.Command("fault none");
    WaitFor("the readings to come back",
            [this] { return Status().startsWith("no readings from "); });
    Click(Main(), "chkResume");
}

void Analyst::RecordWhenSteady(int record) {
    Click(Main(), "chkSteady");
    Click(Main(), Element("cmdPage", frmMain::run)); // "&Record"
    WaitFor("the press to wait",
            [this] { return TextOf(Main(), "lblRecording").startsWith("Waiting until"); });
    Picture(Main(), "waiting-for-steady");
    WaitForRecords(record, 1);
    Click(Main(), "chkSteady");
}

void Analyst::RecordByClock(int records, int period_s) {
    const int before = TextOf(Main(), "lblRec").toInt();
    Click(Main(), Element("cmdPage", frmMain::report));
    QWidget& report = Window("Report");
    WaitFor("the report", [&] { return TextOf(report, "lblStatus") == "Ready"; });
    Pick(Main(), "cboAcqr", "Automatic");
    Type(Main(), "txtTimer", QString::number(period_s));
    Click(Main(), Element("cmdPage", frmMain::run)); // "&Record"
    Choose(report, Element("mnuUpdateItem", ReportMenus::automaticUpdate));
    WaitForRecords(before + records, period_s);
    WaitFor("the line of the recording", [this] {
        return TextOf(Main(), "lblRecording").startsWith("Recording to tour.4ch every");
    });
    Picture(Main(), "recording-by-clock");
    Picture(report, "report-live");
    Click(Main(), Element("cmdPage", frmMain::run));        // "&Stop"
    Click(Main(), Element("cmdPage", frmMain::switchPage)); // "< &Back"
    WaitFor("the setup page",
            [this] { return Main().windowTitle() == "4-Channel Vantrel: Setup"; });
}

void Analyst::SelectQuantity(QWidget& report, std::size_t unit, const QString& pictureName) {
    answers_.Other("frmCommon", [=](QWidget& dialog) {
        Click(dialog, Element("optData", unit));
        if (unit == 0)
            Picture(dialog, "select-channels");
        Click(dialog, Element("cmdBtn", frmCommon::acceptButton));
    });
    Choose(report, Element("mnuViewItem", ReportMenus::selectChannels));
    WaitFor("the selection", [this] { return answers_.AllGiven(); });
    Picture(report, pictureName);
}

void Analyst::FindRecord(QWidget& report, int record) {
    Choose(report, Element("mnuToolItem", ReportMenus::findRecord));
    QWidget& search = Window("frmSrch");
    Type(search, "txtEntry", QString::number(record));
    PressEnter(search, "txtEntry");
    WaitFor("the record", [&] { return TextOf(search, "lblStatus") == "Ready"; });
    Picture(search, "search");
    search.close();
}

void Analyst::VerifyFile(QWidget& report) {
    Choose(report, Element("mnuToolItem", ReportMenus::verifyFile));
    QWidget& verify = Window("frmVerify");
    WaitFor("the verdict", [&] { return TextOf(verify, "lblVerdict").contains("none diverged"); });
    WaitFor("what the history knows of the file",
            [&] { return TextOf(verify, "lblHistory").startsWith("History: unchanged since "); });
    Picture(verify, "verify");
    Click(verify, "cmdClose");
}

/// Answers come from a timer's tick, in which no further dialog may be opened: the presses that do
/// so wait for the next pass of the event loop.
void Analyst::Print(QWidget& report, std::size_t option, const std::filesystem::path& pdf,
                    const QString& pictureName) {
    answers_.Other("frmPrint", [=](QWidget& form) {
        Click(form, Element("optPrintOpt", option));
        Picture(form, pictureName);
        QTimer::singleShot(0, &form, [&form] { Click(form, "cmdPrint"); });
    });
    answers_.Other("QPrintPreviewDialog", [=](QWidget& preview) {
        Picture(preview, pictureName + "-preview");
        if (!printDialogIsOurs)
            preview.close();
        for (QAction* action : preview.findChildren<QAction*>())
            if (printDialogIsOurs && action->text() == "Print")
                QTimer::singleShot(0, action, &QAction::trigger);
    });
    if (!printDialogIsOurs)
        answers_.Other("frmPrint", [](QWidget& form) { form.close(); });
    else
        answers_.Other("QPrintDialog", [=](QWidget& dialog) {
            Find<QLineEdit>(dialog, "filename").setText(QString::fromStdString(pdf.string()));
            qobject_cast<QDialog*>(&dialog)->accept();
        });
    Choose(report, Element("mnuFileItem", ReportMenus::printReport));
    WaitFor("the printed file",
            [&] { return answers_.AllGiven() && (!printDialogIsOurs || exists(pdf)); });
}

void Analyst::ViewReport() {
    QWidget& report = Window("Report");
    answers_.File("Open File", QString::fromStdString(MeasurementFile().string()));
    Choose(report, Element("mnuFileItem", ReportMenus::openFile));
    WaitFor("the loaded file", [&] { return TextOf(report, "lblStatus") == "Ready"; });
    const QStringList quantities = {"mV", "pH", "ppm", "mol-l", "celsius"};
    std::size_t unit = 0;
    for (const QString& quantity : quantities)
        SelectQuantity(report, unit++, "report-" + quantity);
    FindRecord(report, 3);
    VerifyFile(report);
    Choose(report, Element("mnuViewItem", ReportMenus::tableView));
    Picture(report, "report-table");
    answers_.File("Export Records", QString::fromStdString(ExportedFile().string()));
    Choose(report, Element("mnuFileItem", ReportMenus::exportRecords));
    WaitFor("the export", [this] { return std::filesystem::exists(ExportedFile()); });
    Print(report, frmPrint::asTable, PrintedTable(), "print-table");
    Print(report, frmPrint::asGraph, PrintedGraph(), "print-graph");
    Choose(report, "mnuBack");
    WaitFor("the viewer to close", [&] { return !report.isVisible(); });
}

void Analyst::ShowHistory() {
    Choose(Main(), "mnuHistory");
    QWidget& history = Window("frmHistory");
    WaitFor("the walk through the history",
            [&] { return TextOf(history, "lblChain").contains("all as they were written"); });
    Pick(history, "cboElectrode", "Ca, CA-1002");
    Picture(history, "history");
    Find<QTabWidget>(history, "tabHistory").setCurrentIndex(1);
    Picture(history, "history-events");
    Click(history, "cmdClose");
}

void Analyst::Exit() {
    answers_.Message("Are you sure you want to exit?", QMessageBox::Yes, "exit");
    QWidget& main = Main();
    Click(main, Element("cmdPage", frmMain::leave));
    WaitFor("the end", [&] { return !main.isVisible(); });
}
