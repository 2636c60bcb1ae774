#include "platform/qt/QtPrinting.h"

#include "base/RunTimeError.h"
#include "platform/qt/InputGate.h"
#include "platform/qt/PrintTarget.h"
#include "platform/qt/QtPrinter.h"
#include "platform/qt/Text.h"

#include <QAbstractScrollArea>
#include <QAction>
#include <QApplication>
#include <QPaintEngine>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QRegularExpression>
#include <QScopeGuard>

#include <exception>

namespace platform {

namespace {

/// Left is wider: pages are filed there, and the rules of a table end short of the right edge.
const QMarginsF margins_mm(15, 12, 10, 12);

/// Wide enough for the whole tool bar, of which "Print" is the last button.
constexpr QSize previewSize(920, 700);

PrintOutcome Draw(QPrinter& printer, const PrintDocument& document, bool mayStopPainting) {
    const InputGate gate;
    QtPrinter pages(printer, [&gate] { return gate.StopRequested(); });
    document(pages);
    const bool complete = !gate.StopRequested() && pages.Paint(mayStopPainting);
    return complete ? PrintOutcome::printed : PrintOutcome::stopped;
}

PrintOutcome DrawOn(PrintTarget& target, QPrinter& printer, const PrintDocument& document) {
    try {
        return Draw(printer, document, target.IsFile());
    } catch (const RunTimeError&) {
        target.CheckFile(); // a full disk says more than the page that could not be begun
        throw;
    }
}

/// The print dialog suggests the document's name for a file; signs that a file system refuses would
/// make it useless there.
QString FileNameOf(QString name) {
    return name.remove(QRegularExpression("[<>:\"/\\\\|?*]"));
}

/// The tool bar's buttons take no focus, so the one that matters gets a key.
void AddPrintKey(QPrintPreviewDialog& dialog) {
    for (QAction* action : dialog.findChildren<QAction*>()) {
        if (action->text() != QPrintPreviewDialog::tr("Print"))
            continue;
        action->setShortcut(QKeySequence::Print);
        action->setToolTip(action->text() + " (" + action->shortcut().toString() + ")");
    }
}

/// A page that is fitted into the window's width becomes smaller where a scroll bar comes, needs
/// none then, and larger again, without an end: the bar stays.
void KeepScrollBar(const QPrintPreviewDialog& dialog) {
    dialog.findChild<QPrintPreviewWidget*>()
        ->findChild<QAbstractScrollArea*>()
        ->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

/// Draws whenever the preview asks; what a drawing throws must not reach the event loop, so it
/// waits here until the preview has closed.
class PreviewSession {
public:
    PreviewSession(QPrinter& printer, const std::string& name, const PrintDocument& document)
        : printer_(printer), name_(name), document_(document),
          dialog_(&printer, QApplication::activeWindow()) {
        dialog_.resize(previewSize);
        AddPrintKey(dialog_);
        KeepScrollBar(dialog_);
        dialog_.setWindowTitle("Print Preview - " + Text::ToQt(name));
        QObject::connect(&dialog_, &QPrintPreviewDialog::paintRequested, &dialog_,
                         [this] { Paint(); });
    }

    PrintOutcome Run() {
        const bool accepted = dialog_.exec() == QDialog::Accepted;
        if (error_)
            std::rethrow_exception(error_);
        if (outcome_ == PrintOutcome::stopped)
            return outcome_;
        return accepted ? PrintOutcome::printed : PrintOutcome::cancelled;
    }

private:
    /// The preview cannot be drawn anew while it is drawn: Qt would lose the printer behind it. A
    /// tool's press passes the gate that keeps the user's input waiting.
    auto HoldActions() {
        QList<QAction*> held = dialog_.findChildren<QAction*>();
        held.removeIf([](const QAction* action) { return !action->isEnabled(); });
        for (QAction* action : held)
            action->setEnabled(false);
        return qScopeGuard([held] {
            for (QAction* action : held)
                action->setEnabled(true);
        });
    }

    /// Events run meanwhile, but the pages that are shown have gone until the new ones are there.
    PrintOutcome DrawPages() {
        dialog_.setUpdatesEnabled(false);
        const auto shown = qScopeGuard([this] { dialog_.setUpdatesEnabled(true); });
        return Draw(printer_, document_, true);
    }

    void Paint() {
        const auto held = HoldActions();
        try {
            // The preview draws into a picture, the print run on the printer or into a file.
            const bool isPreview = printer_.paintEngine()->type() == QPaintEngine::Picture;
            outcome_ = isPreview ? DrawPages() : PrintOn(printer_, name_, document_);
        } catch (...) {
            error_ = std::current_exception();
        }
        if (error_ || outcome_ == PrintOutcome::stopped)
            QMetaObject::invokeMethod(&dialog_, "reject", Qt::QueuedConnection);
    }

    QPrinter& printer_;
    const std::string& name_;
    const PrintDocument& document_;
    QPrintPreviewDialog dialog_;
    PrintOutcome outcome_ = PrintOutcome::cancelled;
    std::exception_ptr error_;
};

} // namespace

PrintOutcome PrintOn(QPrinter& printer, const std::string& name, const PrintDocument& document) {
    try {
        PrintTarget target(printer);
        const PrintOutcome outcome = DrawOn(target, printer, document);
        if (outcome == PrintOutcome::printed)
            target.Finish();
        return outcome;
    } catch (const RunTimeError& error) {
        throw RunTimeError("Printing " + name + ": " + error.what());
    }
}

void SetMargins(QPrinter& printer) {
    printer.setPageMargins(margins_mm, QPageLayout::Millimeter);
}

PrintOutcome QtPrinting::Print(const std::string& name, const PrintDocument& document) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(FileNameOf(Text::ToQt(name)));
    SetMargins(printer);
    return PreviewSession(printer, name, document).Run();
}

} // namespace platform
