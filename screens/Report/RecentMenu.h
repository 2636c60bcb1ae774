#pragma once

#include <filesystem>

class QAction;
class QMenu;

/// The submenu of the files that were viewed last.
namespace RecentMenu {

/// Makes the entries anew, the newest file first.
void Fill(QMenu& menu);

/// The file that an entry stands for.
std::filesystem::path FileOf(const QAction& entry);

} // namespace RecentMenu
