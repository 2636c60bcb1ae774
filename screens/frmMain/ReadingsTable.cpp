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
constexpr int smallestFigure_pt = 16; ///< as the form is designed
constexpr int largestFigure_pt = 36;

/// Where the labels of each quantity begin in lblEntry.
constexpr std::array<std::pair<Quantity, int>, quantityCount> labels = {
    {{Quantity::mV, ReadingsTable::mV},
     {Quantity::pH, ReadingsTable::pH},
     {Quantity::ppm, ReadingsTable::ppm},
     {Quantity::mol_l, ReadingsTable::mol_l},
     {Quantity::celsius, ReadingsTable::celsius}}};

QString OrElse(const std::string& text, const char* fallback) {
    return text.empty() ? QString(fallback) : Text::ToQt(text);
}

/// The room that a cell needs beside its figure.
int FrameOf(const QLabel& cell) {
    return 2 * (cell.margin() + cell.frameWidth());
}

} // namespace

ReadingsTable::ReadingsTable(QWidget& page)
    : QObject(&page), page_(page), lblEntry(page, "lblEntry"), lblChannel(page, "lblChannel"),
      lblElectrode(page, "lblElectrode"), lblSerialNo(page, "lblSerialNo"),
      lblSensor(page, "lblSensor") {}

void ReadingsTable::Prepare() {
    for (int i = 0; i < maxChannels; ++i) {
        const bool inUse = i < mWinInit::HardwareSettings.ChannelCount;
        for (const auto& [quantity, label] : labels) {
            FixRoom(lblEntry(label + i));
            lblEntry(label + i).setVisible(inUse);
        }
        for (QLabel* label : {&lblChannel(i), &lblElectrode(i), &lblSerialNo(i), &lblSensor(i)})
            label->setVisible(inUse);
    }
    lblEntry(mV).installEventFilter(this); // FitFigures
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
    if (event->type() == QEvent::Resize)
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
    for (int i = 0; i < maxChannels; ++i)
        for (const auto& [quantity, label] : labels) {
            QLabel& cell = lblEntry(label + i);
            font.setBold(cell.font().bold());
            cell.setFont(font);
        }
}

void ReadingsTable::ShowSetup(int channel, bool selected) {
    const auto& setup = mWinInit::ChannelSetup[static_cast<std::size_t>(channel)];
    ShowValue(lblElectrode(channel), OrElse(setup.Electrode, "None"));
    ShowValue(lblSerialNo(channel), OrElse(setup.SerialNo, "N/A"));
    ShowValue(lblSensor(channel), QString::number(std::max<int>(setup.TempSensor, 0)));
    for (QLabel* label :
         {&lblChannel(channel), &lblElectrode(channel), &lblSerialNo(channel), &lblSensor(channel)})
        label->setEnabled(selected);
}

void ReadingsTable::Show(int channel, const ChannelDisplay::Cells& cells) {
    const auto row = static_cast<std::size_t>(channel);
    for (const auto& [quantity, cellLabel] : labels) {
        QLabel& label = lblEntry(cellLabel + channel);
        displayed_[row][quantity] = cells[quantity].text;
        ShowValue(label, Text::ToQt(cells[quantity].text));
        const bool error = cells[quantity].error;
        if (std::exchange(errorShown_[row][quantity], error) != error)
            Colours::MarkError(label, error);
    }
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
    for (int i = 0; i < maxChannels; ++i)
        for (const auto& [quantity, cellLabel] : labels)
            Colours::MarkError(lblEntry(cellLabel + i),
                               errorShown_[static_cast<std::size_t>(i)][quantity]);
}
