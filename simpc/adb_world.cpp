#include "simpc/adb_world.h"

#include "pc/own_variables.h"
#include "simpc/adb_processes.h"
#include "simpc/sim_pc.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSaveFile>

#include <unistd.h>

namespace {

bool writeFile(const QString &path, const QByteArray &content)
{
    // Readers see the old or the new content.
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.commit();
}

QByteArray deviceLines(const std::vector<SimHeadset> &cable)
{
    QByteArray lines;
    for (const SimHeadset &headset : cable)
        lines += headset.serial.toUtf8() + '\t' + headset.state.toUtf8() + '\n';
    return lines;
}

QString startServer(const AdbPlan &plan, const AdbPlace &place, quint16 port)
{
    const QString folder = place.stateFolder + '/' + plan.runsFrom;
    const QString program = folder + QStringLiteral("/adb.exe");
    QDir().mkpath(folder);
    if (!QFile::exists(program) &&
        !QFile::copy(place.programFolder + QStringLiteral("/adb"), program))
        return QStringLiteral("adb cannot be copied to ") + program;
    QProcess server;
    server.setProcessEnvironment(own_variables::forChildren());
    server.setProgram(program);
    server.setArguments({QStringLiteral("-L"), QStringLiteral("tcp:%1").arg(port),
                         QStringLiteral("fork-server"), QStringLiteral("server")});
    server.setStandardInputFile(QProcess::nullDevice());
    server.setStandardOutputFile(QProcess::nullDevice());
    server.setStandardErrorFile(QProcess::nullDevice());
    return server.startDetached() ? QString() : QStringLiteral("cannot start ") + program;
}

} // namespace

QString installAdb(const AdbPlan &plan, const AdbPlace &place, SimPc &pc)
{
    const quint16 port = place.port != 0 ? place.port : adb_processes::freePort();
    const QString folder = place.stateFolder;
    if (!QDir().mkpath(folder))
        return QStringLiteral("no folder for adb: ") + folder;
    qputenv("ANDROID_ADB_SERVER_PORT", QByteArray::number(port));
    qputenv("ADB_SIM_FOLDER", folder.toUtf8());
    if (place.endsWithUs)
        writeFile(folder + QStringLiteral("/owner"), "/proc/" + QByteArray::number(::getpid()));
    if (plan.hangs)
        writeFile(folder + QStringLiteral("/hang"), {});
    pc.processes.setHostProcesses(adb_processes::onPort(port));
    pc.facts.searchPath.set(plan.onPath ? place.programFolder : QString());
    const QString devices = folder + QStringLiteral("/devices");
    pc.usb.onCable([devices](const std::vector<SimHeadset> &cable) {
        writeFile(devices, deviceLines(cable));
    });
    return plan.runsFrom.isEmpty() ? QString() : startServer(plan, place, port);
}
