// Who the stand-in says that it is.
#pragma once

#include <QList>
#include <QMap>
#include <QSslCertificate>
#include <QSslKey>
#include <QString>

struct Identity
{
    QList<QSslCertificate> chain; // itself, then who vouches for it
    QSslKey key;
};

// A new key and a certificate for 127.0.0.1 that it signs itself. On failure
// `error` says why.
Identity makeIdentity(QString *error);

// Identities by name: "good", which authority.pem in `folder` vouches for, and what
// nobody should trust: "wrong-name" and "expired" from the same authority, and
// "self-signed". Their files are left in `folder`. On failure `error` says why.
QMap<QString, Identity> makeIdentities(const QString &folder, QString *error);
