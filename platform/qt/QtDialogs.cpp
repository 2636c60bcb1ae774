#include "platform/qt/QtDialogs.h"

#include "platform/qt/EntryText.h"
#include "platform/qt/SystemHabits.h"
#include "platform/qt/Text.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>

#include <algorithm>

namespace platform {

namespace {

constexpr int buttonMask = 0x0F;
constexpr int iconMask = 0xF0;

QMessageBox::Icon IconOf(int boxStyle) {
    switch (boxStyle & iconMask) {
    case style::critical:
        return QMessageBox::Critical;
    case style::question:
        return QMessageBox::Question;
    case style::exclamation:
        return QMessageBox::Warning;
    case style::information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

QMessageBox::StandardButtons ButtonsOf(int boxStyle) {
    switch (boxStyle & buttonMask) {
    case style::yesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case style::okCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    default:
        return QMessageBox::Ok;
    }
}

QMessageBox::StandardButton DefaultButtonOf(int boxStyle) {
    const bool second = (boxStyle & style::defaultButton2) != 0;
    switch (boxStyle & buttonMask) {
    case style::yesNo:
        return second ? QMessageBox::No : QMessageBox::Yes;
    case style::okCancel:
        return second ? QMessageBox::Cancel : QMessageBox::Ok;
    default:
        return QMessageBox::Ok;
    }
}

int CodeOf(int pressed, int boxStyle) {
    switch (pressed) {
    case QMessageBox::Yes:
        return button::yes;
    case QMessageBox::No:
        return button::no;
    case QMessageBox::Cancel:
        return button::cancel;
    default:
        // A box closed by its frame: the answer that changes nothing.
        return (boxStyle & buttonMask) == style::yesNo ? button::no : button::ok;
    }
}

/// A busy pointer left by the caller would hide that the box waits for an answer.
class ArrowWhileAsking {
public:
    ArrowWhileAsking() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~ArrowWhileAsking() { QApplication::restoreOverrideCursor(); }
    ArrowWhileAsking(const ArrowWhileAsking&) = delete;
    ArrowWhileAsking& operator=(const ArrowWhileAsking&) = delete;
};

/// "text|mask|text|mask" as Qt's "text (mask);;text (mask)"; the texts name their masks already.
QString FilterOf(const std::string& filter) {
    const QStringList parts = Text::ToQt(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters.append(parts[i]);
    return filters.join(";;");
}

std::optional<std::filesystem::path> ChooseFolder(const FileDialogRequest& request) {
    QFileDialog dialog(QApplication::activeWindow(), Text::ToQt(request.title),
                       Text::FromPath(request.initialFolder));
    dialog.setOption(QFileDialog::DontUseNativeDialog, !HasFileDialogs());
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return Text::ToPath(dialog.selectedFiles().constFirst());
}

} // namespace

void QtDialogs::Beep() {
    QApplication::beep();
}

int QtDialogs::ShowMessage(const std::string& prompt, int boxStyle, const std::string& caption) {
    const ArrowWhileAsking arrow;
    QMessageBox box(IconOf(boxStyle), Text::ToQt(caption), Text::ToQt(prompt), ButtonsOf(boxStyle),
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(DefaultButtonOf(boxStyle));
    return CodeOf(box.exec(), boxStyle);
}

std::string QtDialogs::AskText(const std::string& prompt, const std::string& title,
                               const std::string& proposal) {
    const ArrowWhileAsking arrow;
    QInputDialog box(QApplication::activeWindow());
    box.setWindowTitle(Text::ToQt(title));
    box.setLabelText(Text::ToQt(prompt));
    box.setTextValue(Text::ToQt(proposal)); // makes the entry box
    AcceptCodePageOnly(*box.findChild<QLineEdit*>());
    return box.exec() == QDialog::Accepted ? Text::FromQt(box.textValue()) : std::string();
}

std::optional<std::filesystem::path> QtDialogs::ChooseFile(const FileDialogRequest& request) {
    const ArrowWhileAsking arrow;
    if (request.kind == FileDialogRequest::Kind::folder)
        return ChooseFolder(request);
    const bool opening = request.kind == FileDialogRequest::Kind::open;
    QFileDialog dialog(QApplication::activeWindow(), Text::ToQt(request.title),
                       Text::FromPath(request.initialFolder), FilterOf(request.filter));
    dialog.setOption(QFileDialog::DontUseNativeDialog, !HasFileDialogs());
    dialog.setAcceptMode(opening ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(opening ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setDefaultSuffix(Text::ToQt(request.defaultExtension));
    if (!opening)
        dialog.selectFile(Text::ToQt(request.fileName));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    if (request.chosenFilter != nullptr)
        *request.chosenFilter = static_cast<std::size_t>(
            std::max<qsizetype>(dialog.nameFilters().indexOf(dialog.selectedNameFilter()), 0));
    return Text::ToPath(dialog.selectedFiles().constFirst());
}

} // namespace platform
