#include "screens/calibration/SummaryPage.h"

#include "base/Electrode.h"
#include "platform/qt/Text.h"
#include "screens/calibration/CalibrationTexts.h"
#include "screens/calibration/SlopeLines.h"
#include "screens/controls/Colours.h"
#include "ui_SummaryPage.h"

namespace {

constexpr int listWidth_characters = 33;

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

SummaryPage::SummaryPage(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::SummaryPage>()) {
    ui_->setupUi(this);
    ui_->lstSlopes->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    ui_->lstSlopes->setMinimumWidth(
        fontMetrics().horizontalAdvance(QString(listWidth_characters, 'x')));
    Colours::MarkError(*ui_->lblIncorrect, true);
    ui_->lblIncorrect->setText(Text::ToQt(CalibrationTexts::invalidData));
}

SummaryPage::~SummaryPage() = default;

void SummaryPage::ShowCalibration(const CalibrationRecord& record, const std::string& electrode,
                                  bool usable) {
    const bool isPH = Electrode::KindOf(electrode) == Electrode::Kind::pH;
    ui_->pltCalibration->ShowCurve(CurveOf(record, isPH));
    ui_->lblIncorrect->setVisible(!usable);
    for (QWidget* part :
         {static_cast<QWidget*>(ui_->lblSlopes), static_cast<QWidget*>(ui_->lstSlopes),
          static_cast<QWidget*>(ui_->lblRemark)})
        part->setVisible(usable);
    ui_->lstSlopes->setHorizontalHeaderLabels(
        {"Points", Text::ToQt(SlopeUnit(isPH)), "% of theory"});
    ShowSlopes(record, electrode);
}

void SummaryPage::ShowStanding(const History::Standing& standing) {
    ui_->lblStanding->setText("Slope of theory: " + Text::ToQt(standing.text));
    ui_->lblStanding->setVisible(!standing.text.empty());
    Colours::MarkCaution(*ui_->lblStanding, !standing.usual);
}

void SummaryPage::ShowSlopes(const CalibrationRecord& record, const std::string& electrode) {
    const auto lines = SlopeLines(record, electrode);
    QTableWidget& list = *ui_->lstSlopes;
    list.setRowCount(static_cast<int>(lines.size()));
    int row = 0;
    for (const SlopeLine& line : lines) {
        list.setItem(row, 0, Cell(line.points, !line.usual));
        list.setItem(row, 1, Cell(line.slope, !line.usual));
        list.setItem(row, 2, Cell(line.percent + (line.usual ? "" : " !"), !line.usual));
        ++row;
    }
    list.setFixedHeight(list.horizontalHeader()->sizeHint().height() +
                        list.verticalHeader()->length() + 2 * list.frameWidth());
    ui_->lblRemark->setText(Text::ToQt(SlopeRemark(lines)));
}
