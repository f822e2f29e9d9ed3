#include "sysinfo/driver_rules.h"

#include <QDebug>

namespace {

// The end of a driver's version holds NVIDIA's own: 31.0.15.5176 is 551.76.
constexpr int ownVersionLength = 6;
const QString oldestGood = QStringLiteral("55176");

} // namespace

QString driver_rules::versionText(quint64 version)
{
    QStringList fields;
    for (int shift = 48; shift >= 0; shift -= 16)
        fields.append(QString::number((version >> shift) & 0xffff));
    return fields.join(QLatin1Char('.'));
}

QStringList
driver_rules::nvidiaVersions(const std::optional<std::vector<display_drivers::Device>> &devices)
{
    if (!devices) {
        qInfo("SetupDiGetClassDevs failed");
        return {};
    }
    for (const display_drivers::Device &device : *devices) {
        if (!device.listed)
            qInfo("find none GPU");
        int index = 0;
        for (const display_drivers::Driver &driver : device.drivers) {
            qInfo().noquote().nospace()
                << '[' << index++ << ']' << driver.manufacturer << QStringLiteral(" 驱动程序版本：")
                << versionText(driver.version);
        }
    }
    return nvidiaVersionsOf(devices);
}

QStringList
driver_rules::nvidiaVersionsOf(const std::optional<std::vector<display_drivers::Device>> &devices)
{
    QStringList versions;
    if (!devices)
        return versions;
    for (const display_drivers::Device &device : *devices) {
        for (const display_drivers::Driver &driver : device.drivers) {
            if (driver.manufacturer == QLatin1String("NVIDIA"))
                versions.append(versionText(driver.version));
        }
    }
    return versions;
}

bool driver_rules::needUpdate(const QStringList &nvidiaVersions)
{
    for (const QString &version : nvidiaVersions) {
        if (version.size() <= ownVersionLength)
            continue;
        // As text: these have five digits each.
        if (version.right(ownVersionLength).remove(QLatin1Char('.')) >= oldestGood)
            return false;
    }
    return !nvidiaVersions.isEmpty();
}
