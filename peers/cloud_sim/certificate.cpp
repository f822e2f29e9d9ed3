#include "peers/cloud_sim/certificate.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Runs openssl in `folder`; false, and a sentence in `error`, when it fails.
bool runOpenSsl(const QString &folder, const QStringList &arguments, QString *error)
{
    QProcess openssl;
    openssl.setWorkingDirectory(folder);
    openssl.start(QStringLiteral("openssl"), arguments);
    if (openssl.waitForFinished() && openssl.exitCode() == 0)
        return true;
    *error = QStringLiteral("openssl makes no certificate: ") +
             (openssl.error() == QProcess::FailedToStart
                  ? openssl.errorString()
                  : QString::fromLocal8Bit(openssl.readAllStandardError()));
    return false;
}

const QStringList newKey{QStringLiteral("-newkey"), QStringLiteral("ec"),
                         QStringLiteral("-pkeyopt"), QStringLiteral("ec_paramgen_curve:prime256v1"),
                         QStringLiteral("-nodes")};

Identity read(const QString &folder, const QString &name, QString *error)
{
    Identity identity;
    identity.chain = QSslCertificate::fromData(contentOf(folder + '/' + name + ".pem"));
    identity.key = QSslKey(contentOf(folder + '/' + name + ".key"), QSsl::Ec);
    if (identity.chain.isEmpty() || identity.key.isNull())
        *error = QStringLiteral("the certificate that openssl made cannot be read");
    return identity;
}

// A certificate that nobody signs but itself.
bool makeOwn(const QString &folder, const QString &name, const QStringList &more, QString *error)
{
    QStringList arguments{QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-days"),
                          QStringLiteral("2"),   QStringLiteral("-subj"), "/CN=cloud-sim " + name};
    arguments << newKey << more << QStringLiteral("-keyout") << name + ".key"
              << QStringLiteral("-out") << name + ".pem";
    return runOpenSsl(folder, arguments, error);
}

// One that the authority of the folder signs, for `names` and so many days.
bool makeSigned(const QString &folder, const QString &name, const QString &names, int days,
                QString *error)
{
    QStringList request{QStringLiteral("req"),     QStringLiteral("-new"),
                        QStringLiteral("-subj"),   "/CN=cloud-sim " + name,
                        QStringLiteral("-addext"), "subjectAltName=" + names};
    request << newKey << QStringLiteral("-keyout") << name + ".key" << QStringLiteral("-out")
            << name + ".request";
    return runOpenSsl(folder, request, error) &&
           runOpenSsl(folder,
                      {QStringLiteral("x509"), QStringLiteral("-req"), QStringLiteral("-in"),
                       name + ".request", QStringLiteral("-CA"), QStringLiteral("authority.pem"),
                       QStringLiteral("-CAkey"), QStringLiteral("authority.key"),
                       QStringLiteral("-CAcreateserial"), QStringLiteral("-copy_extensions"),
                       QStringLiteral("copy"), QStringLiteral("-days"), QString::number(days),
                       QStringLiteral("-out"), name + ".pem"},
                      error);
}

const QString ownNames = QStringLiteral("IP:127.0.0.1,DNS:localhost");

} // namespace

Identity makeIdentity(QString *error)
{
    const QTemporaryDir folder;
    const QString name = QStringLiteral("own");
    if (!makeOwn(folder.path(), name, {QStringLiteral("-addext"), "subjectAltName=" + ownNames},
                 error))
        return {};
    return read(folder.path(), name, error);
}

QMap<QString, Identity> makeIdentities(const QString &folder, QString *error)
{
    const QString good = QStringLiteral("good");
    const QString wrongName = QStringLiteral("wrong-name");
    const QString expired = QStringLiteral("expired");
    const QString selfSigned = QStringLiteral("self-signed");
    QMap<QString, Identity> identities;
    const bool made =
        makeOwn(folder, QStringLiteral("authority"),
                {QStringLiteral("-addext"), QStringLiteral("keyUsage=critical,keyCertSign")},
                error) &&
        makeSigned(folder, good, ownNames, 2, error) &&
        makeSigned(folder, wrongName, QStringLiteral("DNS:elsewhere.example"), 2, error) &&
        makeSigned(folder, expired, ownNames, -1, error) &&
        makeOwn(folder, selfSigned, {QStringLiteral("-addext"), "subjectAltName=" + ownNames},
                error);
    if (!made)
        return {};
    const auto authority = QSslCertificate::fromData(contentOf(folder + "/authority.pem"));
    for (const QString &name : {good, wrongName, expired, selfSigned}) {
        Identity identity = read(folder, name, error);
        if (name != selfSigned)
            identity.chain << authority;
        identities.insert(name, identity);
    }
    return identities;
}
