#include "tests/usb/adb_pc_platform.h"

#include "base/manual_clock.h"
#include "simpc/adb_processes.h"
#include "simpc/sim_pc.h"

#include <QFile>
#include <QFileInfo>

struct AdbPcPlatform::Private
{
    ManualClock clock;
    SimPc pc{clock};
};

AdbPcPlatform::AdbPcPlatform(quint16 adbPort) : d(std::make_unique<Private>())
{
    d->pc.processes.setHostProcesses(adb_processes::onPort(adbPort));
}

AdbPcPlatform::~AdbPcPlatform() = default;

void AdbPcPlatform::letFind(const QString &program)
{
    QFile::link(program, QFileInfo(program).path() + QStringLiteral("/adb"));
}

void AdbPcPlatform::setSearchPath(const QString &folder)
{
    d->pc.facts.searchPath.set(folder);
}
