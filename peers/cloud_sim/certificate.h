// Who the stand-in says that it is.
#pragma once

#include <QSslCertificate>
#include <QSslKey>
#include <QString>

struct Identity
{
    QSslCertificate certificate{QByteArray()};
    QSslKey key;
};

// A new key and a certificate for 127.0.0.1 that it signs itself. On failure
// `error` says why.
Identity makeIdentity(QString *error);
