#include "platform/qt/EntryText.h"

#include "base/CodePage.h"

#include <QComboBox>
#include <QLineEdit>
#include <QValidator>

#include <algorithm>

namespace {

class CodePageValidator : public QValidator {
public:
    CodePageValidator(QObject* parent, QString refused)
        : QValidator(parent), refused_(std::move(refused)) {}

    State validate(QString& text, int& /*position*/) const override {
        const auto fits = [this](QChar character) {
            return character.unicode() >= 32 && character.unicode() != 127 &&
                   !refused_.contains(character) &&
                   CodePage::FromUnicode(character.unicode()).has_value();
        };
        return std::all_of(text.cbegin(), text.cend(), fits) ? Acceptable : Invalid;
    }

private:
    QString refused_;
};

constexpr const char* fieldSeparator = ";";

} // namespace

void AcceptCodePageOnly(QLineEdit& box) {
    box.setValidator(new CodePageValidator(&box, {}));
}

void AcceptCodePageOnly(QComboBox& editableBox) {
    editableBox.setValidator(new CodePageValidator(&editableBox, {}));
}

void AcceptFieldTextOnly(QLineEdit& box) {
    box.setValidator(new CodePageValidator(&box, fieldSeparator));
}

void AcceptFieldTextOnly(QComboBox& editableBox) {
    editableBox.setValidator(new CodePageValidator(&editableBox, fieldSeparator));
}
