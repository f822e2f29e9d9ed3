#include "tests/cloud/cloud_peer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

namespace {

constexpr int startsWithin = 30000; // ms

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class CloudPeer::Process
{
public:
    explicit Process(Identities identities)
    {
        process_.setProcessChannelMode(QProcess::MergedChannels);
        QStringList arguments{QStringLiteral("--port"), QStringLiteral("0"),
                              QStringLiteral("--store"), folder_.path()};
        if (identities == Identities::Made)
            arguments << QStringLiteral("--identities") << folder_.path() + "/identities";
        process_.start(QStringLiteral(CLOUD_SIM), arguments);
    }
    ~Process()
    {
        process_.kill();
        process_.waitForFinished();
    }
    QString store() const { return folder_.path(); }
    // The first line says the address.
    quint16 port()
    {
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(startsWithin))
                return 0;
        }
        const QByteArray line = process_.readLine().trimmed();
        return line.mid(line.lastIndexOf(':') + 1).toUShort();
    }

private:
    QTemporaryDir folder_;
    QProcess process_;
};

CloudPeer::CloudPeer(Identities identities) : store_(qEnvironmentVariable("KOLM_CLOUD_SIM_STORE"))
{
    port_ = qEnvironmentVariable("KOLM_CLOUD_SIM_PORT").toUShort();
    if (port_ != 0)
        return;
    process_ = std::make_unique<Process>(identities);
    port_ = process_->port();
    store_ = process_->store();
}

CloudPeer::~CloudPeer() = default;

void CloudPeer::begin(const QString &answers)
{
    begin(QJsonObject{{QStringLiteral("like"), answers}});
}

void CloudPeer::begin(const QJsonObject &answers)
{
    static int count = 0;
    tag_ = QStringLiteral("%1-%2").arg(QCoreApplication::applicationPid()).arg(++count);
    const QString folder = store_ + '/' + tag_;
    QFile file(folder + "/answers.json");
    if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly) ||
        file.write(QJsonDocument(answers).toJson()) < 0)
        qFatal("the answers cannot be written");
}

QString CloudPeer::host() const
{
    return QStringLiteral("127.0.0.1:%1/@%2").arg(port_).arg(tag_);
}

QString CloudPeer::hostAs(const QString &identity) const
{
    const QByteArray port = contentOf(store_ + "/identities/" + identity + ".port").trimmed();
    return QStringLiteral("127.0.0.1:%1/@%2").arg(QString::fromLatin1(port), tag_);
}

QString CloudPeer::authority() const
{
    return store_ + "/identities/authority.pem";
}

QString CloudPeer::base() const
{
    return QStringLiteral("https://") + host();
}

int CloudPeer::receivedCount() const
{
    return QDir(store_ + '/' + tag_).entryList({QStringLiteral("*.head")}).size();
}

QList<Received> CloudPeer::received() const
{
    QList<Received> all;
    const QDir folder(store_ + '/' + tag_);
    const QStringList heads = folder.entryList({QStringLiteral("*.head")}, QDir::Files, QDir::Name);
    for (const QString &name : heads) {
        const QString path = folder.filePath(name);
        QList<QByteArray> lines = contentOf(path).split('\n');
        const QList<QByteArray> words = lines.takeFirst().split(' ');
        Received request;
        request.method = words.value(0);
        request.target = words.value(1).mid(tag_.size() + 2);
        for (const QByteArray &line : qAsConst(lines)) {
            const int colon = line.indexOf(':');
            if (colon > 0)
                request.headers.insert(line.left(colon), line.mid(colon + 1).trimmed());
        }
        request.body = contentOf(path.left(path.size() - 4) + "body");
        all.append(request);
    }
    return all;
}
