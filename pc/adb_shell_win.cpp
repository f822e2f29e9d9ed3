#include "pc/adb_shell.h"

#include "pc/system_programs.h"

namespace adb_shell {

Call call(const QString &line)
{
    return {system_programs::pathOf(QStringLiteral("cmd")), {QStringLiteral("/c"), line}};
}

// Ordinary paths stay as they are. A folder may well be called "q&a", though:
// without the caret the line would end there and adb never run.
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
