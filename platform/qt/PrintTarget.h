#pragma once

#include "platform/FileStore.h"

#include <QString>

#include <memory>

class QPrinter;

namespace platform {

/// Where a QPrinter's next document goes: a file, which appears only when it is whole, or the queue
/// of a printer. Made before the document is opened.
class PrintTarget {
public:
    /// Throws RunTimeError when the queue is stopped or the file's folder takes no file.
    explicit PrintTarget(QPrinter& printer);
    ~PrintTarget();
    PrintTarget(const PrintTarget&) = delete;
    PrintTarget& operator=(const PrintTarget&) = delete;

    /// A file can be given up while it is painted; what a queue has been given is printed.
    bool IsFile() const { return !file_.isEmpty(); }

    /// To be called when the document has failed, which keeps the reason to itself: writes on, and
    /// throws RunTimeError with what the system says where the file takes no more. The document is
    /// then of no use.
    void CheckFile();

    /// To be called after the document has ended: the file is put in place of an older one. Throws
    /// RunTimeError when the document did not arrive whole; an older file is then as it was.
    void Finish();

private:
    QPrinter& printer_;
    QString file_;                             ///< empty for a queue
    std::unique_ptr<Replacement> replacement_; ///< of the file; what is written first
};

/// What the print system says of the last document handed to it; empty when it took it.
QString QueueError();

} // namespace platform
