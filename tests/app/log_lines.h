// What the tests of the log file share.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QMessageLogContext>
#include <QString>

// Of a build that does not know its sources.
inline const QMessageLogContext noContext;

// The file of the day on which a ManualClock begins.
inline const QByteArray dayFile = "2024-05-17.txt";

inline QDateTime localTime(const QString &text)
{
    return QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz"));
}
