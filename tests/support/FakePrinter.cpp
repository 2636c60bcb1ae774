#include "support/FakePrinter.h"

#include "base/RunTimeError.h"

#include <sstream>

namespace fake {

namespace {
constexpr float characterWidth = 0.6F;
}

std::vector<std::string> Printer::Page(int page) const {
    std::vector<std::string> found;
    for (const PrintedText& printed : texts) {
        if (printed.page != page)
            continue;
        std::ostringstream line;
        line << printed.position.x_pt << ',' << printed.position.y_pt << ' ' << printed.text;
        found.push_back(line.str());
    }
    return found;
}

float Printer::TextWidth(std::string_view text) const {
    return static_cast<float>(text.size()) * font_.size_pt * characterWidth;
}

void Printer::PrintText(std::string_view text) {
    texts.push_back({page_, position_, std::string(text), font_});
    position_.x_pt += TextWidth(text);
}

void Printer::DrawLine(platform::PrintPosition from, platform::PrintPosition to) {
    rules.push_back({page_, from, to});
}

void Printer::DrawPicture(const platform::Picture&, const platform::PrintArea& area) {
    pictures.push_back(area);
}

void Printer::NewPage() {
    ++page_;
    position_ = {};
}

platform::PrintOutcome Printing::Print(const std::string& name,
                                       const platform::PrintDocument& document) {
    names.push_back(name);
    if (onPrint)
        return onPrint(name, document);
    Printer printer = paper;
    document(printer);
    documents.push_back(printer);
    if (!failure.empty())
        throw RunTimeError(failure);
    return printer.StopRequested() ? platform::PrintOutcome::stopped : outcome;
}

} // namespace fake
