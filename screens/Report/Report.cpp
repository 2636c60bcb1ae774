#include "screens/Report/Report.h"

#include "platform/qt/Text.h"
#include "ui_Report.h"

Report::Report(QWidget* parent) : QMainWindow(parent), ui_(std::make_unique<Ui::Report>()) {
    ui_->setupUi(this);
}

Report::~Report() = default;

void Report::ViewFile(const std::filesystem::path& fileName) {
    setWindowTitle("Report - " + Text::FromPath(fileName));
}
