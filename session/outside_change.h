// What this program has changed that is not its own, as values.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

// One change, or several in a row of the same document. Any thread; a value type.
struct OutsideChange
{
    enum Kind {
        DriverList,     // OpenVR's list, by `path`
        ServerSettings, // the streaming server's file, by `path`
        SetAside,       // a file that was no JSON: it was `path` and is `newPath`
        Forwards        // of adb, each "serial local remote" in `forwards`
    };
    int id = 0;
    Kind kind = DriverList;
    QDateTime time; // of the first of them
    QString path;
    QString newPath;
    QByteArray before;        // the document as it was, byte for byte
    QList<QByteArray> afters; // fingerprints of what we wrote since
    QStringList forwards;
    bool isGivenBack = false;
};

namespace outside_change {

// What stands for a content in `afters`.
QByteArray fingerprint(const QByteArray &content);

// The drivers that the OpenVR list `document` registers, without `ownDriver`.
QStringList foreignDrivers(const QByteArray &document, const QString &ownDriver);

// One line of the record each: a new change, another content that we wrote in the
// course of a change, and that a change was given back.
QJsonObject lineOf(const OutsideChange &change);
QJsonObject lineOfAfter(int id, const QByteArray &fingerprint);
QJsonObject lineOfReturn(int id, const QDateTime &time);
// What the line adds to those before it. A line that says nothing is passed over.
void take(QList<OutsideChange> &changes, const QJsonObject &line);

} // namespace outside_change
