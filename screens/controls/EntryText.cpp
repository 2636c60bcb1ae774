#include "screens/controls/EntryText.h"

#include "app/CodePage.h"

#include <QComboBox>
#include <QLineEdit>
#include <QValidator>

#include <algorithm>

namespace {

class CodePageValidator : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& text, int& /*position*/) const override {
        const auto fits = [](QChar character) {
            return character.unicode() >= 32 && character.unicode() != 127 &&
                   CodePage::FromUnicode(character.unicode()).has_value();
        };
        return std::all_of(text.cbegin(), text.cend(), fits) ? Acceptable : Invalid;
    }
};

} // namespace

void AcceptCodePageOnly(QLineEdit& box) {
    box.setValidator(new CodePageValidator(&box));
}

void AcceptCodePageOnly(QComboBox& editableBox) {
    editableBox.setValidator(new CodePageValidator(&editableBox));
}
