#pragma once

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <array>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <mutex>
#include <optional>
#include <set>
#include <string>

/// What the instrument has sent: the log of its line, taken apart into all that can be a frame,
/// which is whatever 48 bytes end in EOT.
class FrameWitness {
public:
    explicit FrameWitness(std::filesystem::path log) : log_(std::move(log)) {}

    /// A frame so far has carried this in this channel; channels count from 0.
    bool HasCarried(std::size_t channel, int tenths_mV);

private:
    void ReadOn();

    const std::filesystem::path log_;
    std::streamoff read_ = 0;
    std::string last_; ///< the bytes before the next one, shorter than a frame
    std::array<std::set<int>, 4> carried_;
};

/// "12.3" as 123; nothing where the text is no number with one decimal.
std::optional<int> Tenths(const QString& text);

/// Judges what is heard of the program's values against the frames, and keeps what was shown and
/// what was said to be recorded. May be called from several threads.
class ValueWitness {
public:
    explicit ValueWitness(std::filesystem::path log) : frames_(std::move(log)) {}

    /// A control has changed to this: "Channel 1 potential in mV: 12.3".
    void Hear(const QString& spoken);

    /// A file may be written anew from now on: what was said of its records counts no more.
    void Forget(const QString& fileName);

    /// Values that were shown and in no frame, with the control.
    QStringList MadeUp() const;
    std::size_t ValuesShown() const;

    /// Names of the files that a record was said to be in.
    QStringList FilesRecordedInto() const;

    /// What is wrong with the file's records: numbers with a gap, values of no frame, fewer records
    /// than were said to be there and, where `allHeard`, values that were never shown.
    std::string Faults(const std::filesystem::path& file, bool allHeard);
    std::size_t RecordsJudged() const;

private:
    void HearValue(const QString& control, const QString& value);
    void HearProgress(const QString& progress);

    mutable std::mutex mutex_;
    FrameWitness frames_;
    bool averages_ = false;              ///< a value shown is of several frames
    QMap<QString, QSet<QString>> shown_; ///< texts, by the control
    QStringList madeUp_;
    std::size_t valuesShown_ = 0;
    std::size_t recordsJudged_ = 0;
    QMap<QString, int> acknowledged_; ///< number of the last record, by the file's name
    QString forgotten_;
    std::chrono::steady_clock::time_point forgottenAt_;
};
