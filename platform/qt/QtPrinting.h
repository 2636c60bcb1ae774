#pragma once

#include "platform/Printer.h"

class QPrinter;

namespace platform {

/// Draws a document on a printer that is set up, with nobody asked, and sees it arrive. Throws
/// RunTimeError naming the document.
PrintOutcome PrintOn(QPrinter& printer, const std::string& name, const PrintDocument& document);

/// The margins that printed pages have where the printer does not need wider ones.
void SetMargins(QPrinter& printer);

/// Preview, print dialog and printers of Qt, over the active window.
class QtPrinting : public Printing {
public:
    PrintOutcome Print(const std::string& name, const PrintDocument& document) override;
};

} // namespace platform
