#pragma once

#include "screens/SimultCalib/SimultCalib.h"
#include "screens/calib/CalibTest.h"

#include <QCheckBox>
#include <QStackedWidget>

#include <cmath>
#include <initializer_list>
#include <memory>

/// A simultaneous calibration of the two Ca electrodes, step by step.
class SimultaneousPoints : public CalibTest {
protected:
    void OpenWith(std::initializer_list<std::size_t> channels) {
        form = std::make_unique<SimultCalib>();
        Show(*form);
        for (const std::size_t channel : channels)
            Element<QCheckBox>(*form, "chkSimult", channel).click();
        Click(*form, "cmdSys", SimultCalib::nextButton);
    }

    /// mV of the two Ca electrodes.
    void FrameArrives(double first_mV, double second_mV) {
        Arrive({0, 250, static_cast<int>(std::lround(first_mV * 10)), 250,
                static_cast<int>(std::lround(second_mV * 10)), 250, 0, 250});
        Tick(*form, "tmrRead");
    }

    void RecordPoint(int point, const QString& standard, double first_mV, double second_mV) {
        Type(*form, "txtDat_" + QString::number(point), standard);
        Click(*form, "cmdSys", SimultCalib::mainButton);
        FrameArrives(first_mV, second_mV);
        Click(*form, "cmdSys", SimultCalib::mainButton);
    }

    /// Two standards, up to the summary.
    void CalibrateCa() {
        OpenWith({firstCa, secondCa});
        RecordPoint(0, "1", 100, 80);
        RecordPoint(1, "10", 129, 108.5);
    }

    /// Goes through the summaries of all channels; the button then leads back.
    void SeeEverySummary() {
        while (Caption(*form, SimultCalib::nextButton) == "&Next >")
            Click(*form, "cmdSys", SimultCalib::nextButton);
    }

    /// From the last summary to the choice of the channels.
    void GoBackToTheChannels() {
        SeeEverySummary();
        Click(*form, "cmdSys", SimultCalib::nextButton);
        Click(*form, "cmdSys", SimultCalib::nextButton);
        EXPECT_EQ(Page(), "fraChoice");
    }

    void ExpectQuestion(int answer) {
        platform.dialogs.ExpectMessage("Calibration is not completed, quit anyway?",
                                       Style(platform::style::yesNo, platform::style::exclamation,
                                             platform::style::defaultButton2),
                                       answer);
    }

    std::string Text(const QString& name) const { return TextOf(*form, name); }
    std::string Signal(std::size_t channel, std::size_t point) const {
        return Text("lblSig_" + QString::number(point * 8 + channel));
    }
    QString Page() const {
        return Find<QStackedWidget>(*form, "picPage").currentWidget()->objectName();
    }

    std::unique_ptr<SimultCalib> form;
};
