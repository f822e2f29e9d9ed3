#include "demonstration/written_files.h"

#include <QDir>
#include <QFile>

#include <array>

#include <sys/inotify.h>
#include <unistd.h>

namespace {

// The log has its own lines, and what is half written has a name of its own
// with letters behind it.
bool isTold(const QString &name)
{
    static const QStringList suffixes = {QStringLiteral(".json"), QStringLiteral(".inf"),
                                         QStringLiteral(".exe"), QStringLiteral(".vrpath")};
    for (const QString &suffix : suffixes) {
        if (name.endsWith(suffix))
            return true;
    }
    return false;
}

// A new file comes into being whole, without ever having been open under its name.
QString wordFor(quint32 event)
{
    if (event & IN_DELETE)
        return QStringLiteral("removed ");
    return (event & IN_CREATE) ? QStringLiteral("made ") : QStringLiteral("wrote ");
}

QStringList linesOf(const QString &path)
{
    QFile file(path);
    if (path.endsWith(QLatin1String(".exe")) || !file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split('\n');
}

} // namespace

WrittenFiles::WrittenFiles() : notifier_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

WrittenFiles::~WrittenFiles()
{
    close(notifier_);
}

void WrittenFiles::watch(const QString &folder)
{
    const int watch = inotify_add_watch(notifier_, QFile::encodeName(folder).constData(),
                                        IN_CREATE | IN_CLOSE_WRITE | IN_MOVED_TO | IN_DELETE);
    folders_[watch] = folder;
    const QStringList names = QDir(folder).entryList(QDir::Files);
    for (const QString &name : names) {
        if (isTold(name))
            known_[folder + '/' + name] = linesOf(folder + '/' + name);
    }
}

QStringList WrittenFiles::news()
{
    QStringList lines;
    alignas(inotify_event) std::array<char, 8192> bytes{};
    for (ssize_t size = 0; (size = read(notifier_, bytes.data(), bytes.size())) > 0;) {
        for (ssize_t at = 0; at < size;) {
            const auto *const event = reinterpret_cast<const inotify_event *>(&bytes[at]);
            at += static_cast<ssize_t>(sizeof(inotify_event)) + event->len;
            const QString name = event->len ? QFile::decodeName(event->name) : QString();
            if (!isTold(name))
                continue;
            lines += wordFor(event->mask) + name;
            lines += changes(folders_.value(event->wd) + '/' + name);
        }
    }
    return lines;
}

QStringList WrittenFiles::changes(const QString &path)
{
    const QStringList now = linesOf(path);
    QStringList lines;
    for (const QString &line : qAsConst(known_[path])) {
        if (!now.contains(line))
            lines += "  -" + line;
    }
    for (const QString &line : now) {
        if (!known_[path].contains(line))
            lines += "  +" + line;
    }
    known_[path] = now;
    return lines;
}
