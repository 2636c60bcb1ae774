#include "screens/controls/CalibrationPage.h"

#include "base/Electrode.h"
#include "chem/CalibrationSummary.h"
#include "chem/TheoreticalSlope.h"
#include "platform/qt/Text.h"
#include "screens/controls/CalibrationPlot.h"
#include "screens/controls/Colours.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>

namespace {

QLabel* NamedLabel(QWidget& parent, const QString& name) {
    auto* label = new QLabel(&parent);
    label->setObjectName(name);
    label->setWordWrap(true);
    return label;
}

QTableWidgetItem* Cell(const std::string& text, bool marked) {
    auto* item = new QTableWidgetItem(Text::ToQt(text));
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    QFont font = item->font();
    font.setBold(marked);
    item->setFont(font);
    return item;
}

} // namespace

CalibrationPage::CalibrationPage(QWidget* parent)
    : QWidget(parent), plot_(new CalibrationPlot(this)), lblSlopes_(NamedLabel(*this, "lblSlopes")),
      lstSlopes_(new QTableWidget(0, 3, this)), lblRemark_(NamedLabel(*this, "lblRemark")),
      lblIncorrect_(NamedLabel(*this, "lblIncorrect")) {
    plot_->setObjectName("pltCalibration");
    plot_->setAccessibleName("Calibration plot");
    BuildSlopes();
    auto* list = new QVBoxLayout;
    for (QWidget* widget : {static_cast<QWidget*>(lblIncorrect_), static_cast<QWidget*>(lblSlopes_),
                            static_cast<QWidget*>(lstSlopes_), static_cast<QWidget*>(lblRemark_)})
        list->addWidget(widget);
    list->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(plot_, 3);
    layout->addLayout(list, 2);
}

void CalibrationPage::BuildSlopes() {
    QFont heading = lblSlopes_->font();
    heading.setBold(true);
    lblSlopes_->setFont(heading);
    lblSlopes_->setText("Slopes");
    lstSlopes_->setObjectName("lstSlopes");
    lstSlopes_->setAccessibleName("Slopes");
    lstSlopes_->verticalHeader()->hide();
    lstSlopes_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    lstSlopes_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstSlopes_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstSlopes_->setMinimumWidth(fontMetrics().horizontalAdvance(QString(30, 'x')));
    Colours::MarkError(*lblIncorrect_, true);
    lblIncorrect_->setText(Text::ToQt(CalibrationSummary::invalidDataMessage));
}

void CalibrationPage::ShowCalibration(const CalibrationRecord& record, const std::string& electrode,
                                      bool usable) {
    const bool isPH = Electrode::KindOf(electrode) == Electrode::Kind::pH;
    plot_->ShowCurve(CurveOf(record, isPH));
    lblIncorrect_->setVisible(!usable);
    lblSlopes_->setVisible(usable);
    lstSlopes_->setVisible(usable);
    lblRemark_->setVisible(usable);
    lstSlopes_->setHorizontalHeaderLabels(
        {"Points", Text::ToQt(TheoreticalSlope::Unit(isPH)), "% of theory"});
    ShowSlopes(record, electrode);
}

void CalibrationPage::ShowSlopes(const CalibrationRecord& record, const std::string& electrode) {
    const auto lines = TheoreticalSlope::Lines(record, electrode);
    lstSlopes_->setRowCount(static_cast<int>(lines.size()));
    int row = 0;
    for (const TheoreticalSlope::Line& line : lines) {
        lstSlopes_->setItem(row, 0, Cell(line.points, !line.usual));
        lstSlopes_->setItem(row, 1, Cell(line.slope, !line.usual));
        lstSlopes_->setItem(row, 2, Cell(line.percent + (line.usual ? "" : " !"), !line.usual));
        ++row;
    }
    lstSlopes_->setFixedHeight(lstSlopes_->horizontalHeader()->sizeHint().height() +
                               lstSlopes_->verticalHeader()->length() +
                               2 * lstSlopes_->frameWidth());
    lblRemark_->setText(Text::ToQt(TheoreticalSlope::Remark(lines)));
}
