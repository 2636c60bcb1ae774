#include "platform/qt/Text.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"

namespace Text {

QString ToQt(std::string_view text) {
    QString result;
    result.reserve(static_cast<qsizetype>(text.size()));
    for (const char byte : text)
        result.append(
            QChar(static_cast<char16_t>(CodePage::ToUnicode(static_cast<unsigned char>(byte)))));
    return result;
}

std::string FromQt(const QString& text) {
    std::string result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar character : text) {
        const auto byte = CodePage::FromUnicode(character.unicode());
        if (!byte)
            throw RunTimeError("The character U+" +
                               QString::number(character.unicode(), 16).toUpper().toStdString() +
                               " cannot be stored");
        result.push_back(static_cast<char>(*byte));
    }
    return result;
}

std::string ForMessage(const QString& text) {
    std::string result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar character : text)
        result.push_back(
            static_cast<char>(CodePage::FromUnicode(character.unicode()).value_or('?')));
    return result;
}

QString FromPath(const std::filesystem::path& path) {
    return QString::fromStdU16String(path.u16string());
}

std::filesystem::path ToPath(const QString& text) {
    // Qt's paths have slashes; the system's own separators are what is shown and stored.
    return std::filesystem::path(text.toStdU16String()).make_preferred();
}

} // namespace Text
