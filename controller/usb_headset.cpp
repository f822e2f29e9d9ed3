#include "controller/usb_headset.h"

#include "usb/adb_manger.h"

UsbHeadset::UsbHeadset(std::function<AdbManger &()> adb, QObject *parent)
    : QObject(parent), adb_(std::move(adb))
{
}

void UsbHeadset::watch()
{
    if (watching_)
        return;
    watching_ = true;
    AdbManger &adb = adb_();
    connect(&adb, &AdbManger::deviceConnect, this, &UsbHeadset::take);
    connect(&adb, &AdbManger::showAdbTipToast, this, &UsbHeadset::unreachable);
}

adb_rules::AdbState UsbHeadset::checkDevices()
{
    AdbManger &adb = adb_();
    adb.checkDevice();
    return adb.adbState();
}

void UsbHeadset::stop()
{
    adb_().killAdb();
}

void UsbHeadset::take(bool connect, const QString &serial)
{
    serial_ = connect ? std::optional<QString>(serial) : std::nullopt;
    if (connect)
        emit attached(serial);
    else
        emit detached();
}
