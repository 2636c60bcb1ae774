#pragma once

#include "history/Entry.h"

#include <filesystem>
#include <string>

/// What the program takes down, each where it happens. Nothing where no history is installed, and
/// none of it throws.
namespace History {

/// Whether anything is taken down.
bool IsKept();

/// A file as the entries about it name it.
std::string FileText(const std::filesystem::path& file);

/// Completed with the moment and who is at work.
void Note(Entry entry);

/// An entry of a kind about nothing in particular, or about a measurement file.
void Note(Kind kind, const std::string& text, const std::filesystem::path& file = {});

/// One entry for each setting that has another value than the one known last.
void NoteSettings();

/// The settings are what is known from now on: nobody has changed them by hand.
void KnowSettings();

/// The stored calibration of a channel (0-based). `temperature_celsius` is as displayed, empty
/// where none was read.
void NoteCalibration(std::size_t channel, const std::string& temperature_celsius);

} // namespace History
