#include "RunTool.h"

#include <QProcess>

#include <gtest/gtest.h>

QString RunTool(const QString& tool, const QStringList& options, const QString& file,
                const QStringList& rest) {
    QProcess process;
    process.start(tool, options + QStringList{file} + rest);
    EXPECT_TRUE(process.waitForFinished()) << tool.toStdString() << " did not run";
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}
