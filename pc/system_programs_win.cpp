#include "pc/system_programs.h"

#include <QMap>

#include <windows.h>

namespace system_programs {

namespace {

QString &standIns()
{
    static QString &folder = *new QString; // programs may be started until the very end
    return folder;
}

template <typename Ask>
QString folder(const Ask &ask)
{
    wchar_t path[MAX_PATH] = {};
    return QString::fromWCharArray(path, static_cast<int>(ask(path, MAX_PATH)));
}

// Which folder each lies in, with a backslash at its end.
const QMap<QString, QString> &folders()
{
    static const QMap<QString, QString> &known = *new QMap<QString, QString>([] {
        const QString system = folder(GetSystemDirectoryW) + '\\';
        const QString windows = folder(GetSystemWindowsDirectoryW) + '\\';
        return QMap<QString, QString>{
            {QStringLiteral("cmd"), system},
            {QStringLiteral("explorer"), windows},
            {QStringLiteral("netsh"), system},
            {QStringLiteral("powershell"), system + QStringLiteral("WindowsPowerShell\\v1.0\\")},
            {QStringLiteral("taskkill"), system},
        };
    }());
    return known;
}

} // namespace

QString pathOf(const QString &name)
{
    const QLatin1String end(".exe");
    const QString base = name.endsWith(end) ? name.left(name.size() - end.size()) : name;
    const auto found = folders().find(base);
    if (found == folders().end())
        return name;
    return (standIns().isEmpty() ? *found : standIns()) + base + end;
}

void lookIn(const QString &folder)
{
    standIns() = folder.isEmpty() ? folder : folder + '\\';
}

} // namespace system_programs
