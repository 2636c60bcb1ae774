#pragma once

#include "chem/Measure.h"
#include "screens/calib/CalibTest.h"
#include "screens/frmCalib/frmCalib.h"

#include <memory>

/// The calibration of one electrode, point by point.
class SingleCalibration : public CalibTest {
protected:
    void Open(std::size_t channel) {
        form = std::make_unique<frmCalib>(channel);
        Show(*form);
    }

    void ReadPoint(int point, const QString& standard, double potential_mV) {
        Type(*form, "txtEntry_" + QString::number(point), standard);
        Click(*form, "cmdSys", frmCalib::mainButton);
        ReadingArrives(*form, potential_mV);
    }

    void RecordPoint(int point, const QString& standard, double potential_mV) {
        ReadPoint(point, standard, potential_mV);
        Click(*form, "cmdSys", frmCalib::mainButton);
    }

    /// Closing without the question, where the test is about something else.
    void GiveUp() {
        platform.dialogs.ExpectMessage(quitQuestion, quitStyle, platform::button::yes);
        form->close();
    }

    std::string Text(const QString& name) const { return TextOf(*form, name); }
    std::string MainCaption() const { return Caption(*form, frmCalib::mainButton); }

    static constexpr int quitStyle = Style(platform::style::yesNo, platform::style::exclamation,
                                           platform::style::defaultButton2);

    static constexpr const char* quitQuestion =
        "The calibration process has not been achieved yet.\nWould you like to quit the process?";
    std::unique_ptr<frmCalib> form;
};
