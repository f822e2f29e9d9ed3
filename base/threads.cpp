#include "base/threads.h"

#include "base/mutex.h"

#include <QDebug>

#include <atomic>
#include <optional>
#include <system_error>
#include <utility>

namespace threads {

namespace {

struct Missing
{
    Mutex mutex;
    QStringList purposes GUARDED_BY(mutex);
    QString lastReason GUARDED_BY(mutex);
};

Missing &all()
{
    static Missing &one = *new Missing; // threads may be begun until the very end
    return one;
}

std::atomic<int> forbidden{0};

// What the system says, or nothing: then the thread runs.
std::optional<std::error_code> begin(std::thread &thread, std::function<void()> work)
{
    if (!mayBegin())
        return std::make_error_code(std::errc::resource_unavailable_try_again);
    try {
        thread = std::thread(std::move(work));
    } catch (const std::system_error &error) {
        return error.code();
    }
    return std::nullopt;
}

} // namespace

std::thread begin(const char *purpose, std::function<void()> work)
{
    std::thread thread;
    if (const auto error = begin(thread, std::move(work)))
        noteMissing(purpose, QString::fromLocal8Bit(error->message().c_str()));
    else
        noteBegun(purpose);
    return thread;
}

std::thread beginQuietly(std::function<void()> work)
{
    std::thread thread;
    static_cast<void>(begin(thread, std::move(work)));
    return thread;
}

bool mayBegin()
{
    return forbidden.load() == 0;
}

void noteBegun(const char *purpose)
{
    Missing &kept = all();
    const MutexLock lock(kept.mutex);
    kept.purposes.removeAll(QString::fromLatin1(purpose));
}

void noteMissing(const char *purpose, const QString &reason)
{
    const QString name = QString::fromLatin1(purpose);
    bool isNew = false;
    {
        Missing &kept = all();
        const MutexLock lock(kept.mutex);
        isNew = !kept.purposes.contains(name);
        if (isNew)
            kept.purposes.append(name);
        kept.lastReason = reason;
    }
    // Whoever tries again every few seconds is heard once.
    if (isNew)
        qWarning().noquote().nospace() << "no thread for " << name << ": " << reason;
}

QStringList missing()
{
    Missing &kept = all();
    const MutexLock lock(kept.mutex);
    return kept.purposes;
}

QString lastReason()
{
    Missing &kept = all();
    const MutexLock lock(kept.mutex);
    return kept.lastReason;
}

NoneToHave::NoneToHave()
{
    ++forbidden;
}

NoneToHave::~NoneToHave()
{
    --forbidden;
}

} // namespace threads
