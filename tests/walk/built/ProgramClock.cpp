#include "walk/built/ProgramClock.h"

#include <QDateTime>
#include <QProcess>
#include <QSaveFile>
#include <gtest/gtest.h>

namespace {

/// Summer time begins on the last Sunday of March and ends on that of October, as in most of
/// Europe.
constexpr auto zone = "CET-1CEST,M3.5.0,M10.5.0/3";

qint64 SecondsUntilChangeOn(const QDate& day) { // both come at one o'clock in Greenwich
    constexpr qint64 before_s = 3;
    return QDateTime::currentDateTimeUtc().secsTo(QDateTime(day, QTime(1, 0), Qt::UTC)) - before_s;
}

qint64 TimeSeenWith(const QProcessEnvironment& environment) {
    QProcess look;
    look.setProcessEnvironment(environment);
    look.start("date", {"+%s"});
    EXPECT_TRUE(look.waitForFinished()) << look.errorString().toStdString();
    return look.readAllStandardOutput().trimmed().toLongLong();
}

} // namespace

ProgramClock::ProgramClock(const QString& folder, QProcessEnvironment& environment)
    : shown_(folder + "/clock") {
    environment.insert("TZ", zone);
    environment.insert("LD_PRELOAD", "/usr/$LIB/faketime/libfaketime.so.1");
    environment.insert("FAKETIME_TIMESTAMP_FILE", shown_);
    environment.insert("FAKETIME_NO_CACHE", "1");
    environment.insert("FAKETIME_DONT_FAKE_MONOTONIC", "1"); // nobody can set that one
    environment.insert("NO_FAKE_STAT", "1");
    constexpr qint64 day_s = 86400;
    Set(QString::number(day_s));
    EXPECT_GE(TimeSeenWith(environment) - QDateTime::currentSecsSinceEpoch(), day_s / 2)
        << "the clock cannot be set";
    Set("0");
}

void ProgramClock::Set(const QString& to) const {
    const qint64 ahead_s = to == "summer"   ? SecondsUntilChangeOn({2026, 3, 29})
                           : to == "winter" ? SecondsUntilChangeOn({2026, 10, 25})
                                            : to.toLongLong();
    QSaveFile file(shown_); // it is read whenever the program asks for the time
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write((ahead_s < 0 ? "" : "+") + QByteArray::number(ahead_s) + "\n");
    EXPECT_TRUE(file.commit());
}
