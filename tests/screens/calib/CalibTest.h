#pragma once

#include "chem/CalibrationRecord.h"
#include "screens/support/ScreenTest.h"

#include <QLabel>
#include <QLineEdit>

#include <string>

/// An instrument with a pH electrode on channel 1, Ca on 2 and 3, Cl on 4; one reading makes an
/// average.
class CalibTest : public ScreenTest {
protected:
    static constexpr std::size_t pHChannel = 0;
    static constexpr std::size_t firstCa = 1;
    static constexpr std::size_t secondCa = 2;
    static constexpr std::size_t clChannel = 3;
    static constexpr const char* connectionMessage =
        "There are some problem on connection.\nClick on button Start to start reading again.";

    CalibTest();

    static CalibrationRecord& Stored(std::size_t channel);

    /// A frame with the same reading on every electrode, in mV, and the tick that shows it.
    void ReadingArrives(const QWidget& form, double potential_mV);

    /// The library's line of a channel and its electrode.
    std::string LibraryLine(std::size_t channel) const;

    static std::string TextOf(const QWidget& form, const QString& name);
    static std::string Caption(const QWidget& form, int button);
    static QString FocusName(const QWidget& form);
    bool Hourglass() const;
};
