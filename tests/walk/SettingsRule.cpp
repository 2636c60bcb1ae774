#include "walk/SettingsRule.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>

QByteArray walk::SettingsIn(const QString& name) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString text = QString::fromLatin1(file.readAll());
    return text.replace(QRegularExpression(" *\x0F *"), "\x0F").toLatin1();
}

bool walk::AreKept(const QByteArray& before, const QByteArray& after) {
    const auto meansDefault = [](const QByteArray& line) {
        return line == "Project Name=" || line == "Experimentator=" ||
               line == "Measurement File Location=" || line == "Period=";
    };
    const QList<QByteArray> old = before.split('\n'), young = after.split('\n');
    return std::ranges::equal(old, young, [&](const QByteArray& was, const QByteArray& is) {
        return was == is || (meansDefault(was.trimmed()) && is.startsWith(was.trimmed()));
    });
}

std::string walk::Difference(const QByteArray& before, const QByteArray& after) {
    const QList<QByteArray> old = before.split('\n'), young = after.split('\n');
    std::string text;
    for (const QByteArray& line : old)
        if (!young.contains(line))
            text += "\n- " + line.toStdString();
    for (const QByteArray& line : young)
        if (!old.contains(line))
            text += "\n+ " + line.toStdString();
    return text;
}
