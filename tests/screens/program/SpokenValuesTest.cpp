// What a screen reader says of the program's values, on a desktop's accessibility bus.

#include "report/support/MeasurementText.h"
#include "screens/program/Bench.h"

#include <QFile>
#include <QRegularExpression>

namespace {

class SpokenValues : public Bench {
protected:
    /// A list's name is its chosen entry; what it is for is told by a label.
    void ExpectListsAreLabelled(const QString& label) const {
        reader.Await("list " + label, [&label](const SpokenControl& control) {
            return control.role == "combo box" && control.labels.contains(label);
        });
        for (const SpokenControl& each : reader.Controls())
            if (each.shown && each.role == "combo box") {
                EXPECT_NE(each.labels, "") << "a list that shows " << each.name.toStdString();
            }
    }

    void AwaitText(const QString& name, const QString& pattern) const {
        const QRegularExpression whole(QRegularExpression::anchoredPattern(pattern));
        reader.Await(name + " " + pattern, [&](const SpokenControl& control) {
            return control.name == name && whole.match(control.text).hasMatch();
        });
    }

    QString MeasurementOf(int records) const {
        QFile file(Folder() + "/run.4ch");
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray::fromStdString(MeasurementText().File(records)));
        return file.fileName();
    }
};

} // namespace

TEST_F(SpokenValues, The_setup_page_is_read_by_name_and_value) {
    Start();
    AwaitText("Project name", "Spring water survey");
    AwaitText("Averaging number for calibration", "3");
    AwaitText("Experiment date", "\\d\\d\\.\\w{3}\\.\\d{4}");
    AwaitText("Channel 2 electrode serial number", "PH-1002");
    reader.AwaitName("label", "Channel 3 last calibration: 16.Nov.2026");
    reader.AwaitName("panel", "Communications Port \\(COM1\\)");
    reader.AwaitName("label", "COM1, .*");
    for (const char* list : {"Channel 1 electrode", "Channel 4 electrode",
                             "Channel 2 reference type", "Channel 3 temperature sensor"})
        ExpectListsAreLabelled(list);
}

TEST_F(SpokenValues, Readings_marks_clock_and_averaging_are_read_by_name_and_value) {
    Start();
    Measure();
    reader.AwaitName("label", "Channel 2 pH: \\d\\.\\d\\d");
    reader.AwaitName("label", "Channel 3 concentration in ppm: \\d+\\.\\d");
    reader.AwaitName("label", "Channel 1 concentration in mol/l: \\d\\.\\d\\dE-\\d\\d");
    reader.AwaitName("label", "Channel 4 temperature in °C: \\d\\d\\.\\d");
    reader.AwaitName("label", "Channel 4 pH: blank");
    reader.AwaitName("label", "Channel \\d drift: (steady|drifting|[-+]?\\d.* \\S+/min)");
    reader.AwaitName("label", "Clock: \\d+:\\d\\d:\\d\\d \\d\\d\\.\\w{3}\\.\\d{4}");
    reader.AwaitName("label", "Averaging number for measurement: 2");
    reader.AwaitName("label", "Records written: 0");
    ExpectListsAreLabelled("Minutes of the trend");
}

TEST_F(SpokenValues, A_recording_is_read_by_its_counter_and_the_time_that_it_runs) {
    AddSettings("[Measuring Choices]\nAutomatic=1\nPeriod=1\n");
    Start();
    Measure();
    Record("spoken");
    reader.AwaitName("label", "Records written: [1-9]\\d*");
    reader.AwaitName("label", "Recording: .*spoken\\.4ch.* running 0:00:0[1-9].*");
}

TEST_F(SpokenValues, A_value_outside_its_standards_is_read_in_the_status_line) {
    instrument.Command("solution 1 Ca 900 ppm");
    Start();
    Measure();
    reader.AwaitName("status bar", ".*Channel 1: outside its standards \\(1 to 100 ppm\\).*");
}

TEST_F(SpokenValues, A_calibration_is_read_with_electrode_date_elapsed_time_and_reading) {
    Start();
    reader.Press("push button", "Calibrate channel 1");
    reader.AwaitName("label", "Electrode: Ca");
    reader.AwaitName("label", "Last calibration date: .*16.Nov.2026");
    reader.Press("push button", "Read");
    reader.AwaitName("label", "Reading of point 1 in mV: -?\\d+\\.\\d");
    reader.AwaitName("label", "State of point 1: (steady|drifting|.*/min)");
    reader.AwaitName("label", "\\d+:\\d\\d since Read");
    reader.AwaitName("label", "Temperature: \\d\\d\\.\\d °C");
    ExpectListsAreLabelled("Number of points");
    reader.Press("push button", "Close");
    Confirm("The calibration process has not been achieved yet.\n"
            "Would you like to quit the process?");
}

TEST_F(SpokenValues, The_device_of_a_port_and_the_state_of_the_link_are_read) {
    Start();
    reader.Press("push button", "Port settings");
    reader.AwaitName("label", "Device behind the port: COM1: .*");
    reader.Press("push button", "Test the chosen port and use it");
    AwaitText("Status of the link", ".+");
    reader.AwaitName("label", "Answer of the instrument: .+");
    ExpectListsAreLabelled("Unit of the transfer interval");
    reader.Press("push button", "Close this window");
}

TEST_F(SpokenValues, Viewer_search_and_print_are_read_with_their_status) {
    Start({MeasurementOf(3)});
    reader.AwaitName("label", "Status: Ready");
    AwaitText("Header of the file", "(?s).*River.*");
    ExpectListsAreLabelled("Quantity");

    reader.Press("menu item", "Find Record...");
    reader.AwaitName("label", "Status: Ready");
    reader.Write("Record number", "2");
    reader.Press("push button", "Find");
    reader.AwaitName("label", "Time and value: \\d\\d:\\d\\d:\\d\\d \\d\\d\\.\\w{3}\\.\\d{4} .*");
    ExpectListsAreLabelled("Unit");
    reader.Write("Record number", "7");
    reader.Press("push button", "Find");
    reader.AwaitName("label", "Status: Not Found");

    reader.Press("menu item", "Print...");
    ExpectListsAreLabelled("List:");
    reader.Press("push button", "Print", "Print Report");
    reader.AwaitName("label", "Status: Page 1, 100% complete\\. \\[Press ESC to stop printing\\]");
    constexpr int escape = 0xff1b;
    reader.Await("the preview",
                 [](const SpokenControl& each) { return each.window.startsWith("Print Preview"); });
    reader.PressKey(escape);
    reader.Await("the print window", [](const SpokenControl& each) {
        return each.name == "Close" && each.window.startsWith("Print Report");
    });
    reader.Press("push button", "Close", "Print Report");
}
