#include "screens/Report/ReportExport.h"

#include "base/CodePage.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "report/ViewedFile.h"
#include "screens/controls/GraphExport.h"

#include <QLabel>
#include <QScopeGuard>

namespace {

constexpr auto csvFilters = "Comma-separated values (*.csv)|*.csv|"
                            "Comma-separated values for spreadsheets (*.csv)|*.csv";
constexpr std::size_t spreadsheetFilter = 1;
constexpr auto pictureFilters =
    "Picture (*.png)|*.png|Vector graphic (*.svg)|*.svg|PDF document (*.pdf)|*.pdf";

/// Asks for a file beside the shown one; the proposal is the shown file's name with another ending.
platform::FileDialogRequest Request(const std::filesystem::path& shown, const char* title,
                                    const char* extension, const char* filter) {
    platform::FileDialogRequest request;
    request.kind = platform::FileDialogRequest::Kind::save;
    request.title = title;
    request.fileName = CodePage::FromPath(shown.filename().replace_extension(extension))
                           .value_or(std::string("report.") + extension);
    request.defaultExtension = extension;
    request.filter = filter;
    request.initialFolder = shown.parent_path();
    return request;
}

std::optional<std::filesystem::path> Ask(const platform::FileDialogRequest& request) {
    auto chosen = platform::Current().dialogs.ChooseFile(request);
    if (chosen && !chosen->has_extension())
        chosen->replace_extension(request.defaultExtension);
    return chosen;
}

} // namespace

void ReportExport::WriteRecords() {
    std::size_t filter = 0;
    auto request = Request(file_.path, "Export Records", "csv", csvFilters);
    request.chosenFilter = &filter;
    if (const auto target = Ask(request))
        WriteRecords(*target, filter == spreadsheetFilter ? Mreport::CsvReader::spreadsheet
                                                          : Mreport::CsvReader::any);
}

void ReportExport::WriteRecords(const std::filesystem::path& target, Mreport::CsvReader reader) {
    QString outcome = "Ready"; // also where it fails
    const auto done = qScopeGuard([this, &outcome] {
        state_ = State::idle;
        status_.setText(outcome);
    });
    state_ = State::running;
    status_.setText("Exporting records... [Press ESC to stop exporting]");
    status_.repaint();
    const auto records =
        Mreport::ExportCsv(file_, target, reader, [this] { return state_ == State::stopping; });
    if (state_ != State::stopping)
        outcome = QString("Ready: %1 records exported").arg(records);
}

void ReportExport::WriteGraph(PaperGraph& graph) {
    const auto target = Ask(Request(file_.path, "Export Graph", "png", pictureFilters));
    if (!target)
        return;
    QString outcome = "Ready"; // also where it fails
    const auto done = qScopeGuard([this, &outcome] { status_.setText(outcome); });
    ExportGraph(graph, Text::FromPath(*target));
    outcome = "Ready: graph exported";
}

void ReportExport::RequestStop() {
    if (state_ == State::running)
        state_ = State::stopping;
}
