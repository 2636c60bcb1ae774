#include "screens/calibration/StandardBox.h"

#include "chem/StandardEntry.h"
#include "link/DataAcq.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"

#include <QSignalBlocker>
#include <QTimer>

namespace {
constexpr int longestStandard = 32; // characters
}

StandardBox::StandardBox(QWidget* parent) : QLineEdit(parent) {
    setMaxLength(longestStandard);
    AcceptCodePageOnly(*this);
}

// What the code page lacks is in no number: it must be refused as one, not be an error.

bool StandardBox::IsBlank() const {
    return StandardEntry::IsBlank(Text::ForMessage(text()));
}

std::optional<float> StandardBox::Standard() const {
    float standard = 0;
    return DataAcq::TryGetSingle(standard, Text::ForMessage(text())) ? std::optional(standard)
                                                                     : std::nullopt;
}

void StandardBox::ShowText(const QString& text) {
    const QSignalBlocker quiet(*this);
    setText(text);
}

void StandardBox::ShowState(bool reading, bool beingRead) {
    setEnabled(!reading || beingRead);
    setReadOnly(beingRead);
    // The standards of the other points stay legible while they wait.
    QPalette colours = palette();
    const QColor text = parentWidget()->palette().color(QPalette::Active, QPalette::Text);
    if (colours.color(QPalette::Disabled, QPalette::Text) == text)
        return;
    colours.setColor(QPalette::Disabled, QPalette::Text, text);
    setPalette(colours);
}

void StandardBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    Q_EMIT Entered();
    if (!IsBlank())
        return;
    // After the mouse click that brought the cursor here has been dealt with.
    QTimer::singleShot(0, this, [this] {
        if (IsBlank())
            selectAll();
    });
}

void StandardBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    Q_EMIT Left();
}

void StandardBox::keyPressEvent(QKeyEvent* event) {
    if (IsBlank())
        selectAll();
    QLineEdit::keyPressEvent(event);
}
