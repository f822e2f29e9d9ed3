#include "pc/adb_shell.h"

#include "simpc/sim_pc.h"

namespace adb_shell {

namespace {

QString quoted(QString text)
{
    return '\'' + text.replace(QLatin1String("'"), QLatin1String("'\\''")) + '\'';
}

} // namespace

// As Windows does it: the search path is the simulated PC's, the working folder
// comes before it, and a program is found without its ".exe".
Call call(const QString &line)
{
    const QString script =
        QStringLiteral("PATH=%1; export PATH; [ -x ./adb.exe ] && adb() { ./adb.exe \"$@\"; }; %2")
            .arg(quoted(SimPc::current().facts.searchPath.get()), line);
    return {QStringLiteral("sh"), {QStringLiteral("-c"), script}};
}

QString word(const QString &path)
{
    QString escaped;
    for (const QChar c : path) {
        if (QStringLiteral("&()|<>;$`\\\"'*?[#~").contains(c))
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

QByteArray withWindowsLineEnds(const QByteArray &output)
{
    return QByteArray(output).replace('\n', QByteArrayLiteral("\r\n"));
}

} // namespace adb_shell
