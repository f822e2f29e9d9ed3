#include "usb/usb_identity.h"

bool usb_identity::isHeadset(const QString &interfacePath)
{
    const QString device = interfacePath.left(interfacePath.lastIndexOf('#'));
    return device.toUpper().contains(QLatin1String("USB#VID_05C6&PID_903A#"));
}
