#pragma once

#include <QString>

#include <functional>
#include <optional>

class GraphControl;

namespace Mreport {
struct ViewedFile;
}

/// What the viewer writes into files of the user's choice: its records, its graph.
class ReportExport {
public:
    /// The file must outlive the object.
    explicit ReportExport(const Mreport::ViewedFile& file) : file_(file) {}

    /// Asks for a file and writes all records into it, letting events run; `begun` is called when
    /// the file has been chosen. What there is to say then; nothing when the user has cancelled.
    std::optional<QString> WriteRecords(const std::function<void()>& begun);

    /// Asks for a file and writes the graph as a picture; the same result.
    std::optional<QString> WriteGraph(GraphControl& graph);

    bool Running() const { return state_ != State::idle; }

    /// ESC: ends a running export; nothing otherwise.
    void RequestStop();

private:
    enum class State { idle, running, stopping };

    const Mreport::ViewedFile& file_;
    State state_ = State::idle;
};
