#pragma once

#include <QString>
#include <QStringList>

/// Runs a tool of this machine on a file and returns what it prints: `options` before the file's
/// name, `rest` behind it. Fails the test where the tool cannot be run or ends with an error.
QString RunTool(const QString& tool, const QStringList& options, const QString& file,
                const QStringList& rest = {});
