// Stands in for vrserver.exe: loads the drivers that are registered when it
// starts. The driver that counts is a folder with streaming-server-sim.exe in
// it, which lives as long as this program does. The environment variable
// STAND_IN_SERVER_ARGUMENTS holds the rest of its command line.
#include "peers/windows/stand_in_win.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr DWORD driverLoads = 1000; // ms

QString serverOfDrivers()
{
    QFile file(QDir::homePath() + QStringLiteral("/AppData/Local/openvr/openvrpaths.vrpath"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject paths = QJsonDocument::fromJson(file.readAll()).object();
    const QJsonArray drivers = paths[QStringLiteral("external_drivers")].toArray();
    for (const QJsonValue &driver : drivers) {
        const QString server = driver.toString() + QStringLiteral("/streaming-server-sim.exe");
        if (QFile::exists(server))
            return QDir::toNativeSeparators(server);
    }
    return {};
}

// Ends the processes in it with this one, however this one ends.
HANDLE lifeline()
{
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    const stand_in::Part part;
    const QString server = serverOfDrivers();
    if (server.isEmpty() || part.closesWithin(driverLoads)) {
        part.untilClosed(stand_in::Turn::Server);
        return 0;
    }
    const HANDLE job = lifeline();
    const HANDLE process = stand_in::startProgram(
        server.toStdWString(), qEnvironmentVariable("STAND_IN_SERVER_ARGUMENTS").toStdWString());
    if (!process)
        return 1;
    AssignProcessToJobObject(job, process);
    part.untilClosed(stand_in::Turn::Server);
    TerminateProcess(process, 0);
    return 0;
}
