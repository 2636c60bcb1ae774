#include "screens/Report/RecentMenu.h"

#include "app/Mcommon.h"
#include "platform/qt/Text.h"
#include "report/RecentFiles.h"

#include <QMenu>

void RecentMenu::Fill(QMenu& menu) {
    menu.clear();
    for (const auto& file : RecentFiles::List()) {
        const QString name = Text::FromPath(file);
        // An ampersand of the name is no mnemonic.
        menu.addAction(QString(name).replace("&", "&&"))->setData(name);
    }
    if (menu.isEmpty())
        menu.addAction("No file yet")->setEnabled(false);
}

std::filesystem::path RecentMenu::Choose(const QAction& entry) {
    std::filesystem::path file = Text::ToPath(entry.data().toString());
    if (!Mcommon::FileExists(file))
        RecentFiles::Remove(file);
    return file;
}
