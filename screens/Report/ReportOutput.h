#pragma once

#include "screens/Report/ReportExport.h"

class GraphPage;
class QWidget;

namespace Mreport {
struct ShownGraph;
}

/// What leaves the viewer: prints, exports, pictures.
class ReportOutput {
public:
    struct Parts {
        QWidget& form;
        const Mreport::ViewedFile& file;
        const Mreport::ShownGraph& shown;
        GraphPage& graph;
        QLabel& status;
    };

    /// All must outlive the object.
    explicit ReportOutput(const Parts& parts) : parts_(parts), export_(parts.file, parts.status) {}

    /// Opens the dialog that prints records.
    void Print();
    void PrintShownGraph();
    void ExportRecords();
    void ExportShownGraph();

    /// True while an export runs; ESC ends it.
    bool Running() const { return export_.Running(); }
    void RequestStop() { export_.RequestStop(); }

private:
    Parts parts_;
    ReportExport export_;
};
