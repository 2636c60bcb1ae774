#pragma once

#include <string>
#include <string_view>

/// Measurement files: their text, the dialog that chooses them, and the run that is recorded.
namespace FileOpr {

/// Makes the folder for measurement files that a new user starts with the current one, creating it
/// where it is missing. Throws RunTimeError when that fails.
void SetDataFolder();

/// "4ch" or "8ch": the ending of the files in the mode of the working records.
std::string Extension();

/// Whether a file name begins with one of these, as that of a temporary file does.
bool BeginsWithExtension(std::string_view name);

} // namespace FileOpr
