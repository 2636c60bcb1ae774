#include "screens/Report/ReportExport.h"

#include "base/CodePage.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "report/CsvExport.h"
#include "report/ViewedFile.h"
#include "screens/controls/GraphExport.h"

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

std::optional<QString> ReportExport::WriteRecords(const std::function<void()>& begun) {
    std::size_t filter = 0;
    auto request = Request(file_.path, "Export Records", "csv", csvFilters);
    request.chosenFilter = &filter;
    const auto target = Ask(request);
    if (!target)
        return std::nullopt;
    state_ = State::running;
    const auto done = qScopeGuard([this] { state_ = State::idle; });
    begun();
    const auto reader =
        filter == spreadsheetFilter ? Mreport::CsvReader::spreadsheet : Mreport::CsvReader::any;
    const auto records =
        Mreport::ExportCsv(file_, *target, reader, [this] { return state_ == State::stopping; });
    return state_ == State::stopping ? QString("Ready")
                                     : QString("Ready: %1 records exported").arg(records);
}

std::optional<QString> ReportExport::WriteGraph(GraphControl& graph) {
    const auto target = Ask(Request(file_.path, "Export Graph", "png", pictureFilters));
    if (!target)
        return std::nullopt;
    ExportGraph(graph, Text::FromPath(*target));
    return "Ready: graph exported";
}

void ReportExport::RequestStop() {
    if (state_ == State::running)
        state_ = State::stopping;
}
