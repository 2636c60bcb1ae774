#include "walk/built/ValueWitness.h"

#include "files/MeasurementReader.h"
#include "link/Frame.h"

#include <QRegularExpression>

#include <cmath>
#include <fstream>
#include <iterator>
#include <span>

using namespace std::chrono_literals;

namespace {

/// What was said before a file was begun anew may be heard after it.
constexpr auto echo = 2s;

/// How each value of a record is called on the measuring page.
QString ControlOf(std::size_t channel, Quantity quantity) {
    static const PerQuantity<QString> names = {{"potential in mV", "pH", "concentration in ppm",
                                                "concentration in mol/l",
                                                QString::fromUtf8("temperature in \xC2\xB0"
                                                                  "C")}};
    return QString("Channel %1 ").arg(channel + 1) + names[quantity];
}

bool IsNumber(const QString& text) {
    bool isNumber = false;
    text.toDouble(&isNumber);
    return isNumber;
}

} // namespace

std::optional<int> Tenths(const QString& text) {
    static const QRegularExpression pattern("^(-?\\d+)\\.(\\d)$");
    const auto match = pattern.match(text.trimmed());
    if (!match.hasMatch())
        return std::nullopt;
    return (match.captured(1) + match.captured(2)).toInt();
}

bool FrameWitness::HasCarried(std::size_t channel, int tenths_mV) {
    if (!carried_[channel].contains(tenths_mV))
        ReadOn();
    return carried_[channel].contains(tenths_mV);
}

void FrameWitness::ReadOn() {
    std::ifstream file(log_, std::ios::binary);
    file.seekg(read_);
    const std::string more((std::istreambuf_iterator<char>(file)), {});
    read_ += std::ssize(more);
    const std::string bytes = last_ + more;
    for (std::size_t end = Frame::length; end <= bytes.size(); ++end) {
        if (static_cast<std::uint8_t>(bytes[end - 1]) != Frame::endOfTransmission)
            continue;
        Frame::Bytes frame{};
        std::copy_n(bytes.begin() + std::ptrdiff_t(end - Frame::length), Frame::length,
                    frame.begin());
        const Frame::Values values = Frame::Decode(frame);
        for (std::size_t channel = 0; channel < carried_.size(); ++channel)
            carried_[channel].insert(static_cast<int>(std::lround(values[2 * channel] * 10)));
    }
    last_ = bytes.substr(bytes.size() - std::min(bytes.size(), Frame::length - 1));
}

void ValueWitness::Hear(const QString& spoken) {
    const std::scoped_lock lock(mutex_);
    const qsizetype colon = spoken.indexOf(": ");
    const QString control = spoken.left(colon), value = spoken.mid(colon + 2);
    if (control.startsWith("Channel "))
        HearValue(control, value);
    else if (control == "Recording")
        HearProgress(value);
    else if (control == "Averaging number for measurement")
        averages_ = value != "1";
}

void ValueWitness::HearValue(const QString& control, const QString& value) {
    shown_[control].insert(value);
    const auto tenths = control.endsWith(" potential in mV") ? Tenths(value) : std::nullopt;
    const auto channel = static_cast<std::size_t>(control.mid(8, 1).toInt() - 1);
    if (!tenths || averages_)
        return;
    ++valuesShown_;
    if (!frames_.HasCarried(channel, *tenths))
        madeUp_ << control + ": " + value;
}

void ValueWitness::HearProgress(const QString& progress) {
    static const QRegularExpression pattern("^Recording to (.+) every .*: record (\\d+) at ");
    const auto match = pattern.match(progress);
    if (!match.hasMatch())
        return;
    const QString name = match.captured(1);
    if (name != forgotten_ || std::chrono::steady_clock::now() > forgottenAt_ + echo)
        acknowledged_[name] = match.captured(2).toInt();
}

void ValueWitness::Forget(const QString& fileName) {
    const std::scoped_lock lock(mutex_);
    forgotten_ = fileName;
    forgottenAt_ = std::chrono::steady_clock::now();
    acknowledged_.remove(fileName);
}

QStringList ValueWitness::MadeUp() const {
    const std::scoped_lock lock(mutex_);
    return madeUp_;
}

std::size_t ValueWitness::ValuesShown() const {
    const std::scoped_lock lock(mutex_);
    return valuesShown_;
}

std::size_t ValueWitness::RecordsJudged() const {
    const std::scoped_lock lock(mutex_);
    return recordsJudged_;
}

QStringList ValueWitness::FilesRecordedInto() const {
    const std::scoped_lock lock(mutex_);
    return acknowledged_.keys();
}

std::string ValueWitness::Faults(const std::filesystem::path& path, bool allHeard) {
    const std::scoped_lock lock(mutex_);
    const auto file = FileOpr::ReadMeasurementFile(path);
    std::string faults = file.complete ? "" : "\nthe last record is cut off";
    int number = 0;
    for (const FileOpr::MeasurementRecord& record : file.records) {
        const std::string name = "\nrecord " + std::to_string(record.number);
        if (record.number != ++number)
            faults += name + " stands in the place of " + std::to_string(number);
        for (std::size_t channel = 0; channel < 4; ++channel)
            for (const auto& row : Quantities::table) {
                const QString cell =
                    QString::fromLatin1(record.cells[channel][row.quantity].c_str()).trimmed();
                const QString control = ControlOf(channel, row.quantity);
                const bool made = row.quantity == Quantity::mV && !averages_ && Tenths(cell) &&
                                  !frames_.HasCarried(channel, *Tenths(cell));
                if (made)
                    faults += name + ": no frame carried " + cell.toStdString();
                if (allHeard && IsNumber(cell) && !shown_[control].contains(cell))
                    faults += name + ": never shown, " + (control + ": " + cell).toStdString();
            }
    }
    recordsJudged_ += file.records.size();
    const int told = acknowledged_.value(QString::fromStdString(path.filename().string()));
    if (told > number)
        faults += "\nrecord " + std::to_string(told) + " was said to be recorded, there are " +
                  std::to_string(number);
    return faults;
}
