// The record of what this program changes outside its own folder, and the way back.
#pragma once

#include "base/mutex.h"
#include "config/outside_record.h"
#include "session/change_journal.h"
#include "session/outside_change.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

// Each change is on the disk before it is made: whoever is killed in between can
// give it back all the same. What cannot be written down is logged, and is changed
// nevertheless. Any thread.
class ChangeRecord
{
public:
    // `ownDriver` is the folder that we register with OpenVR: no loss to anybody.
    ChangeRecord(const QString &dataDir, const QString &ownDriver);

    // The product's one. To be asked for before whoever tells it of changes.
    static ChangeRecord &instance();

    // What config/ is to be told to call.
    OutsideRecord callbacks();
    void beforeEdit(const OutsideEdit &edit);
    void beforeSetAside(const QString &path, const QString &newPath);
    // Each "serial local remote".
    void beforeForwardsGo(const QStringList &forwards);

    // Those that were given back included, the oldest first.
    QList<OutsideChange> changes() const;
    QString ownDriver() const { return ownDriver_; }

    // Gives back what the change with this number took, if it can be given back;
    // what was changed before in the same document stays for its own turn. False,
    // and a line in the log, when it cannot be done now.
    bool giveBack(int id);
    // Everything that can be, other tools' drivers first. False when anything that
    // can be given back could not be now.
    bool giveBackAll();

private:
    void add(OutsideChange change) REQUIRES(mutex_);
    void write(const QJsonObject &line) REQUIRES(mutex_);

    const QString ownDriver_;
    mutable Mutex mutex_;
    const ChangeJournal journal_ GUARDED_BY(mutex_);
    QList<OutsideChange> changes_ GUARDED_BY(mutex_);
};
