#include "files/TargetSeal.h"
#include "report/support/MeasuredRun.h"
#include "screens/frmVerify/frmVerify.h"
#include "screens/report/ReportScreen.h"
#include "support/NotedEntries.h"

#include <QApplication>

namespace {

class HistoryOfVerify : public ReportScreen {
protected:
    /// What the verification of the viewed file says of the history; empty where nothing is shown.
    QString Verdict() {
        Choose(*form, "mnuToolItem_5");
        auto& verify = Find<frmVerify>(*form, "frmVerify");
        while (!Find<QPushButton>(verify, "cmdSeal").isEnabled()) // while it works
            QApplication::processEvents();
        auto& label = Find<QLabel>(verify, "lblHistory");
        const QString text = label.isVisible() ? label.text() : QString();
        Click(verify, "cmdClose");
        return text;
    }

    NotedEntries noted;
    FileOpr::TargetSeal seal;
};

} // namespace

TEST_F(HistoryOfVerify, A_file_is_held_against_what_the_history_took_of_it) {
    const std::string text = MeasuredRun(1, 50).Text();
    View(text);
    EXPECT_EQ(Verdict(), "") << "of a file that was recorded elsewhere nothing is known";
    FileOpr::NoteSealed(seal, File());
    EXPECT_EQ(Verdict(), "History: unchanged since 07.Mar.2003 14:05:33");

    std::string changed = text;
    changed[text.size() / 2] = 'x';
    View(changed);
    EXPECT_EQ(Verdict(), "History: changed since 07.Mar.2003 14:05:33: byte 1, in the header, or "
                         "later");
    View(text + MeasuredRun(1, 50).Text());
    EXPECT_EQ(Verdict(), "History: grown since 07.Mar.2003 14:05:33; what was sealed is unchanged");
}
