#pragma once

#include <QProcessEnvironment>
#include <QString>

/// The wall clock that the program sees, which somebody sets now and then; Debian's libfaketime
/// shows it in the place of the computer's own. Its time zone has summer time.
class ProgramClock {
public:
    /// `folder` keeps what it shows. Before the program starts; fails the test where the clock
    /// cannot be set.
    ProgramClock(const QString& folder, QProcessEnvironment& environment);

    /// "3600" shows so many seconds more than the computer's own from now on; "summer" and "winter"
    /// the last seconds before that time begins.
    void Set(const QString& to) const;

private:
    QString shown_; ///< the file
};
