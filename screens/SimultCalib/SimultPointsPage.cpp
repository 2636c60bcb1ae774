#include "screens/SimultCalib/SimultPointsPage.h"

#include "app/Mcommon.h"
#include "platform/qt/Text.h"
#include "screens/calibration/CalibrationTexts.h"
#include "screens/calibration/PointReading.h"
#include "screens/controls/MarkLabel.h"
#include "screens/controls/ValueLabel.h"
#include "ui_SimultPointsPage.h"

#include <QScreen>

#include <algorithm>

namespace {

constexpr int entryWidth_px = 110;
constexpr int readingWidth_px = 78;
constexpr const char* widestMark =
    "-00.0 mV/min"; // columns do not jump about while a reading settles

/// Columns and rows of the grid: headings, the points, the marks.
enum GridColumn { captionColumn, unitColumn, entryColumn, firstReadingColumn };
enum GridRow {
    headingRow,
    firstPointRow,
    markRow = firstPointRow + maxCalibrationPoints,
    temperatureRow
};

template <class Label>
Label* RightAligned(const QString& name, const QString& text = {}) {
    auto* label = new Label;
    label->setObjectName(name);
    label->setText(text);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

void SetBold(QLabel& label, bool bold) {
    QFont font = label.font();
    font.setBold(bold);
    label.setFont(font);
}

QLabel* ReadingLabel(std::size_t channel, std::size_t point) {
    auto* label = RightAligned<QLabel>(QString("lblSig_%1").arg(point * maxChannels + channel));
    label->setAccessibleName(
        QString("Reading of channel %1 at point %2 in mV").arg(channel + 1).arg(point + 1));
    label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    label->setMinimumWidth(readingWidth_px);
    return label;
}

bool TakesPart(const CalibrationSession& session, std::size_t channel) {
    return std::ranges::count(session.Channels(), channel) > 0;
}

QString ReadingText(const CalibrationSession& session, std::size_t channel, std::size_t point) {
    const auto reading = session.Shown(channel, point);
    return reading ? Text::ToQt(Mcommon::FormatReading(*reading)) : QString();
}

} // namespace

SimultPointsPage::SimultPointsPage(QWidget* parent)
    : QScrollArea(parent), ui_(std::make_unique<Ui::SimultPointsPage>()) {
    ui_->setupUi(this);
    txtDat = new StandardFields(*ui_->fraPointsContents, "txtDat", entryWidth_px);
    for (std::size_t point = 0; point < CalibrationSession::maxPoints; ++point)
        rows_.at(point) = BuildRow(point);
    for (std::size_t channel = 0; channel < maxChannels; ++channel)
        columns_.at(channel) = BuildColumn(channel);
    ui_->layPoints->setColumnStretch(firstReadingColumn + maxChannels, 1);
    room_.Take(*this, *ui_->pltTrend);
}

SimultPointsPage::~SimultPointsPage() = default;

SimultPointsPage::Row SimultPointsPage::BuildRow(std::size_t point) {
    const Row row{new QLabel(QString("Point &%1").arg(point + 1)),
                  RightAligned<QLabel>(QString("lblDat_%1").arg(point))};
    row.lblPoint->setObjectName(QString("lblPoint_%1").arg(point));
    row.lblPoint->setBuddy(&(*txtDat)(point));
    const int place = firstPointRow + static_cast<int>(point);
    QGridLayout& grid = *ui_->layPoints;
    grid.addWidget(row.lblPoint, place, captionColumn);
    grid.addWidget(row.lblDat, place, unitColumn);
    grid.addWidget(&(*txtDat)(point), place, entryColumn);
    return row;
}

SimultPointsPage::Column SimultPointsPage::BuildColumn(std::size_t channel) {
    Column column;
    const int place = firstReadingColumn + static_cast<int>(channel);
    column.lblHead = RightAligned<QLabel>(QString("lblHead_%1").arg(channel),
                                          QString("Channel %1\nmV").arg(channel + 1));
    SetBold(*column.lblHead, true);
    ui_->layPoints->addWidget(column.lblHead, headingRow, place);
    int row = firstPointRow;
    for (std::size_t point = 0; point < column.lblSig.size(); ++point) {
        column.lblSig[point] = ReadingLabel(channel, point);
        ui_->layPoints->addWidget(column.lblSig[point], row++, place);
    }
    column.lblMark = RightAligned<MarkLabel>(QString("lblMark_%1").arg(channel));
    column.lblMark->setAccessibleName(QString("State of channel %1").arg(channel + 1));
    column.lblMark->setMinimumWidth(fontMetrics().horizontalAdvance(widestMark));
    column.lblMark->setToolTip(CalibrationTexts::markTip);
    ui_->layPoints->addWidget(column.lblMark, markRow, place);
    column.lblTemp = RightAligned<QLabel>(QString("lblTemp_%1").arg(channel));
    column.lblTemp->setAccessibleName(Text::ToQt("Temperature of channel " +
                                                 std::to_string(channel + 1) +
                                                 " in \xB0"
                                                 "C"));
    ui_->layPoints->addWidget(column.lblTemp, temperatureRow, place);
    return column;
}

CalibrationChoices& SimultPointsPage::Choices() const {
    return *ui_->fraChoices;
}

void SimultPointsPage::ShowSession(const CalibrationSession& session, const PointReading& reading) {
    ui_->fraChoices->ShowChoices(session);
    ui_->lblInfo_1->setText(Text::ToQt(CalibrationTexts::ColumnHeading(session.IsPH())));
    txtDat->ShowState(session);
    for (std::size_t point = 0; point < CalibrationSession::maxPoints; ++point)
        ShowRow(point, session);
    for (std::size_t channel = 0; channel < maxChannels; ++channel)
        ShowColumn(channel, session, reading);
    ShowElapsed(reading);
    ShowReading(session, reading);
}

void SimultPointsPage::ShowReading(const CalibrationSession& session, const PointReading& reading) {
    bool anySensor = false;
    for (std::size_t channel = 0; channel < maxChannels; ++channel) {
        QLabel& label = *columns_.at(channel).lblTemp;
        label.setVisible(TakesPart(session, channel));
        ShowValue(label, Text::ToQt(reading.TemperatureText(channel)));
        anySensor = anySensor || !label.text().isEmpty();
    }
    ui_->lblTempCaption->setVisible(anySensor);
    ui_->pltTrend->ShowTrace(reading.Readings(), session.Channels());
    room_.SetWanted(reading.IsRunning() || !reading.Readings().empty());
}

void SimultPointsPage::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    room_.Share();
}

