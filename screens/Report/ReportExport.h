#pragma once

#include "report/CsvExport.h"

#include <filesystem>

class PaperGraph;
class QLabel;

/// What the viewer writes into files of the user's choice: its records, its graph. The status line
/// tells how it went.
class ReportExport {
public:
    /// Both must outlive the object.
    ReportExport(const Mreport::ViewedFile& file, QLabel& status) : file_(file), status_(status) {}

    /// Asks for a file and writes all records into it, or those that are shown, letting events run.
    void WriteRecords(const Mreport::RecordSpan& shown);

    /// Asks for a file and writes the graph as a picture.
    void WriteGraph(PaperGraph& graph);

    bool Running() const { return state_ != State::idle; }

    /// ESC: ends a running export; nothing otherwise.
    void RequestStop();

private:
    enum class State { idle, running, stopping };

    void WriteRecords(const std::filesystem::path& target, const Mreport::CsvWish& wish);

    const Mreport::ViewedFile& file_;
    QLabel& status_;
    State state_ = State::idle;
};
