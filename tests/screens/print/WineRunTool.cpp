// The tools are programs of the system below Wine, which starts them, but hands on neither what
// they print nor that they have ended: a shell of that system puts both into files.

#include "RunTool.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <windows.h>

namespace {

constexpr int longestRun_ms = 30000;

/// What the system below calls a path; Wine's own function, of no header.
QString PathBelow(const QString& path) {
    using Translate = char*(__cdecl*)(const wchar_t*);
    const auto found = ::GetProcAddress(::GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name");
    const auto translate = reinterpret_cast<Translate>(reinterpret_cast<void*>(found));
    if (!translate)
        return path;
    char* const below = translate(QDir::toNativeSeparators(path).toStdWString().c_str());
    const QString name = QString::fromUtf8(below);
    ::HeapFree(::GetProcessHeap(), 0, below);
    return name;
}

bool AwaitFile(const QString& file) {
    const QDeadlineTimer end(longestRun_ms);
    while (!QFile::exists(file) && !end.hasExpired())
        QThread::msleep(5);
    return QFile::exists(file);
}

} // namespace

QString RunTool(const QString& tool, const QStringList& options, const QString& file,
                const QStringList& rest) {
    const QTemporaryDir folder;
    const QString printed = folder.filePath("printed");
    const QString failed = folder.filePath("failed");
    const QString script =
        R"(out=$0 bad=$1; shift; "$@" >$out.part 2>&1 || touch $bad; mv $out.part $out)";
    const QStringList words = QStringList{"-c", script, PathBelow(folder.path()) + "/printed",
                                          PathBelow(folder.path()) + "/failed", tool} +
                              options + QStringList{PathBelow(file)} + rest;
    EXPECT_TRUE(QProcess::startDetached("Z:\\bin\\sh", words));
    EXPECT_TRUE(AwaitFile(printed)) << tool.toStdString() << " did not run";
    QFile output(printed);
    EXPECT_TRUE(output.open(QIODevice::ReadOnly));
    const QByteArray text = output.readAll();
    EXPECT_FALSE(QFile::exists(failed)) << text.toStdString();
    return QString::fromUtf8(text);
}
