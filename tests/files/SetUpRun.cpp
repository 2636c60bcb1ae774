#include "files/SetUpRun.h"

#include "settings/mWinInit.h"

void SetUpRun(int channelCount) {
    mWinInit::Reset(channelCount);
    mWinInit::ProjectInfo.ProjectName = "Well 7";
    mWinInit::ProjectInfo.Experimentator = "A. Nalyst";
    for (std::size_t i = 0; i < maxChannels; i += 4) {
        mWinInit::ChannelSetup[i] = {"H (pH)", "PH-11", "Double", "R-1", 0, 1};
        mWinInit::ChannelSetup[i + 1] = {"Ca", "CA-12", "Single", "R-2", 40.078F, 2};
        mWinInit::ChannelSetup[i + 2] = {"Redox", "RX-13", "None", "", 0, 0};
        mWinInit::ChannelSetup[i + 3] = {"None", "", "None", "", 0, 0};
        mWinInit::Calibration[i] = {"14:05 07.Mar.2003", 2, 0, {4, 7}, {177.5F, 0}, {-59.2F}};
        mWinInit::Calibration[i + 1] = {
            "10:12:40 06.Mar.2003", 3, 1, {0.0001F, 0.001F, 0.01F}, {-55.3F, 2.1F, 31},
            {57.4F, 28.9F}};
    }
}

FileOpr::DisplayedChannels DisplayedRun() {
    FileOpr::DisplayedChannels displayed;
    for (std::size_t i = 0; i < displayed.size(); i += 4) {
        displayed[i] = {"59.0", "6.00", "", "", "21.5"};
        displayed[i + 1] = {"-12.3", "", "40.1", "1.00E-03", "22.0"};
        displayed[i + 2] = {"-412.0", "", "", "", ""};
    }
    return displayed;
}

std::string Separator() {
    return std::string(150, '-') + "\r\n";
}
