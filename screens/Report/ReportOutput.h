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

    /// What an entry of the file menu that prints or exports says.
    void PutOut(std::size_t fileItem);

    /// True while an export runs; ESC ends it.
    bool Running() const { return export_.Running(); }
    void RequestStop() { export_.RequestStop(); }

private:
    void Print();
    void PrintShownGraph();

    Parts parts_;
    ReportExport export_;
};
