#include "screens/SimultCalib/StepButtons.h"

#include "chem/CalibrationSession.h"
#include "platform/qt/Text.h"
#include "screens/SimultCalib/SimultSummaryPage.h"
#include "screens/calibration/CalibrationSteps.h"
#include "screens/calibration/CalibrationTexts.h"

void StepButtons::Show(Step step) const {
    const bool onSummary = step == Step::summary;
    const bool forward = step == Step::channels || (onSummary && !summary_.IsLastChannel());
    cmdSys_(nextButton).setText(forward ? "&Next >" : "< &Back");
    cmdSys_(mainButton)
        .setText(Text::ToQt(onSummary ? CalibrationTexts::print
                                      : CalibrationTexts::MainCaption(session_.MainAction())));
    cmdSys_(mainButton).setEnabled(step == Step::points || (onSummary && summary_.IsUsable()));
    cmdSys_(stopButton).setEnabled(session_.IsReading());
    cmdSys_(averagingButton).setEnabled(!onSummary);
    OfferFinish(onSummary && session_.IsFinished(), cmdSys_(finishButton), cmdSys_(closeButton));
}

QPushButton& StepButtons::NextOf(Step step) const {
    switch (step) {
    case Step::channels:
        return cmdSys_(nextButton);
    case Step::points:
        return cmdSys_(mainButton);
    case Step::summary:
        break;
    }
    return cmdSys_(session_.IsFinished() ? finishButton : nextButton);
}
