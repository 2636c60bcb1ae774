#include "walk/SettingsRule.h"

#include <QFile>
#include <QRegularExpression>

QByteArray walk::SettingsIn(const QString& name) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString text = QString::fromLatin1(file.readAll());
    return text.replace(QRegularExpression(" *\x0F *"), "\x0F").toLatin1();
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
