#pragma once

class EventGuard;

namespace FileOpr {
class MeasurementDialog;
class MeasuringRun;
} // namespace FileOpr

/// Asks for each recording that was interrupted whether its records shall come into their file, and
/// brings them there. What fails is said, and offered again at the next start.
void OfferRecovery(FileOpr::MeasurementDialog& dialog, const EventGuard& guard);

/// Moves what the temporary file holds into the target, before the program ends. Where that fails,
/// the analyst decides whether to leave all the same.
bool RecordsAreSafe(FileOpr::MeasuringRun& run);