void SimultPointsPage::ShowRow(std::size_t point, const CalibrationSession& session) {
    const Row& row = rows_.at(point);
    row.lblPoint->setVisible(point < session.PointCount());
    row.lblDat->setVisible(point < session.PointCount());
    row.lblDat->setText(Text::ToQt(CalibrationTexts::PointLabel(session.IsPH(), session.Unit())));
}

void SimultPointsPage::ShowColumn(std::size_t channel, const CalibrationSession& session,
                                  const PointReading& reading) {
    const Column& column = columns_.at(channel);
    const bool takesPart = TakesPart(session, channel);
    column.lblHead->setVisible(takesPart);
    std::size_t point = 0;
    for (QLabel* signal : column.lblSig) {
        signal->setVisible(takesPart && point < session.PointCount());
        ShowValue(*signal, ReadingText(session, channel, point));
        SetBold(*signal, session.IsBeingRead(point));
        ++point;
    }
    const StabilityMark* mark = reading.MarkOf(channel);
    column.lblMark->setVisible(takesPart);
    column.lblMark->ShowMark(mark ? Text::ToQt(mark->Text()) : QString(), mark && mark->IsSteady());
}

void SimultPointsPage::ShowElapsed(const PointReading& reading) {
    ui_->lblElapsed->setText(Text::ToQt(reading.ElapsedText()));
}

void SimultPointsPage::WidenWindow() {
    const int missing_px = ui_->fraPointsContents->minimumSizeHint().width() - viewport()->width();
    QWidget& form = *window();
    if (missing_px > 0)
        form.resize(std::min(form.width() + missing_px, screen()->availableGeometry().width()),
                    form.height());
}
