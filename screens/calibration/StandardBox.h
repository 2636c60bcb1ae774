#pragma once

#include <QLineEdit>

#include <optional>

/// The entry field of a standard. While it is blank or holds its prompt, what is typed takes that
/// text's place.
class StandardBox : public QLineEdit {
    Q_OBJECT

public:
    explicit StandardBox(QWidget* parent = nullptr);

    /// Nothing has been typed: empty, or the prompt.
    bool IsBlank() const;

    /// The number that the whole text is; nothing otherwise.
    std::optional<float> Standard() const;

    /// Shows a text without telling the handlers: it is no change by the analyst.
    void ShowText(const QString& text);

    /// While a point is read, its own field can be read only and the others wait.
    void ShowState(bool reading, bool beingRead);

Q_SIGNALS:
    /// The cursor has come into the field, or has left it.
    void Entered();
    void Left();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};
