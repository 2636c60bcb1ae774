#include "screens/Report/ReportOutput.h"

#include "platform/qt/QtPrinter.h"
#include "report/PrintJob.h"
#include "screens/Report/GraphPage.h"
#include "screens/Report/ReportMenus.h"
#include "screens/Report/WholeRunPanel.h"
#include "screens/controls/PaperGraph.h"
#include "screens/frmPrint/frmPrint.h"

void ReportOutput::PutOut(std::size_t fileItem) {
    switch (fileItem) {
    case ReportMenus::printReport:
        return Print();
    case ReportMenus::printShownGraph:
        return PrintShownGraph();
    case ReportMenus::exportRecords:
        return export_.WriteRecords(parts_.graph.Run().Span());
    default:
        export_.WriteGraph(parts_.graph.ShownGraph());
    }
}

/// Opens the dialog that prints records.
void ReportOutput::Print() {
    frmPrint(parts_.file, parts_.shown, &parts_.form).exec();
}

void ReportOutput::PrintShownGraph() {
    PaperGraph& graph = parts_.graph.ShownGraph();
    const platform::QtPicture picture(
        [&graph](QPainter& painter, const QRectF& area) { graph.PaintOnPaper(painter, area); });
    Mreport::PrintGraph(parts_.file, picture);
}
