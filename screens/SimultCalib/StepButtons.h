#pragma once

#include "screens/controls/ControlArray.h"

#include <QPushButton>

class CalibrationSession;
class SimultSummaryPage;

/// The buttons of the simultaneous calibration, as each of its steps needs them.
class StepButtons {
public:
    enum class Step { channels, points, summary };

    /// Indices of cmdSys.
    enum Index {
        nextButton, ///< "< &Back" or "&Next >"
        mainButton,
        stopButton,
        averagingButton,
        helpButton,
        finishButton,
        closeButton
    };

    /// Session and page must outlive the buttons.
    StepButtons(const ControlArray<QPushButton>& cmdSys, const CalibrationSession& session,
                const SimultSummaryPage& summary)
        : cmdSys_(cmdSys), session_(session), summary_(summary) {}

    void Show(Step step) const;

    /// The button that takes the user on from a step, and that Enter presses.
    QPushButton& NextOf(Step step) const;

private:
    ControlArray<QPushButton> cmdSys_;
    const CalibrationSession& session_;
    const SimultSummaryPage& summary_;
};
