#include "simpc/server_plan.h"

namespace {

QString seconds(qint64 milliseconds)
{
    return QString::number(static_cast<double>(milliseconds) / 1000.0, 'g', 12);
}

QStringList headsetArguments(const PlannedHeadset &headset, qint64 elapsed)
{
    const bool dropped = headset.drops >= 0 && headset.drops <= elapsed;
    const qint64 appears = dropped ? headset.returns : headset.joins;
    if (appears < 0)
        return {};
    QStringList arguments{
        QStringLiteral("--headset"),
        QStringLiteral("%1=%2@%3")
            .arg(headset.serial, headset.address, seconds(qMax<qint64>(0, appears - elapsed)))};
    if (headset.drops >= 0 && !dropped) {
        arguments << QStringLiteral("--drop")
                  << headset.serial + '@' + seconds(headset.drops - elapsed);
        if (headset.returns >= 0)
            arguments << QStringLiteral("--return")
                      << headset.serial + '@' + seconds(headset.returns - elapsed);
    }
    return arguments;
}

} // namespace

QStringList ServerPlan::arguments(qint64 elapsed) const
{
    QStringList arguments;
    for (const PlannedHeadset &headset : headsets)
        arguments += headsetArguments(headset, elapsed);
    arguments << QStringLiteral("--link-delay") << seconds(linkDelay);
    if (restart >= elapsed)
        arguments << QStringLiteral("--restart-at") << seconds(restart - elapsed);
    if (usb)
        arguments << QStringLiteral("--usb");
    if (usbPort > 0)
        arguments << QStringLiteral("--usb-port") << QString::number(usbPort);
    if (hello)
        arguments << QStringLiteral("--hello");
    if (deviceIdFirst)
        arguments << QStringLiteral("--serial-first");
    if (!deviceId.isEmpty())
        arguments << QStringLiteral("--device-id") << deviceId;
    if (split > 0)
        arguments << QStringLiteral("--split") << QString::number(split);
    if (join > 1)
        arguments << QStringLiteral("--join") << QString::number(join);
    return arguments;
}
