#include "screens/Report/Report.h"

#include "platform/qt/Text.h"
#include "screens/controls/ControlArray.h"
#include "ui_Report.h"

#include <QAction>

Report::Report(QWidget* parent) : QMainWindow(parent), ui_(std::make_unique<Ui::Report>()) {
    ui_->setupUi(this);
}

Report::~Report() = default;

void Report::ViewFile(const std::filesystem::path& fileName) {
    setWindowTitle("Report - " + Text::FromPath(fileName));
    Q_EMIT FileShown(fileName);
}

void Report::SetUpdateEnabled(bool enabled) {
    for (const auto& [index, item] : ControlArray<QAction>(*this, "mnuUpdateItem"))
        item->setEnabled(enabled);
}
