#include "link/adb_manger.h"

#include "sysinfo/system_info.h"

namespace {

QString adbName()
{
    return QStringLiteral("adb.exe");
}

} // namespace

AdbManger::AdbManger(QObject *parent) : QObject(parent) {}

AdbManger &AdbManger::instance()
{
    static AdbManger manager;
    return manager;
}

void AdbManger::killAdb()
{
    if (SystemInfo::isProcessRunning(adbName()))
        SystemInfo::killProcesses({adbName()});
}

void AdbManger::checkDevice() {}
