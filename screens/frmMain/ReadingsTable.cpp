#include "screens/frmMain/ReadingsTable.h"

#include "platform/qt/Text.h"
#include "screens/controls/Colours.h"
#include "screens/controls/ValueLabel.h"
#include "settings/mWinInit.h"

#include <QFontMetrics>
#include <QResizeEvent>

#include <algorithm>
#include <utility>

namespace {

constexpr const char* widestReading = "-8.88E+88";
constexpr const char* widestMark = "mol/l/min";
constexpr int smallestFigure_pt = 16; ///< as the form is designed
constexpr int largestFigure_pt = 36;

/// Where the labels of each quantity begin in lblEntry.
constexpr std::array<std::pair<Quantity, std::size_t>, quantityCount> labels = {
    {{Quantity::mV, ReadingsTable::mV},
     {Quantity::pH, ReadingsTable::pH},
     {Quantity::ppm, ReadingsTable::ppm},
     {Quantity::mol_l, ReadingsTable::mol_l},
     {Quantity::celsius, ReadingsTable::celsius}}};

QString OrElse(const std::string& text, const char* fallback) {
    return text.empty() ? QString(fallback) : Text::ToQt(text);
}

/// A cell paints its figure as text on a base, a label beside it as text on the window.
void SetTextColour(QPalette& palette, const QColor& colour) {
    palette.setColor(QPalette::WindowText, colour);
    palette.setColor(QPalette::Text, colour);
}

/// The room that a cell needs beside its figure.
int FrameOf(const QLabel& cell) {
    return 2 * (cell.margin() + cell.frameWidth());
}

} // namespace

ReadingsTable::ReadingsTable(QWidget& page)
    : QObject(&page), page_(page), lblEntry(page, "lblEntry"), lblChannel(page, "lblChannel"),
      lblElectrode(page, "lblElectrode"), lblSerialNo(page, "lblSerialNo"),
      lblSensor(page, "lblSensor"), lblMark(page, "lblMark") {}

void ReadingsTable::Prepare() {
    for (std::size_t i = 0; i < maxChannels; ++i) {
        const bool inUse = i < mWinInit::ChannelsInUse();
        for (const auto& [quantity, label] : labels) {
            FixRoom(lblEntry(label + i));
            lblEntry(label + i).setVisible(inUse);
            lblEntry(label + i).installEventFilter(this); // FitFigures, ClickAlarm
        }
        for (QLabel* label : {&lblChannel(i), &lblElectrode(i), &lblSerialNo(i), &lblSensor(i)})
            label->setVisible(inUse);
        lblMark(i).setVisible(inUse);
        lblMark(i).setMinimumWidth(lblMark(i).fontMetrics().horizontalAdvance(widestMark));
    }
    ShowColours();
}

/// Wide enough for any reading; the layout alone decides beyond that, never the text, so that
/// nothing moves when a figure changes.
void ReadingsTable::FixRoom(QLabel& cell) const {
    const QFontMetrics metrics = cell.fontMetrics();
    cell.setMinimumSize(metrics.horizontalAdvance(widestReading) + FrameOf(cell),
                        metrics.height() + FrameOf(cell));
    cell.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    cell.setBackgroundRole(QPalette::Base);
}

bool ReadingsTable::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress)
        ClickAlarm(watched);
    if (event->type() == QEvent::Resize && watched == &lblEntry(mV))
        FitFigures(static_cast<QResizeEvent*>(event)->size());
    return QObject::eventFilter(watched, event);
}

/// The largest figures that cells of this size hold.
void ReadingsTable::FitFigures(QSize cellSize) {
    const QLabel& sample = lblEntry(mV);
    QFont font = sample.font();
    font.setBold(false);
    for (int size = largestFigure_pt; size >= smallestFigure_pt; --size) {
        font.setPointSize(size);
        const QFontMetrics metrics(font);
        if (metrics.horizontalAdvance(widestReading) + FrameOf(sample) <= cellSize.width() &&
            metrics.height() + FrameOf(sample) <= cellSize.height())
            break;
    }
    for (std::size_t i = 0; i < maxChannels; ++i)
        for (const auto& [quantity, label] : labels) {
            QLabel& cell = lblEntry(label + i);
            font.setBold(cell.font().bold());
            cell.setFont(font);
        }
}

