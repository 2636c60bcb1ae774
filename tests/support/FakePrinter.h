#pragma once

#include "platform/Printer.h"

#include <functional>
#include <string>
#include <vector>

namespace fake {

struct PrintedText {
    int page = 1;
    platform::PrintPosition position;
    std::string text;
    platform::PrintFont font;
};

struct PrintedRule {
    int page = 1;
    platform::PrintPosition from;
    platform::PrintPosition to;
};

/// Keeps what is printed. A character is 0.6 of the font's size wide and as high as the size, so
/// that places can be computed by hand: at 10 points a column is 6 points and a line of a table
/// 12.5.
class Printer : public platform::Printer {
public:
    float width_pt = 540;
    float height_pt = 750;
    std::function<bool()> stopRequested = [] { return false; };

    std::vector<PrintedText> texts;
    std::vector<PrintedRule> rules;
    std::vector<platform::PrintArea> pictures;

    /// "x,y text" of a page in the order of printing, for example "0,12.5 Chan 1".
    std::vector<std::string> Page(int page) const;

    float PageWidth() const override { return width_pt; }
    float PageHeight() const override { return height_pt; }
    void SetFont(platform::PrintFont font) override { font_ = font; }
    float TextWidth(std::string_view text) const override;
    float TextHeight(std::string_view) const override { return font_.size_pt; }
    void SetCurrentPosition(platform::PrintPosition position) override { position_ = position; }
    platform::PrintPosition CurrentPosition() const override { return position_; }
    void PrintText(std::string_view text) override;
    void DrawLine(platform::PrintPosition from, platform::PrintPosition to) override;
    void DrawPicture(const platform::Picture& picture, const platform::PrintArea& area) override;
    int PageNumber() const override { return page_; }
    void NewPage() override;
    bool StopRequested() const override { return stopRequested(); }

private:
    platform::PrintFont font_;
    platform::PrintPosition position_;
    int page_ = 1;
};

/// Draws each document once, on a printer of its own that the test looks at.
class Printing : public platform::Printing {
public:
    std::vector<std::string> names;
    std::vector<Printer> documents;
    Printer paper; ///< what each document starts on
    platform::PrintOutcome outcome = platform::PrintOutcome::printed;
    std::string failure; ///< thrown after the drawing when it is not empty
    /// Prints instead of the fake printer.
    std::function<platform::PrintOutcome(const std::string&, const platform::PrintDocument&)>
        onPrint;

    platform::PrintOutcome Print(const std::string& name,
                                 const platform::PrintDocument& document) override;
};

} // namespace fake
