#include "screens/frmMain/RecordSafety.h"

#include "app/Mcommon.h"
#include "base/CodePage.h"
#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "files/MeasurementDialog.h"
#include "files/MeasuringRun.h"
#include "files/Recovery.h"
#include "platform/qt/InputGate.h"
#include "screens/controls/EventGuard.h"

namespace {

std::string Question(const FileOpr::UnfinishedRecording& recording) {
    const std::string target = recording.target.empty() ? "" : CodePage::NameOf(recording.target);
    return "A recording was interrupted before its records reached their file.\n\nRecords: " +
           NumberText::Plain(recording.records) + ", the last at " + recording.lastTimeStamp +
           (target.empty() ? "" : "\nFile: " + target) +
           "\n\nBring the records into the file now? Otherwise they are offered again at the "
           "next start.";
}

} // namespace

void OfferRecovery(FileOpr::MeasurementDialog& dialog, const EventGuard& guard) {
    for (FileOpr::UnfinishedRecording& recording : FileOpr::FindUnfinishedRecordings()) {
        if (!Mcommon::Ask(Question(recording), Mcommon::EnterMeans::yes))
            continue;
        if (recording.target.empty() &&
            !dialog.ShowFileDialog(recording.target, FileOpr::DialogMode::save))
            continue;
        guard("frmMain - OfferRecovery", [&recording] {
            const platform::InputGate gate; // events run while a long file is summed
            FileOpr::Recover(recording);
        });
    }
}

bool RecordsAreSafe(FileOpr::MeasuringRun& run) {
    try {
        run.FlushTempFile();
        return true;
    } catch (const RunTimeError& error) {
        return Mcommon::Ask(std::string(error.what()) +
                                "\n\nAre you sure you want to exit? The records will be offered "
                                "again at the next start.",
                            Mcommon::EnterMeans::no, Mcommon::Tone::exclamation);
    }
}
