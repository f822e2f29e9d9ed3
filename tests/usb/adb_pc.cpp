#include "tests/usb/adb_pc.h"

#include "pc/processes.h"
#include "sysinfo/system_info.h"
#include "tests/support/free_port.h"
#include "tests/usb/adb_pc_platform.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <algorithm>

namespace {

constexpr int limit = 20000; // ms

void write(const QString &file, const QByteArray &content)
{
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly) || out.write(content) != content.size())
        qFatal("the stand-in's world cannot be written");
}

} // namespace

struct AdbPc::Private
{
    QString file(const char *name) const { return world.filePath(name); }

    // Its name goes through the environment, which does not carry every letter
    // on every system.
    QTemporaryDir world{QDir::tempPath() + "/kolm-adb-XXXXXX"};
    quint16 port = freePort();
    AdbPcPlatform platform{port};
};

AdbPc::AdbPc() : d(std::make_unique<Private>())
{
    qputenv("ADB_SIM_FOLDER", QDir::toNativeSeparators(d->world.path()).toUtf8());
    qputenv("ANDROID_ADB_SERVER_PORT", QByteArray::number(d->port));
}

AdbPc::~AdbPc()
{
    SystemInfo::killProcesses({QStringLiteral("adb.exe")});
    qunsetenv("ADB_SIM_FOLDER");
    qunsetenv("ANDROID_ADB_SERVER_PORT");
}

void AdbPc::setSearchPath(const QString &folder)
{
    d->platform.setSearchPath(folder);
}

QString AdbPc::install(const QString &folder)
{
    QDir().mkpath(folder);
    const QString program = folder + QStringLiteral("/adb.exe");
    if (!QFile::copy(ADB_SIM, program))
        qFatal("the stand-in cannot be copied");
    AdbPcPlatform::letFind(program);
    return program;
}

bool AdbPc::startServer(const QString &program)
{
    QProcess server;
    server.setProgram(program);
    server.setArguments({"-L", QString("tcp:%1").arg(d->port), "fork-server", "server"});
    server.setStandardOutputFile(QProcess::nullDevice());
    server.setStandardErrorFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    bool reached = false;
    for (bool started = server.startDetached(); started && !reached && !timer.hasExpired(limit);)
        reached = serverRuns();
    return reached;
}

bool AdbPc::serverRuns() const
{
    QTcpSocket socket;
    socket.connectToHost("127.0.0.1", d->port);
    return socket.waitForConnected(limit);
}

int AdbPc::processes()
{
    const std::vector<processes::Entry> all = processes::list();
    return static_cast<int>(std::count_if(all.begin(), all.end(), [](const auto &process) {
        return process.name == QLatin1String("adb.exe");
    }));
}

void AdbPc::plug(const QByteArray &devices) const
{
    write(d->file("devices"), devices);
}

void AdbPc::hang(bool hangs) const
{
    if (hangs)
        write(d->file("hang"), {});
    else
        QFile::remove(d->file("hang"));
}

QStringList AdbPc::calls() const
{
    QStringList lines;
    QFile file(d->file("calls"));
    if (!file.open(QIODevice::ReadOnly))
        return lines;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QJsonObject call = QJsonDocument::fromJson(line).object();
        if (call.isEmpty())
            continue;
        QString text = QFileInfo(call.value("program").toString()).canonicalFilePath();
        for (const QJsonValue &argument : call.value("arguments").toArray())
            text += " [" + argument.toString() + ']';
        lines << text;
    }
    return lines;
}

QString AdbPc::ask(const QStringList &arguments) const
{
    QTcpSocket socket;
    socket.connectToHost("127.0.0.1", d->port);
    if (!socket.waitForConnected(limit))
        return {};
    socket.write(
        QJsonDocument(QJsonArray::fromStringList(arguments)).toJson(QJsonDocument::Compact) + '\n');
    QByteArray reply;
    while (!reply.endsWith('\n') && socket.waitForReadyRead(limit))
        reply += socket.readAll();
    return QJsonDocument::fromJson(reply).object().value("out").toString();
}
