#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace platform {

/// A size of the printer's fixed-pitch font; columns of a table line up in it.
struct PrintFont {
    float size_pt = 10;
    bool bold = false;

    bool operator==(const PrintFont&) const = default;
};

/// A place on the page, from the top left corner of its printable area.
struct PrintPosition {
    float x_pt = 0;
    float y_pt = 0;

    bool operator==(const PrintPosition&) const = default;
};

struct PrintArea {
    PrintPosition topLeft;
    float width_pt = 0;
    float height_pt = 0;
};

/// A drawing made by a screen. Only the printer that is installed together with the screens knows
/// how to draw it.
class Picture {
public:
    virtual ~Picture() = default;
};

/// One document on its way to a printer, page after page from page 1. All distances are points
/// (1/72 inch). Texts are Windows-1252. Every call throws RunTimeError when the printer fails.
class Printer {
public:
    virtual ~Printer() = default;

    virtual float PageWidth() const = 0;  ///< of the printable area
    virtual float PageHeight() const = 0; ///< of the printable area

    virtual void SetFont(PrintFont font) = 0;
    virtual float TextWidth(std::string_view text) const = 0;
    virtual float TextHeight(std::string_view text) const = 0;

    /// Where the next text's top left corner comes.
    virtual void SetCurrentPosition(PrintPosition position) = 0;
    virtual PrintPosition CurrentPosition() const = 0;

    /// Prints at the current position, which moves to the end of the text.
    virtual void PrintText(std::string_view text) = 0;
    virtual void DrawLine(PrintPosition from, PrintPosition to) = 0;
    virtual void DrawPicture(const Picture& picture, const PrintArea& area) = 0;

    virtual int PageNumber() const = 0; ///< from 1

    /// Ends the page; the next one starts at its top left corner with the same font.
    virtual void NewPage() = 0;

    /// True once the user has asked to stop (ESC). The document may end where it is; nothing of it
    /// is printed then.
    virtual bool StopRequested() const = 0;
};

/// Draws a whole document. It is called once for the preview and again for the paper (and whenever
/// the user changes the paper in the preview), so it must give the same pages each time.
using PrintDocument = std::function<void(Printer&)>;

enum class PrintOutcome {
    printed,
    cancelled, ///< the preview was closed without printing
    stopped,   ///< by ESC while the document was being drawn
};

/// The way to the system's printers.
class Printing {
public:
    virtual ~Printing() = default;

    /// Shows the document in a preview from which it is printed on the system's default printer,
    /// another one or into a PDF file. Throws RunTimeError when it could not be printed, and
    /// whatever `document` throws.
    virtual PrintOutcome Print(const std::string& name, const PrintDocument& document) = 0;
};

} // namespace platform
