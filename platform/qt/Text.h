#pragma once

#include <QString>

#include <filesystem>
#include <string>
#include <string_view>

/// The one place where the core's Windows-1252 text and Qt's text meet.
namespace Text {

QString ToQt(std::string_view text);

/// Throws RunTimeError naming the first character that the code page lacks, so that nothing is
/// silently turned into another text.
std::string FromQt(const QString& text);

/// The same for a message about a name or a system's text: "?" stands for what the code page lacks.
std::string ForMessage(const QString& text);

QString FromPath(const std::filesystem::path& path);
std::filesystem::path ToPath(const QString& text);

} // namespace Text