void ReadingsTable::ShowSetup(std::size_t channel, bool selected) {
    const auto& setup = mWinInit::ChannelSetup[channel];
    ShowValue(lblElectrode(channel), OrElse(setup.Electrode, "None"));
    ShowValue(lblSerialNo(channel), OrElse(setup.SerialNo, "N/A"));
    ShowValue(lblSensor(channel), QString::number(std::max<int>(setup.TempSensor, 0)));
    for (QLabel* label :
         {&lblChannel(channel), &lblElectrode(channel), &lblSerialNo(channel), &lblSensor(channel)})
        label->setEnabled(selected);
}

void ReadingsTable::Show(std::size_t channel, const ChannelDisplay::Cells& cells) {
    for (const auto& [quantity, label] : labels) {
        displayed_[channel][quantity] = cells[quantity].text;
        errors_[channel][quantity] = cells[quantity].error;
        ShowValue(lblEntry(label + channel), Text::ToQt(cells[quantity].text));
    }
    ShowLooks(channel);
}

void ReadingsTable::ShowWatch(std::size_t channel, const ReadingWatch::Row& row) {
    watched_[channel] = row;
    QString mark = Text::ToQt(row.mark);
    mark.replace(' ', '\n'); // number and unit, one above the other
    lblMark(channel).ShowMark(mark, row.steady);
    ShowLooks(channel);
}

void ReadingsTable::ShowStale(bool stale) {
    if (std::exchange(stale_, stale) == stale)
        return;
    for (std::size_t i = 0; i < maxChannels; ++i)
        ShowLooks(i);
}

ReadingsTable::Look ReadingsTable::LookOf(std::size_t channel, Quantity quantity) const {
    if (watched_[channel].alarm == quantity)
        return Look::alarm;
    if (stale_)
        return Look::stale;
    if (errors_[channel][quantity])
        return Look::error;
    return watched_[channel].outsideStandards == quantity ? Look::outsideStandards : Look::normal;
}

void ReadingsTable::ShowLooks(std::size_t channel) {
    for (const auto& [quantity, label] : labels) {
        QLabel& cell = lblEntry(label + channel);
        const Look look = LookOf(channel, quantity);
        if (std::exchange(shown_[channel][quantity], look) != look)
            ShowLook(cell, look);
        ShowReason(cell, channel, look);
    }
}

/// An error is bold besides its colour; the others say in words what they mean.
void ReadingsTable::ShowLook(QLabel& cell, Look look) {
    Colours::MarkError(cell, look == Look::error);
    const QPalette& around = cell.parentWidget()->palette();
    QPalette colours = cell.palette();
    colours.setColor(QPalette::Base, around.color(QPalette::Base));
    if (look == Look::outsideStandards)
        SetTextColour(colours, Colours::Caution(around));
    if (look == Look::stale)
        SetTextColour(colours, Colours::Stale(around));
    if (look == Look::alarm) {
        colours.setColor(QPalette::Base, Colours::Alarm());
        SetTextColour(colours, Qt::white);
    }
    cell.setPalette(colours);
}

void ReadingsTable::ShowReason(QLabel& cell, std::size_t channel, Look look) const {
    const ReadingWatch::Row& row = watched_[channel];
    QString reason;
    if (look == Look::outsideStandards)
        reason = Text::ToQt(row.standardsText);
    else if (look == Look::alarm)
        reason = Text::ToQt(row.limitsText) + "; click to acknowledge";
    if (cell.toolTip() == reason)
        return;
    cell.setToolTip(reason);
    cell.setAccessibleDescription(reason);
}

void ReadingsTable::ClickAlarm(const QObject* cell) {
    for (std::size_t i = 0; i < maxChannels; ++i)
        for (const auto& [quantity, label] : labels)
            if (cell == &lblEntry(label + i) && watched_[i].alarm == quantity)
                Q_EMIT AlarmClicked(i);
}

void ReadingsTable::BlinkTitle(bool red) {
    titleRed_ = red;
    QLabel& label = lblEntry(title);
    QPalette colours = label.palette();
    const QPalette& around = page_.palette();
    colours.setColor(QPalette::WindowText,
                     red ? Colours::BlinkOn(around) : Colours::BlinkOff(around));
    label.setPalette(colours);
}

void ReadingsTable::ShowColours() {
    BlinkTitle(titleRed_);
    for (std::size_t i = 0; i < maxChannels; ++i)
        for (const auto& [quantity, label] : labels)
            ShowLook(lblEntry(label + i), shown_[i][quantity]);
}
