// What the user is told of documents that could not be written.
#pragma once

#include "config/not_written.h"
#include "config/openvr_paths.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

class Clock;

// One toast for each document and run, which names it and says what that means.
// Toasts take each other's place: those of this object come one after the other,
// and one that was replaced before it could be read comes again. GUI thread.
class UnwrittenFiles : public QObject
{
    Q_OBJECT

public:
    explicit UnwrittenFiles(Clock &clock, QObject *parent = nullptr);

    // Says so in the log at once, and to the user when somebody listens: not
    // before the event loop runs. Only the first time for each document.
    void tell(StoredFile file, WriteResult result);
    // SteamVR is started without our driver, each time anew. Nothing for None.
    void driverMissing(openvr_paths::Problem problem);

    // A toast is shown for so many ms; ours are passed over.
    void otherToast(int duration);

    // What is said.
    static QString text(StoredFile file, WriteResult result);
    static QString text(openvr_paths::Problem problem);

signals:
    void toast(const QString &text, int duration);

private:
    void add(const QString &text);
    void schedule(qint64 at);
    void speak();

    Clock &clock_;
    QList<StoredFile> told_;
    QStringList waiting_;
    QString shown_;        // said last, if nobody has had the time to read it
    qint64 shownAt_ = 0;   // ms of the clock
    qint64 busyUntil_ = 0; // somebody's toast is there
    bool isScheduled_ = false;
    bool isSpeaking_ = false;
};
