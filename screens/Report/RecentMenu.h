#pragma once

#include <filesystem>

class QAction;
class QMenu;

/// The submenu of the files that were viewed last.
namespace RecentMenu {

/// Makes the entries anew, the newest file first.
void Fill(QMenu& menu);

/// The file that the user has chosen with an entry. One that has gone is proposed no more.
std::filesystem::path Choose(const QAction& entry);

} // namespace RecentMenu
