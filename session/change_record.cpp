#include "session/change_record.h"

#include "base/clock.h"
#include "session/give_back.h"

#include <QCoreApplication>
#include <QDebug>
#include <QStandardPaths>

#include <algorithm>

ChangeRecord::ChangeRecord(const QString &dataDir, const QString &ownDriver)
    : ownDriver_(ownDriver), journal_(dataDir)
{
    const MutexLock lock(mutex_);
    const QList<QJsonObject> lines = journal_.lines();
    for (const QJsonObject &line : lines)
        outside_change::take(changes_, line);
}

ChangeRecord &ChangeRecord::instance()
{
    static ChangeRecord record(
        QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation),
        QCoreApplication::applicationDirPath());
    return record;
}

OutsideRecord ChangeRecord::callbacks()
{
    return {[this](const OutsideEdit &edit) { beforeEdit(edit); },
            [this](const QString &path, const QString &newPath) { beforeSetAside(path, newPath); }};
}

void ChangeRecord::write(const QJsonObject &line)
{
    outside_change::take(changes_, line);
    if (journal_.append(line) != WriteResult::Ok)
        qWarning("A change could not be written down in changes.jsonl");
}

void ChangeRecord::add(OutsideChange change)
{
    for (const OutsideChange &other : qAsConst(changes_))
        change.id = std::max(change.id, other.id);
    ++change.id;
    change.time = Clock::system().now();
    write(outside_change::lineOf(change));
}

void ChangeRecord::beforeEdit(const OutsideEdit &edit)
{
    const auto kind = edit.document == OutsideEdit::DriverList ? OutsideChange::DriverList
                                                               : OutsideChange::ServerSettings;
    const QByteArray after = outside_change::fingerprint(edit.after);
    const MutexLock lock(mutex_);
    const auto last =
        std::find_if(changes_.crbegin(), changes_.crend(), [&](const OutsideChange &change) {
            return change.kind == kind && change.path == edit.path && !change.isGivenBack;
        });
    // The server writes its settings itself; what counts is how they were before us.
    // What somebody else has registered since is another loss.
    const bool goesOn = last != changes_.crend() &&
                        (kind == OutsideChange::ServerSettings || last->before == edit.before ||
                         last->afters.contains(outside_change::fingerprint(edit.before)));
    if (!goesOn) {
        OutsideChange change;
        change.kind = kind;
        change.path = edit.path;
        change.before = edit.before;
        change.afters = {after};
        add(change);
    } else if (!last->afters.contains(after)) {
        write(outside_change::lineOfAfter(last->id, after));
    }
}

void ChangeRecord::beforeSetAside(const QString &path, const QString &newPath)
{
    OutsideChange change;
    change.kind = OutsideChange::SetAside;
    change.path = path;
    change.newPath = newPath;
    const MutexLock lock(mutex_);
    // It could not be renamed the last time, or we were killed before.
    const bool isKnown =
        std::any_of(changes_.cbegin(), changes_.cend(), [&](const OutsideChange &other) {
            return other.kind == OutsideChange::SetAside && !other.isGivenBack &&
                   other.path == path && other.newPath == newPath;
        });
    if (!isKnown)
        add(change);
}

void ChangeRecord::beforeForwardsGo(const QStringList &forwards)
{
    OutsideChange change;
    change.kind = OutsideChange::Forwards;
    change.forwards = forwards;
    const MutexLock lock(mutex_);
    const bool isKnown =
        std::any_of(changes_.cbegin(), changes_.cend(), [&](const OutsideChange &other) {
            return other.kind == OutsideChange::Forwards && other.forwards == forwards;
        });
    if (!isKnown)
        add(change);
}

QList<OutsideChange> ChangeRecord::changes() const
{
    const MutexLock lock(mutex_);
    return changes_;
}

bool ChangeRecord::giveBack(int id)
{
    const MutexLock lock(mutex_);
    const auto change =
        std::find_if(changes_.cbegin(), changes_.cend(), [id](const OutsideChange &candidate) {
            return candidate.id == id && !candidate.isGivenBack;
        });
    if (change == changes_.cend())
        return true;
    if (!give_back::restore(*change, ownDriver_)) {
        qWarning().noquote() << "What was changed cannot be given back now:" << change->path;
        return false;
    }
    write(outside_change::lineOfReturn(id, Clock::system().now()));
    return true;
}

bool ChangeRecord::giveBackAll()
{
    QList<OutsideChange> all = changes();
    // The newest first: only so does a document come back byte for byte.
    std::reverse(all.begin(), all.end());
    std::stable_sort(all.begin(), all.end(), [](const OutsideChange &a, const OutsideChange &b) {
        return a.kind < b.kind;
    });
    bool isDone = true;
    for (const OutsideChange &change : qAsConst(all)) {
        if (!change.isGivenBack && give_back::isPossible(change))
            isDone = giveBack(change.id) && isDone;
    }
    return isDone;
}
