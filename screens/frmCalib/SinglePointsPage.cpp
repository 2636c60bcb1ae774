#include "screens/frmCalib/SinglePointsPage.h"

#include "app/Mcommon.h"
#include "base/Quantity.h"
#include "platform/qt/Text.h"
#include "screens/calibration/CalibrationTexts.h"
#include "screens/calibration/PointReading.h"
#include "screens/controls/MarkLabel.h"
#include "screens/controls/ValueLabel.h"
#include "ui_SinglePointsPage.h"

namespace {

constexpr int entryWidth_px = 190;
constexpr int readingWidth_px = 110;
constexpr int markWidth_px = 72;
constexpr int readingSize_pt = 12;
constexpr const char* firstReading = "0.0"; // stands until the first value has arrived

/// Columns of the grid; its first row is that of the headings.
enum Column { captionColumn, entryColumn, readingColumn, markColumn };

QLabel* ReadingLabel(std::size_t point) {
    auto* label = new QLabel;
    label->setObjectName(QString("lblReading_%1").arg(point));
    label->setAccessibleName(QString("Reading of point %1 in mV").arg(point + 1));
    label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setMinimumWidth(readingWidth_px);
    QFont font = label->font();
    font.setPointSize(readingSize_pt);
    font.setBold(true);
    label->setFont(font);
    return label;
}

QString ReadingText(const CalibrationSession& session, std::size_t point) {
    if (const auto reading = session.Shown(session.Channels().front(), point))
        return Text::ToQt(Mcommon::FormatReading(*reading));
    return session.IsBeingRead(point) ? QString(firstReading) : QString();
}

} // namespace

SinglePointsPage::SinglePointsPage(QWidget* parent)
    : QScrollArea(parent), ui_(std::make_unique<Ui::SinglePointsPage>()) {
    ui_->setupUi(this);
    txtEntry = new StandardFields(*ui_->fraEntryContents, "txtEntry", entryWidth_px);
    for (std::size_t point = 0; point < CalibrationSession::maxPoints; ++point)
        rows_.at(point) = BuildRow(point);
    room_.Take(*this, *ui_->pltTrend);
}

SinglePointsPage::~SinglePointsPage() = default;

SinglePointsPage::Row SinglePointsPage::BuildRow(std::size_t point) {
    const Row row{new QLabel(QString("Point &%1").arg(point + 1)), ReadingLabel(point),
                  new MarkLabel};
    row.lblPoint->setObjectName(QString("lblPoint_%1").arg(point));
    row.lblPoint->setBuddy(&(*txtEntry)(point));
    row.lblMark->setObjectName(QString("lblMark_%1").arg(point));
    row.lblMark->setAccessibleName(QString("State of point %1").arg(point + 1));
    row.lblMark->setMinimumWidth(markWidth_px);
    row.lblMark->setToolTip(CalibrationTexts::markTip);
    const int place = static_cast<int>(point) + 1;
    QGridLayout& grid = *ui_->layPoints;
    grid.addWidget(row.lblPoint, place, captionColumn);
    grid.addWidget(&(*txtEntry)(point), place, entryColumn);
    grid.addWidget(row.lblReading, place, readingColumn);
    grid.addWidget(row.lblMark, place, markColumn);
    return row;
}

CalibrationChoices& SinglePointsPage::Choices() const {
    return *ui_->fraChoices;
}

void SinglePointsPage::ShowSession(const CalibrationSession& session, const PointReading& reading) {
    ui_->fraChoices->ShowChoices(session);
    ui_->lblInfo_3->setText(Text::ToQt(CalibrationTexts::ColumnHeading(session.IsPH())));
    txtEntry->ShowState(session);
    for (std::size_t point = 0; point < CalibrationSession::maxPoints; ++point) {
        const Row& row = rows_.at(point);
        const bool chosen = point < session.PointCount();
        for (QWidget* part : {row.lblPoint, row.lblReading, static_cast<QLabel*>(row.lblMark)})
            part->setVisible(chosen);
        ShowValue(*row.lblReading, ReadingText(session, point));
        ShowMark(*row.lblMark, point, session, reading);
    }
    ShowElapsed(reading);
    ShowReading(session, reading);
}

void SinglePointsPage::ShowReading(const CalibrationSession& session, const PointReading& reading) {
    const std::string temperature = reading.TemperatureText(session.Channels().front());
    ui_->lblTemperature->setText(
        temperature.empty() ? QString()
                            : Text::ToQt("Temperature: " + temperature + " " +
                                         std::string(Quantities::Label(Quantity::celsius))));
    ui_->pltTrend->ShowTrace(reading.Readings(), session.Channels());
    room_.SetWanted(reading.IsRunning() || !reading.Readings().empty());
}

void SinglePointsPage::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    room_.Share();
}

void SinglePointsPage::ShowElapsed(const PointReading& reading) {
    ui_->lblElapsed->setText(Text::ToQt(reading.ElapsedText()));
}

void SinglePointsPage::ShowMark(MarkLabel& label, std::size_t point,
                                const CalibrationSession& session, const PointReading& reading) {
    if (session.IsBeingRead(point)) {
        const StabilityMark* mark = reading.MarkOf(session.Channels().front());
        label.ShowMark(mark ? Text::ToQt(mark->Text()) : QString(), mark && mark->IsSteady());
    } else if (session.IsRecordedHere(point)) {
        label.ShowMark("recorded", false);
    } else {
        label.ShowMark(session.IsRecorded(point) ? "last calibration" : "", false);
    }
}
