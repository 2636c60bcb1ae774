#include "screens/Report/LoadView.h"

#include "platform/qt/Text.h"
#include "report/PrintJob.h"
#include "screens/Report/GraphPage.h"
#include "screens/Report/ReportLists.h"
#include "screens/controls/GraphControl.h"
#include "screens/controls/LineListView.h"
#include "screens/controls/ValueLabel.h"

#include <QLabel>
#include <QPlainTextEdit>

QString LoadView::Caption() const {
    return "Report - " + Text::FromPath(file_.path);
}

void LoadView::CaptionFile() {
    controls_.form.setWindowTitle(Caption());
}

void LoadView::CaptionSpanEnd(Mreport::FileRecord end) {
    controls_.form.setWindowTitle(Caption() + " [End With Record " + QString::number(end.number) +
                                  "]");
}

void LoadView::NoticeDamage() {
    if (file_.pages.Damaged())
        ShowStatus("The file has become shorter since it was loaded; what is gone is shown blank.");
}

void LoadView::ShowCaption(const std::filesystem::path& file) {
    CaptionFile();
    Q_EMIT FileShown(file);
}

void LoadView::ResetPages() {
    Q_EMIT FileGone();
    controls_.lists.Reset();
    controls_.graph.Reset();
}

void LoadView::ShowHead(const std::string& headerLines) {
    controls_.head.setPlainText(Text::ToQt(headerLines));
    controls_.graph.Graph().SetGraphTitle(Mreport::ReportTitle(file_, Mreport::PrintKind::graph));
}

void LoadView::ShowStatus(const std::string& text) {
    ShowValue(controls_.status, Text::ToQt(text));
}

/// A label's new text lays the form out anew; nobody reads a hundred of them in a blink.
void LoadView::ShowProgress(const std::string& text) {
    constexpr qint64 shownAtLeast_ms = 16;
    if (sinceProgress_.isValid() && sinceProgress_.elapsed() < shownAtLeast_ms)
        return;
    ShowStatus(text);
    sinceProgress_.start();
}

void LoadView::PageAdded(int /*page*/) {
    controls_.lists.Add();
}

void LoadView::LinesAdded() {
    controls_.lists.Newest().LinesChanged();
    if (controls_.lists.Has(shown_.shownPageIndex))
        controls_.lists.At(shown_.shownPageIndex).LinesChanged();
    Q_EMIT LinesCame();
}

void LoadView::SelectShownPage() {
    controls_.lists.Show(shown_.shownPageIndex);
}

void LoadView::SetScroll(const Mreport::ScrollLimits& limits) {
    controls_.graph.SetScroll(limits);
}

Mreport::PageRecord LoadView::ScrollValue() const {
    return controls_.graph.ScrollValue();
}

Mreport::ReportGraph& LoadView::Graph() {
    return controls_.graph.Graph();
}

void LoadView::GraphDrawn(Mreport::FileRecord firstRecord) {
    controls_.graph.GraphDrawn(firstRecord);
}
