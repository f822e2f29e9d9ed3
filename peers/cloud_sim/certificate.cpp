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

} // namespace

Identity makeIdentity(QString *error)
{
    const QTemporaryDir folder;
    const QString key = folder.filePath(QStringLiteral("key.pem"));
    const QString certificate = folder.filePath(QStringLiteral("certificate.pem"));
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                   QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
                   QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes"),
                   QStringLiteral("-days"), QStringLiteral("2"), QStringLiteral("-subj"),
                   QStringLiteral("/CN=cloud-sim"), QStringLiteral("-addext"),
                   QStringLiteral("subjectAltName=IP:127.0.0.1,DNS:localhost"),
                   QStringLiteral("-keyout"), key, QStringLiteral("-out"), certificate});
    if (!openssl.waitForFinished() || openssl.exitCode() != 0) {
        *error = QStringLiteral("openssl makes no certificate: ") +
                 (openssl.error() == QProcess::FailedToStart
                      ? openssl.errorString()
                      : QString::fromLocal8Bit(openssl.readAllStandardError()));
        return {};
    }
    Identity identity;
    identity.certificate = QSslCertificate(contentOf(certificate));
    identity.key = QSslKey(contentOf(key), QSsl::Ec);
    if (identity.certificate.isNull() || identity.key.isNull())
        *error = QStringLiteral("the certificate that openssl made cannot be read");
    return identity;
}
