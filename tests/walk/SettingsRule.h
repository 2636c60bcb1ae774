#pragma once

#include <QString>

#include <string>

/// Settings that nobody touches keep their bytes.
namespace walk {

/// The file as it is held against what it was: the outer blanks of a text are not kept, since they
/// go when it is read.
QByteArray SettingsIn(const QString& file);

/// The bytes are the same, but for texts whose empty value means a default: the next program that
/// keeps its settings writes it out.
bool AreKept(const QByteArray& before, const QByteArray& after);

/// The lines that stand in one of the two alone.
std::string Difference(const QByteArray& before, const QByteArray& after);

} // namespace walk
