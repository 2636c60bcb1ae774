#include "screens/Report/ReportExport.h"

#include "base/CodePage.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "report/ViewedFile.h"
#include "screens/controls/GraphExport.h"
#include "screens/controls/ValueLabel.h"

#include <QLabel>
#include <QScopeGuard>

namespace {

constexpr std::string_view csvFilters =
    "Comma-separated values (*.csv)|*.csv|"
    "Comma-separated values for spreadsheets (*.csv)|*.csv|"
    "Comma-separated values, records shown (*.csv)|*.csv|"
    "Comma-separated values for spreadsheets, records shown (*.csv)|*.csv";
enum CsvFilter { anyReader, spreadsheet, shownAnyReader, shownSpreadsheet }; // in their order
constexpr std::string_view pictureFilters =
    "Picture (*.png)|*.png|Vector graphic (*.svg)|*.svg|PDF document (*.pdf)|*.pdf";

/// Asks for a file beside the shown one; the proposal is the shown file's name with another ending.
platform::FileDialogRequest Request(const std::filesystem::path& shown, std::string_view title,
                                    std::string_view extension, std::string_view filter) {
    platform::FileDialogRequest request;
    request.kind = platform::FileDialogRequest::Kind::save;
    request.title = title;
    request.fileName = CodePage::FromPath(shown.filename().replace_extension(extension))
                           .value_or(std::string("report.").append(extension));
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

void ReportExport::WriteRecords(const Mreport::RecordSpan& shown) {
    std::size_t filter = anyReader;
    auto request = Request(file_.path, "Export Records", "csv", csvFilters);
    request.chosenFilter = &filter;
    const auto target = Ask(request);
    if (!target)
        return;
    Mreport::CsvWish wish;
    if (filter == spreadsheet || filter == shownSpreadsheet)
        wish.reader = Mreport::CsvReader::spreadsheet;
    if (filter == shownAnyReader || filter == shownSpreadsheet)
        wish.span = shown;
    WriteRecords(*target, wish);
}

void ReportExport::WriteRecords(const std::filesystem::path& target, const Mreport::CsvWish& wish) {
    QString outcome = "Ready"; // also where it fails
    const auto done = qScopeGuard([this, &outcome] {
        state_ = State::idle;
        ShowValue(status_, outcome);
    });
    state_ = State::running;
    ShowValue(status_, "Exporting records... [Press ESC to stop exporting]");
    status_.repaint();
    const auto records =
        Mreport::ExportCsv(file_, target, wish, [this] { return state_ == State::stopping; });
    if (state_ != State::stopping)
        outcome = QString("Ready: %1 records exported").arg(records);
}

void ReportExport::WriteGraph(PaperGraph& graph) {
    const auto target = Ask(Request(file_.path, "Export Graph", "png", pictureFilters));
    if (!target)
        return;
    QString outcome = "Ready"; // also where it fails
    const auto done = qScopeGuard([this, &outcome] { ShowValue(status_, outcome); });
    ExportGraph(graph, Text::FromPath(*target));
    outcome = "Ready: graph exported";
}

void ReportExport::RequestStop() {
    if (state_ == State::running)
        state_ = State::stopping;
}
