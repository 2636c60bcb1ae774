#pragma once

#include "report/ReportView.h"

#include <QElapsedTimer>
#include <QObject>

class GraphPage;
class QLabel;
class QPlainTextEdit;
class ReportLists;

/// What the viewer says of its file: in caption, header and status, and what the loader shows.
class LoadView : public QObject, public Mreport::ReportView {
    Q_OBJECT

public:
    struct Controls {
        QWidget& form;
        QPlainTextEdit& head;
        QLabel& status;
        GraphPage& graph;
        ReportLists& lists;
    };

    /// The file and what its graph shows must outlive the object, and so must the controls.
    LoadView(const Mreport::ViewedFile& file, const Mreport::ShownGraph& shown,
             const Controls& controls)
        : file_(file), shown_(shown), controls_(controls) {}

    /// The caption "Report - " and the file's name.
    void CaptionFile();

    /// While the scroll bar's thumb is dragged the caption tells where the span will end.
    void CaptionSpanEnd(Mreport::FileRecord end);

    /// Says in the status where the file could not be read back whole.
    void NoticeDamage();

    void ShowCaption(const std::filesystem::path& file) override;
    void ResetPages() override;
    void ShowHead(const std::string& headerLines) override;
    void ShowStatus(const std::string& text) override;
    void ShowProgress(const std::string& text) override;
    void PageAdded(int page) override;
    void LinesAdded() override;
    void FileRead() override { Q_EMIT RecordsRead(); }
    void SelectShownPage() override;
    void SetScroll(const Mreport::ScrollLimits& limits) override;
    Mreport::PageRecord ScrollValue() const override;
    Mreport::ReportGraph& Graph() override;
    void GraphDrawn(Mreport::FileRecord firstRecord) override;

Q_SIGNALS:
    /// The caption tells of this file from now on.
    void FileShown(const std::filesystem::path& fileName);

    /// The lists have got lines.
    void LinesCame();

    /// The lists hold what the load gives; its last progress is still shown.
    void RecordsRead();

    /// The file shown before is gone, and what is to come is not there yet.
    void FileGone();

private:
    QString Caption() const;

    const Mreport::ViewedFile& file_;
    const Mreport::ShownGraph& shown_;
    Controls controls_;
    QElapsedTimer sinceProgress_; ///< was shown last
};
