#include "controller/unwritten_files.h"

#include "base/clock.h"

#include <QCoreApplication>
#include <QDebug>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;
using openvr_paths::Problem;

namespace {

constexpr auto firstDelay = 1s;
constexpr std::chrono::milliseconds toastDuration = 8s;
constexpr std::chrono::milliseconds readWithin = 4s;

QString translated(const char *source)
{
    return QCoreApplication::translate("UnwrittenFiles", source);
}

QString reason(WriteResult result)
{
    return result == WriteResult::WriteFailed
               ? translated(QT_TRANSLATE_NOOP("UnwrittenFiles", "磁盘空间不足"))
               : translated(QT_TRANSLATE_NOOP("UnwrittenFiles", "文件被占用或没有权限"));
}

const char *meaning(StoredFile file)
{
    switch (file) {
    case StoredFile::Settings:
        break;
    case StoredFile::KnownHeadsets:
        return QT_TRANSLATE_NOOP("UnwrittenFiles",
                                 "setting.inf未能保存（%1）。下次启动时不会自动连接这副眼镜。");
    case StoredFile::ServerSettings:
        return QT_TRANSLATE_NOOP("UnwrittenFiles",
                                 "session.json未能保存（%1）。串流会继续使用原来的设置。");
    case StoredFile::UsageChoice:
        return QT_TRANSLATE_NOOP(
            "UnwrittenFiles", "usage.json未能保存（%1）。关于使用情况的选择在下次启动时会丢失。");
    }
    return QT_TRANSLATE_NOOP("UnwrittenFiles",
                             "set.json未能保存（%1）。当前的串流设置在下次启动时会丢失。");
}

const char *nameOf(StoredFile file)
{
    switch (file) {
    case StoredFile::Settings:
        break;
    case StoredFile::KnownHeadsets:
        return "setting.inf";
    case StoredFile::ServerSettings:
        return "session.json";
    case StoredFile::UsageChoice:
        return "usage.json";
    }
    return "set.json";
}

} // namespace

UnwrittenFiles::UnwrittenFiles(Clock &clock, QObject *parent) : QObject(parent), clock_(clock) {}

QString UnwrittenFiles::text(StoredFile file, WriteResult result)
{
    return translated(meaning(file)).arg(reason(result));
}

QString UnwrittenFiles::text(Problem problem)
{
    QString why;
    switch (problem) {
    case Problem::None:
        return {};
    case Problem::Missing:
        why = translated(QT_TRANSLATE_NOOP("UnwrittenFiles", "文件不存在"));
        break;
    case Problem::NoJson:
        why = translated(QT_TRANSLATE_NOOP("UnwrittenFiles", "文件已损坏"));
        break;
    case Problem::NotWritten:
        why = reason(WriteResult::WriteFailed);
        break;
    case Problem::Unreadable:
    case Problem::NotWritable:
        why = reason(WriteResult::OpenFailed);
        break;
    }
    return translated(QT_TRANSLATE_NOOP("UnwrittenFiles",
                                        "openvrpaths.vrpath未能写入（%1）。SteamVR启动时没有"
                                        "串流驱动，眼镜中不会有画面。"))
        .arg(why);
}

void UnwrittenFiles::tell(StoredFile file, WriteResult result)
{
    if (result == WriteResult::Ok || told_.contains(file))
        return;
    told_.append(file);
    qWarning().noquote() << nameOf(file)
                         << (result == WriteResult::WriteFailed ? "does not fit on the disk"
                                                                : "cannot be opened for writing");
    add(text(file, result));
}

void UnwrittenFiles::driverMissing(Problem problem)
{
    const QString words = text(problem);
    if (!words.isEmpty() && !waiting_.contains(words))
        add(words);
}

void UnwrittenFiles::otherToast(int duration)
{
    if (isSpeaking_)
        return;
    const qint64 now = clock_.elapsed();
    busyUntil_ = now + duration;
    if (!shown_.isEmpty() && now - shownAt_ < readWithin.count())
        waiting_.prepend(shown_);
    shown_.clear();
    if (!waiting_.isEmpty())
        schedule(busyUntil_);
}

void UnwrittenFiles::add(const QString &text)
{
    waiting_.append(text);
    schedule(
        std::max(busyUntil_, clock_.elapsed() + std::chrono::milliseconds(firstDelay).count()));
}

void UnwrittenFiles::schedule(qint64 at)
{
    if (isScheduled_)
        return; // and looks then how long to wait
    isScheduled_ = true;
    const qint64 delay = std::max<qint64>(0, at - clock_.elapsed());
    clock_.singleShot(std::chrono::milliseconds(delay), this, [this] {
        isScheduled_ = false;
        speak();
    });
}

void UnwrittenFiles::speak()
{
    if (clock_.elapsed() < busyUntil_) {
        schedule(busyUntil_);
        return;
    }
    if (waiting_.isEmpty())
        return;
    shown_ = waiting_.takeFirst();
    shownAt_ = clock_.elapsed();
    busyUntil_ = shownAt_ + toastDuration.count();
    if (!waiting_.isEmpty())
        schedule(busyUntil_);
    isSpeaking_ = true;
    emit toast(shown_, static_cast<int>(toastDuration.count()));
    isSpeaking_ = false;
}
