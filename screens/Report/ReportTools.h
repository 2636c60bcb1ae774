#pragma once

class ReportLists;

/// What the viewer has beside its file: the desktop's programs, the help, the clipboard.
namespace ReportTools {

/// The entries of the tools menu but for the search.
void Run(std::size_t toolItem, const ReportLists& lists);
void ShowHelp();

} // namespace ReportTools
