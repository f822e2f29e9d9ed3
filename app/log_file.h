// The daily log file.
#pragma once

#include "base/clock.h"
#include "base/mutex.h"

#include <QString>
#include <QTime>
#include <QtGlobal>

#include <functional>

// One line of the log, without its line end:
//   [Info:14:03:07.215  "(0)"]:checkSteam end
// The quoted part is the source file and line of the message; a release build
// knows neither. Pure, any thread.
QString logLine(QtMsgType type, const QMessageLogContext &context, QTime time,
                const QString &message);

// The name of a day's log file, "/2024-05-17.txt". Pure, any thread.
QString logFileName(QDate date);

// Appends lines to one text file a day, each by opening, appending and closing
// the file, so that nothing is lost however the process ends and the file can
// be sent, moved or deleted at any time. The text is in the locale's 8-bit
// encoding, lines end in CR LF.
//
// A line that cannot be written (no such folder, a full disk) is lost silently:
// logging never disturbs the program and never makes the folder.
class LogFile
{
public:
    using Folder = std::function<QString()>;

    // Writes into `folder`, which is asked for at every line because it may
    // depend on names that are set later. It is called under this object's
    // lock. `clock` must outlive this object.
    LogFile(Folder folder, Clock &clock);
    LogFile(const QString &folder, Clock &clock);

    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

    // Appends one line in the file of the local day on which it is written.
    // Any thread: lines stay whole and stand in the order in which the threads
    // came. A message that is logged by writing a line is dropped.
    void write(QtMsgType type, const QMessageLogContext &context, const QString &message);

private:
    QTime takeTime() REQUIRES(mutex_);

    const Folder folder_;
    Clock &clock_;
    Mutex mutex_;

    // What the last line used: asking for the time zone takes longer than
    // writing the line.
    qint64 second_ GUARDED_BY(mutex_) = -1;
    QTime time_ GUARDED_BY(mutex_);
    QDate date_ GUARDED_BY(mutex_);
    QString folderOfPath_ GUARDED_BY(mutex_);
    QDate dateOfPath_ GUARDED_BY(mutex_);
    QString path_ GUARDED_BY(mutex_);
};

// Sends everything that is logged through Qt from here on to the daily file in
// the user's local application data folder. That folder depends on the
// organisation name, which may be set later.
void installLogFile();
