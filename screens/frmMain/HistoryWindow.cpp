#include "screens/frmMain/HistoryWindow.h"

#include "app/Mcommon.h"
#include "history/Log.h"
#include "screens/frmHistory/frmHistory.h"
#include "settings/mWinInit.h"

void HistoryWindow::Show() {
    Open();
}

void HistoryWindow::ShowElectrodeOf(std::size_t channel) {
    const auto& setup = mWinInit::ChannelSetup.at(channel);
    if (frmHistory* window = Open())
        window->ShowElectrode({setup.Electrode, setup.SerialNo});
}

frmHistory* HistoryWindow::Open() {
    History::Log* log = History::Log::Current();
    if (log == nullptr) {
        Mcommon::Inform("No history is kept.");
        return nullptr;
    }
    delete window_;
    window_ = new frmHistory(*log, &form_);
    window_->setAttribute(Qt::WA_DeleteOnClose);
    connect(window_.data(), &frmHistory::AgesChanged, this, &HistoryWindow::AgesChanged);
    window_->show();
    return window_;
}
