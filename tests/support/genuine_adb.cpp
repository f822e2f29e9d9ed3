#include "tests/support/genuine_adb.h"

#include "tests/support/free_port.h"

#include <QFileInfo>
#include <QTcpSocket>

namespace {

constexpr int limit = 20000; // ms

} // namespace

GenuineAdb::GenuineAdb(const QString &dir) : environment_(QProcessEnvironment::systemEnvironment())
{
    environment_.insert("ANDROID_ADB_SERVER_PORT", QString::number(freePort()));
    environment_.insert("HOME", dir);
    environment_.insert("TMPDIR", dir);
}

GenuineAdb::~GenuineAdb()
{
    pullOut();
    call({"kill-server"});
}

QString GenuineAdb::folder()
{
    return QFileInfo(QFileInfo(GENUINE_ADB).canonicalFilePath()).path();
}

QString GenuineAdb::call(const QStringList &arguments) const
{
    QProcess adb;
    adb.setProcessEnvironment(environment_);
    adb.start(folder() + "/adb", arguments);
    adb.waitForFinished(limit);
    return QString::fromUtf8(adb.readAllStandardOutput());
}

bool GenuineAdb::serverRuns() const
{
    QTcpSocket socket;
    socket.connectToHost("127.0.0.1", static_cast<quint16>(port().toInt()));
    return socket.waitForConnected(limit);
}

QString GenuineAdb::plugIn()
{
    pullOut();
    asked_.clear();
    headset_.start(ADB_DEVICE_SIM, QStringList());
    if (!headset_.waitForReadyRead(limit))
        return {};
    const QString where = QString::fromUtf8(headset_.readLine()).trimmed().section(' ', -1);
    const QString serial = "127.0.0.1:" + where;
    return call({"connect", serial}).startsWith("connected to " + serial) ? serial : QString();
}

void GenuineAdb::pullOut()
{
    headset_.kill();
    headset_.waitForFinished(limit);
}

QStringList GenuineAdb::asked()
{
    headset_.waitForReadyRead(1);
    asked_ += headset_.readAllStandardOutput();
    return QString::fromUtf8(asked_).split('\n', Qt::SkipEmptyParts);
}
