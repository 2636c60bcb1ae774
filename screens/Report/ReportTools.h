#pragma once

#include <cstddef>

/// What the viewer has beside its file: the desktop's programs and the help.
namespace ReportTools {

/// The entries of the tools menu that start a program.
void Run(std::size_t toolItem);
void ShowHelp();

} // namespace ReportTools
