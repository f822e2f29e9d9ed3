#include "cloud/orb_update.h"

#include "sysinfo/system_info.h"

#include <QStringList>

ORBUpdate::ORBUpdate(QObject *parent) : QObject(parent) {}

bool ORBUpdate::setup()
{
    return false;
}

QString ORBUpdate::version()
{
    const QStringList parts = SystemInfo::assistantVersion().split(QLatin1Char('.'));
    if (parts.size() < 4)
        return QStringLiteral("v1.0.0");
    return QStringLiteral("v%1.%2.%3").arg(parts[0], parts[1], parts[2]);
}
