#include "link/adb_shell.h"

namespace adb_shell {

Call call(const QString &line)
{
    return {QStringLiteral("cmd"), {QStringLiteral("/c"), line}};
}

QString word(const QString &path)
{
    QString escaped;
    for (const QChar c : path) {
        if (QStringLiteral("&^|<>").contains(c))
            escaped += '^';
        escaped += c;
    }
    return escaped;
}

QByteArray withWindowsLineEnds(const QByteArray &output)
{
    return output;
}

} // namespace adb_shell
