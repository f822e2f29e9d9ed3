// Where Steam is on this PC.
#include "pc/registry.h"
#include "steamvr/steam_manager.h"

#include <QDebug>
#include <QFile>
#include <QStringList>

namespace {

const QString uninstallKey = QStringLiteral(
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall");
const QString steamKey = QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\Valve\\Steam");

} // namespace

bool SteamManager::isSteamInstalled() const
{
    const QStringList entries = registry::subkeys(uninstallKey);
    for (const QString &entry : entries) {
        if (registry::text(uninstallKey + '\\' + entry, QStringLiteral("DisplayName")) ==
            QStringLiteral("Steam"))
            return true;
    }
    return registry::keyExists(steamKey);
}

QString SteamManager::steamInstallPath() const
{
    if (const auto path = registry::text(steamKey, QStringLiteral("InstallPath")))
        return *path;
    const QStringList entries = registry::subkeys(uninstallKey);
    for (const QString &entry : entries) {
        const QString key = uninstallKey + '\\' + entry;
        if (registry::text(key, QStringLiteral("DisplayName")) != QStringLiteral("Steam"))
            continue;
        if (const auto path = registry::text(key, QStringLiteral("InstallLocation")))
            return *path;
    }
    for (const QString &candidate : {QStringLiteral("C:\\Program Files (x86)\\Steam"),
                                     QStringLiteral("C:\\Program Files\\Steam"),
                                     dependencies_.homeDir + QStringLiteral("\\Steam")}) {
        if (QFile::exists(candidate + QStringLiteral("\\Steam.exe")))
            return candidate;
    }
    qWarning("[steam] Could not find Steam installation path");
    return {};
}
